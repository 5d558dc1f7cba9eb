#include "controller/audio/Output.h"

#include <filesystem>
#include <stdexcept>
#include <system_error>
#include <vector>

#include <unistd.h>

namespace controller::audio {

namespace fs = std::filesystem;

namespace {

/// The pattern with its place holders filled in.
/// @throws std::invalid_argument for an unknown place holder.
std::string Expand(const std::string& pattern, const OutputContext& context) {
    std::string path;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (pattern[i] != '%') {
            path += pattern[i];
            continue;
        }
        const char holder = ++i < pattern.size() ? pattern[i] : '\0';
        if (holder == 'n')
            path += std::to_string(context.take);
        else if (holder == 'r')
            path += std::to_string(context.roomId);
        else if (holder == '%')
            path += '%';
        else
            throw std::invalid_argument("\"file: " + pattern +
                                        "\": after % there can be n (the announcement's "
                                        "number), r (the room's id) or another %");
    }
    return path;
}

void RequireWritablePlace(const fs::path& path) {
    std::error_code error;
    if (path.has_parent_path())
        fs::create_directories(path.parent_path(), error);
    if (error)
        throw std::runtime_error("the folder of \"" + path.string() +
                                 "\" cannot be created: " + error.message());
    const auto status = fs::status(path, error);
    if (fs::exists(status) && !fs::is_regular_file(status))
        throw std::runtime_error("\"" + path.string() + "\" is no regular file; a WAV file needs one");
}

GstElement* CreateElement(const std::string& pattern, const OutputContext& context) {
    const fs::path path = Expand(pattern, context);
    RequireWritablePlace(path);
    // audiorate fills with silence what the pipeline had no sound for: the recording begins when the
    // stream was opened, in every room.
    GstElement* bin = MakeBin("audiorate tolerance=0 ! audio/x-raw,format=S16LE ! wavenc ! "
                              "filesink name=file sync=true");
    const GstPtr<GstElement> file(gst_bin_get_by_name(GST_BIN(bin), "file"));
    g_object_set(file.get(), "location", path.c_str(), nullptr); // NOLINT(*-vararg)
    return bin;
}

/// Folders are made when there is something to record.
Health HealthOf(const fs::path& file) {
    std::error_code error;
    fs::path folder = fs::absolute(file, error).parent_path();
    while (!fs::exists(folder, error) && folder.has_relative_path())
        folder = folder.parent_path();
    if (fs::is_directory(folder, error) && access(folder.c_str(), W_OK | X_OK) == 0)
        return {Health::State::Healthy, ""};
    return {Health::State::Unheard, "nothing can be written to \"" + folder.string() + "\""};
}

} // namespace

std::vector<Health> AskFile(const std::vector<std::string>& texts, const OutputContext& /*context*/) {
    std::vector<Health> answers;
    answers.reserve(texts.size());
    for (const std::string& text : texts)
        answers.push_back(HealthOf(text));
    return answers;
}

Output CreateFileOutput(const std::string& text) {
    if (text.empty())
        throw std::invalid_argument("\"file:\" needs a path, such as \"file: recordings/kitchen-%n.wav\"");
    (void)Expand(text, {}); // Only to have it checked.
    return [text](const OutputContext& context) {
        return CreateElement(text, context);
    };
}

} // namespace controller::audio
