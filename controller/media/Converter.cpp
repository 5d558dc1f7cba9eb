#include "controller/media/Converter.h"

#include "controller/media/MediaError.h"
#include "controller/media/WavHeader.h"
#include "picture/PictureHead.h"

#include <nlohmann/json.hpp>

namespace controller {

namespace fs = std::filesystem;
using nlohmann::json;
using std::chrono::milliseconds;

namespace {

constexpr unsigned kRate = 48000;
constexpr milliseconds kLongest{20000};

/// "3 min 25 s"; below a minute with a tenth.
std::string LengthText(milliseconds length) {
    const auto tenths = (length.count() + 99) / 100;
    if (tenths < 600)
        return std::to_string(tenths / 10) + "." + std::to_string(tenths % 10) + " s";
    return std::to_string(tenths / 600) + " min " + std::to_string(tenths % 600 / 10) + " s";
}

MediaError Unsuitable(const std::string& text, const std::string& right) {
    return {MediaError::Kind::Unsuitable, text, right};
}

MediaError Failed(const std::string& name, const std::string& why) {
    return MediaError(MediaError::Kind::Unsuitable, name + " could not be converted: the converter " + why,
                      "another file, or the sound as a WAV file of 16 bits, the picture as a small JPEG")
        .With("conversion_failed");
}

/// What stands in the report is from a process that has read the file: nothing is taken for granted.
std::string TextIn(const json& report, const char* name) {
    const auto place = report.find(name);
    return place != report.end() && place->is_string() ? place->get<std::string>() : "";
}

std::uint64_t NumberIn(const json& report, const char* name) {
    const auto place = report.find(name);
    return place != report.end() && place->is_number_unsigned() ? place->get<std::uint64_t>() : 0;
}

MediaError RefusalIn(const json& report, const std::string& name) {
    const std::string code = TextIn(report, "refused");
    const milliseconds length{NumberIn(report, "length_ms")};
    if (code == "too_long")
        return TooLong(name, length);
    if (code == "nothing_there")
        return Unsuitable(name + " lasts " + LengthText(length) + ", and the wanted part begins behind that",
                          "from_ms below " + std::to_string(length.count()))
            .With(code, length);
    if (code == "cannot_decode")
        return Unsuitable(name + " " + TextIn(report, "text"),
                          "a sound (MP3, M4A, AAC, OGG, Opus, FLAC, WebM, AIFF, WAV) or an image (PNG, JPEG, "
                          "GIF, WebP)")
            .With(code);
    if (code == "too_large")
        return Unsuitable(name + " " + TextIn(report, "text"),
                          "a picture of at most 100 million pixels, or 1,920 on a side where it is animated")
            .With(code);
    return Unsuitable(name + " " + TextIn(report, "text"), "a whole file").With(code);
}

std::vector<std::string> WordsFor(const std::string& name, const SoundSpan& span) {
    const milliseconds from = span.from.value_or(milliseconds(0));
    std::vector<std::string> words{"sound", std::to_string(from.count())};
    if (!span.to)
        return words;
    if (*span.to <= from || *span.to - from > kLongest)
        throw Unsuitable("the wanted part of " + name + " is " +
                             (*span.to <= from ? "empty" : LengthText(*span.to - from) + " long"),
                         "to_ms behind from_ms by at most 20000");
    words.push_back(std::to_string(span.to->count()));
    return words;
}

} // namespace

MediaError TooLong(const std::string& name, milliseconds length) {
    return MediaError(MediaError::Kind::Unsuitable,
                      name + " lasts " + LengthText(length) + "; at most 20 s can be played",
                      "a part of it: from_ms and to_ms (\"announce media add --from --to\") say which")
        .With("too_long", length);
}

fs::path Converter::FindProgram() {
    std::error_code error;
    const fs::path folder = fs::read_symlink("/proc/self/exe", error).parent_path();
    const fs::path places[] = {folder / CONVERTER_FROM_BIN, folder / "announcement-convert"};
    for (const fs::path& place : places)
        if (fs::exists(place, error))
            return place.lexically_normal();
    return places[0].lexically_normal();
}

HelperProcess::Outcome Converter::Run(const std::string& name,
                                      const std::vector<std::string>& words,
                                      const std::string& content) const {
    try {
        return m_helper.Run(words, content);
    } catch (const std::system_error& error) {
        throw Failed(name, std::string("cannot be started: ") + error.what());
    }
}

json Converter::ReportOf(const std::string& name, const HelperProcess::Outcome& outcome) const {
    // What it has told before it came to grief counts: it tells when all is done.
    json report = json::parse(outcome.report, nullptr, false);
    if (!report.is_object())
        throw Failed(name, outcome.trouble.empty() ? "told nothing" : outcome.trouble);
    if (report.contains("refused"))
        throw RefusalIn(report, name);
    if (report.contains("failed"))
        throw Failed(name, "failed: " + TextIn(report, "failed"));
    if (TextIn(report, "held_by").empty() && m_complain)
        m_complain("this kernel has neither seccomp nor Landlock: files that are uploaded are decoded in a "
                   "process of its own with bounds on time and memory, and nothing else to hold it");
    return report;
}

std::string
Converter::Sound(const std::string& name, const std::string& content, const SoundSpan& span) const {
    const HelperProcess::Outcome outcome = Run(name, WordsFor(name, span), content);
    const json report = ReportOf(name, outcome);
    const auto channels = NumberIn(report, "channels");
    const auto frames = NumberIn(report, "frames");
    constexpr std::uint64_t kMostFrames = std::uint64_t{20} * kRate;
    if (channels < 1 || channels > 2 || frames < 1 || frames > kMostFrames ||
        outcome.output.size() != frames * channels * 2)
        throw Failed(name, "wrote something else than it said");
    return WavOf(outcome.output, static_cast<unsigned>(channels), kRate);
}

Converter::Picture Converter::ShownPicture(const std::string& name, const std::string& content) const {
    const HelperProcess::Outcome outcome = Run(name, {"picture"}, content);
    const json report = ReportOf(name, outcome);
    const auto bytes = NumberIn(report, "picture_bytes");
    const std::string type = TextIn(report, "type");
    if (bytes < 1 || bytes >= outcome.output.size() || type.empty() ||
        type != picture::MediaTypeOf(picture::TypeOf(outcome.output)))
        throw Failed(name, "wrote something else than it said");
    return {type, outcome.output.substr(0, bytes), outcome.output.substr(bytes)};
}

std::string Converter::Thumbnail(const std::string& name, const std::string& content) const {
    HelperProcess::Outcome outcome = Run(name, {"thumbnail"}, content);
    (void)ReportOf(name, outcome); // which is told to be done, and nothing more
    if (picture::TypeOf(outcome.output) == picture::Type::None)
        throw Failed(name, "wrote something else than it said");
    return std::move(outcome.output);
}

} // namespace controller
