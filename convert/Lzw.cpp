#include "convert/Lzw.h"

#include "convert/Report.h"

#include <algorithm>
#include <array>

namespace {

constexpr unsigned kMostBits = 12;
constexpr unsigned kMostCodes = 1U << kMostBits;

[[noreturn]] void RefuseData() {
    throw report::Refusal(report::kDamaged, "is damaged: it is cut short or broken");
}

/// The texts that codes stand for, each one byte longer than another.
class Texts {
public:
    explicit Texts(unsigned bits) : m_clear(1U << bits), m_bits(bits) { Clear(); }

    [[nodiscard]] unsigned ClearCode() const noexcept { return m_clear; }
    [[nodiscard]] unsigned EndCode() const noexcept { return m_clear + 1; }
    [[nodiscard]] unsigned Width() const noexcept { return m_width; }

    void Clear() noexcept {
        m_next = m_clear + 2;
        m_width = m_bits + 1;
        m_hasPrevious = false;
    }

    /// Appends what the code stands for, and learns another one of it.
    void Append(unsigned code, std::vector<std::uint8_t>& points) {
        const bool isNew = m_hasPrevious && code == m_next;
        if (!isNew && (code >= m_next || (!m_hasPrevious && code >= m_clear)))
            RefuseData();
        const auto begin = static_cast<std::ptrdiff_t>(points.size());
        if (isNew)
            points.push_back(m_first);
        unsigned part = isNew ? m_previous : code;
        for (; part >= m_clear; part = m_before[part])
            points.push_back(m_last[part]);
        m_first = static_cast<std::uint8_t>(part);
        points.push_back(m_first);
        std::reverse(points.begin() + begin, points.end());
        if (m_hasPrevious)
            Learn();
        m_previous = code;
        m_hasPrevious = true;
    }

private:
    void Learn() noexcept {
        if (m_next >= kMostCodes)
            return;
        m_before[m_next] = static_cast<std::uint16_t>(m_previous);
        m_last[m_next] = m_first;
        ++m_next;
        if (m_next == 1U << m_width && m_width < kMostBits)
            ++m_width;
    }

    const unsigned m_clear;
    const unsigned m_bits;
    unsigned m_next = 0;
    unsigned m_width = 0;
    unsigned m_previous = 0;
    bool m_hasPrevious = false;
    std::uint8_t m_first = 0; ///< of the previous text
    std::array<std::uint16_t, kMostCodes> m_before{};
    std::array<std::uint8_t, kMostCodes> m_last{};
};

} // namespace

std::vector<std::uint8_t> UnpackLzw(const std::string& data, unsigned bits, std::size_t wanted) {
    constexpr unsigned kMostPointBits = 8;
    if (bits < 1 || bits > kMostPointBits)
        RefuseData();
    Texts texts(bits);
    std::vector<std::uint8_t> points;
    points.reserve(wanted + kMostCodes); // the last text may reach beyond the end
    unsigned held = 0;
    unsigned count = 0;
    for (const char byte : data) {
        held |= static_cast<unsigned>(static_cast<unsigned char>(byte)) << count;
        count += 8;
        while (count >= texts.Width() && points.size() < wanted) {
            const unsigned code = held & ((1U << texts.Width()) - 1);
            held >>= texts.Width();
            count -= texts.Width();
            if (code == texts.EndCode())
                RefuseData();
            if (code == texts.ClearCode())
                texts.Clear();
            else
                texts.Append(code, points);
        }
        if (points.size() >= wanted)
            break;
    }
    if (points.size() < wanted)
        RefuseData();
    points.resize(wanted);
    return points;
}
