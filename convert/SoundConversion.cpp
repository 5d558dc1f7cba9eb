#include "convert/SoundConversion.h"

#include "convert/Decoder.h"
#include "convert/Report.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdint>
#include <vector>

namespace {

using std::chrono::milliseconds;

constexpr milliseconds kLongest{20000};
/// Hours of sound are not decoded to the end only to say how long they are.
constexpr std::chrono::seconds kPatience{6};

std::int64_t FramesOf(milliseconds time) {
    return time.count() * (Decoder::kRate / 1000);
}

milliseconds TimeOf(std::int64_t frames) {
    return milliseconds(frames * 1000 / Decoder::kRate);
}

/// Takes the pieces of a sound one after another and keeps those of the part that is wanted.
class Cut {
public:
    explicit Cut(const Span& span)
        : m_from(FramesOf(span.from))
        , m_to(span.to ? FramesOf(*span.to) : m_from + FramesOf(kLongest)) {}

    void Take(const Decoder::Piece& piece) {
        m_channels = m_channels == 0 ? piece.channels : m_channels;
        if (piece.channels != m_channels)
            throw report::Refusal(report::kDamaged, "is damaged: it changes its channels");
        const std::int64_t width = std::int64_t{2} * m_channels;
        const std::int64_t end = m_place + static_cast<std::int64_t>(piece.samples.size()) / width;
        const std::int64_t from = std::max(m_from, m_place);
        const std::int64_t to = std::min(m_to, end);
        if (from < to)
            m_kept.insert(m_kept.end(), piece.samples.begin() + (from - m_place) * width,
                          piece.samples.begin() + (to - m_place) * width);
        m_place = end;
    }

    [[nodiscard]] std::int64_t Place() const noexcept { return m_place; }
    [[nodiscard]] bool IsBehindTheEnd() const noexcept { return m_place > m_to; }
    [[nodiscard]] const std::vector<char>& Kept() const noexcept { return m_kept; }
    [[nodiscard]] int Channels() const noexcept { return m_channels; }

private:
    const std::int64_t m_from;
    const std::int64_t m_to;
    std::int64_t m_place = 0;
    int m_channels = 0;
    std::vector<char> m_kept;
};

/// A length that is known only by what the file says of itself may be anything.
milliseconds LengthOf(const Decoder& decoder, milliseconds decoded) {
    constexpr milliseconds kCredible = std::chrono::hours(24);
    const auto claimed = decoder.ClaimedLength();
    return claimed && *claimed <= kCredible ? std::max(*claimed, decoded) : decoded;
}

void RequireSound(const Cut& cut, const Span& span) {
    if (cut.Place() == 0)
        throw report::Refusal(report::kUnknown, "holds no sound");
    if (cut.Kept().empty())
        throw report::Refusal(report::kNothingThere, "ends before that", TimeOf(cut.Place()));
    if (!span.to && cut.IsBehindTheEnd())
        throw report::Refusal(report::kTooLong, "is too long", TimeOf(cut.Place()));
}

} // namespace

nlohmann::json ConvertSound(const MappedFile& file, const Span& span, int output) {
    const auto deadline = std::chrono::steady_clock::now() + kPatience;
    Decoder decoder(file);
    Cut cut(span);
    while (!span.to || !cut.IsBehindTheEnd()) {
        const auto piece = decoder.Read(deadline);
        if (piece && piece->samples.empty())
            break;
        if (piece)
            cut.Take(*piece);
        // Also where every single piece comes in time.
        if (!piece || std::chrono::steady_clock::now() >= deadline) {
            if (cut.Place() == 0)
                throw report::Refusal(report::kDamaged, "is damaged: nothing could be decoded in time");
            throw report::Refusal(report::kTooLong, "is too long", LengthOf(decoder, TimeOf(cut.Place())));
        }
    }
    RequireSound(cut, span);
    report::WriteAll(output, cut.Kept().data(), cut.Kept().size());
    return {{"frames", cut.Kept().size() / 2 / static_cast<std::size_t>(cut.Channels())},
            {"channels", cut.Channels()}};
}
