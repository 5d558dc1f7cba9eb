#include "announce/basics/TextWidth.h"
#include "announce/basics/Times.h"
#include "announce/commands/Handlers.h"
#include "announce/commands/Several.h"
#include "announce/output/Progress.h"

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace handlers {
namespace {

namespace fs = std::filesystem;

/// The controller takes no more.
constexpr std::uintmax_t kMostBytes = 32U << 20U;

std::string SizeText(std::uint64_t bytes) {
    if (bytes < 1024)
        return std::to_string(bytes) + " B";
    const bool isMega = bytes >= 1048576U;
    char text[32];
    (void)std::snprintf(text, sizeof text, "%.1f %s",
                        static_cast<double>(bytes) / (isMega ? 1048576.0 : 1024.0),
                        isMega ? "MiB" : "KiB"); // fits: a size has 20 digits at most
    return text;
}

Table::Cell FormatOf(const Json& file) {
    if (file.contains("trouble"))
        return {file.at("trouble").get<std::string>(), Style::Bad};
    if (!file.contains("sample_rate"))
        return "";
    const auto channels = file.at("channels").get<unsigned>();
    return file.at("sample_rate").dump() + " Hz, " +
           (channels == 1   ? "mono"
            : channels == 2 ? "stereo"
                            : std::to_string(channels) + " channels");
}

/// How loud the file is; what it is played with brings it to that of all others.
std::string LoudnessOf(const Json& file) {
    const auto loudness = file.find("loudness");
    if (loudness == file.end() || !loudness->at("lufs").is_number())
        return "";
    char text[32];
    (void)std::snprintf(text, sizeof text, "%.1f LUFS",
                        loudness->at("lufs").get<double>()); // fits, as any level
    return std::string(text) + (loudness->at("as_it_is").get<bool>() ? ", as it is" : "");
}

std::string ReadFile(const fs::path& file) {
    std::error_code error;
    const std::uintmax_t size = fs::is_regular_file(file, error) ? fs::file_size(file, error) : 0;
    if (!error && size > kMostBytes)
        throw Failure(ExitStatus::Refused, file.string() + " has " + SizeText(size),
                      "at most " + SizeText(kMostBytes));
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream content;
    content << stream.rdbuf();
    if (!stream || error || fs::is_directory(file, error))
        throw Failure(ExitStatus::NotFound, file.string() + " cannot be read", "a sound or an image");
    return content.str();
}

/// The part of a sound that is wanted, as the API takes it.
std::string PartOf(const Arguments& arguments) {
    std::string query;
    for (const char* end : {"from", "to"})
        if (const auto time = arguments.Find(end))
            query += (query.empty() ? "?" : "&") + std::string(end) +
                     "_ms=" + std::to_string(times::ReadMilliseconds(std::string("--") + end, *time));
    return query;
}

Json Upload(Session& session, const fs::path& file, const std::string& name) {
    std::string content = ReadFile(file);
    Progress progress(name, content.size());
    return session.client.Upload("/api/media/" + PercentEncoded(name) + PartOf(session.arguments),
                                 std::move(content), [&progress](std::size_t sent) { progress.Reach(sent); });
}

/// What has become of a file: the controller may call it otherwise.
std::string WordsFor(const std::string& wanted, const Json& stored) {
    const std::string name = stored.at("name");
    return text::Visible(wanted) + " is in the media folder" + (name == wanted ? "" : " as " + name) + " (" +
           SizeText(stored.at("bytes")) + ")";
}

} // namespace

ExitStatus Media(Session& session) {
    if (session.HasPrintedJson("/api/media"))
        return ExitStatus::Done;
    Table table({{"NAME"},
                 {"KIND"},
                 {"SIZE", Table::kRight},
                 {"LENGTH", Table::kRight},
                 {"CHANGED"},
                 {"LOUDNESS", Table::kRight},
                 {"FORMAT"}});
    for (const Json& file : session.house.Media())
        table.Add({{file.at("name").get<std::string>(), Style::Bold},
                   file.at("kind").get<std::string>(),
                   SizeText(file.at("bytes")),
                   file.contains("duration_ms") ? times::LengthText(file.at("duration_ms")) : "",
                   times::LocalText(file.at("modified")),
                   LoudnessOf(file),
                   FormatOf(file)});
    return session.Print(table,
                         "The media folder is empty; \"announce media add\" brings sounds and images.");
}

ExitStatus AddMedia(Session& session) {
    const auto files = session.arguments.All("file");
    const auto name = session.arguments.Find("name");
    if (name && files.size() > 1)
        throw Failure(ExitStatus::Usage,
                      "--name names one file, and there are " + std::to_string(files.size()),
                      "one FILE, or no --name");
    Json stored = Json::array();
    Several several(session, files.size(), "in the media folder");
    for (const std::string& file : files)
        several.Do(file, [&] {
            const std::string wanted = name.value_or(fs::path(file).filename().string());
            stored.push_back(Upload(session, file, wanted));
            session.ReportOne(WordsFor(wanted, stored.back()));
        });
    return several.End({{"media", stored}});
}

ExitStatus RemoveMedia(Session& session) {
    std::vector<std::string> found;
    for (const std::string& text : session.arguments.All("name"))
        found.push_back(session.house.FindMedia(text, "file"));
    Json removed = Json::array();
    Several several(session, found.size(), "removed");
    for (const std::string& name : found)
        several.Do(name, [&] {
            session.client.Delete("/api/media/" + PercentEncoded(name));
            removed.push_back(name);
            session.ReportOne(name + " is removed");
        });
    return several.End({{"removed", removed}});
}

ExitStatus SetLoudness(Session& session) {
    const std::string how = *session.arguments.Find("how");
    if (how != "even" && how != "as-it-is")
        throw Failure(ExitStatus::Usage, "\"" + text::Visible(how) + "\" is no way to play a sound",
                      "even or as-it-is");
    const std::string name = session.house.FindMedia(*session.arguments.Find("name"), "sound");
    const Json file = session.client.Put("/api/media/" + PercentEncoded(name) + "/loudness",
                                         {{"as_it_is", how == "as-it-is"}});
    return session.Report(file, name + " is played as loud as " + (how == "even" ? "all others" : "it is"));
}

} // namespace handlers
