#include "controller/audio/MediaFolder.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace controller::audio {

namespace fs = std::filesystem;

namespace {

/// The part behind the prefix, proven to be a relative path that only goes down.
fs::path RelativeName(const std::string& announcedPath) {
    const std::string prefix = MediaFolder::kPrefix;
    if (announcedPath.compare(0, prefix.size(), prefix) != 0)
        throw MediaNameError("\"" + announcedPath + "\" is not in the media folder; names begin with \"" +
                             prefix + "\"");
    const std::string name = announcedPath.substr(prefix.size());
    if (name.empty() || name.find('\0') != std::string::npos)
        throw MediaNameError("\"" + announcedPath.substr(0, announcedPath.find('\0')) +
                             "\" names no sound file");
    fs::path relative(name);
    if (relative.is_absolute() || std::find(relative.begin(), relative.end(), "..") != relative.end())
        throw MediaNameError("\"" + name + "\" leads out of the media folder");
    return relative;
}

bool IsInside(const fs::path& file, const fs::path& folder) {
    return std::mismatch(folder.begin(), folder.end(), file.begin(), file.end()).first == folder.end();
}

} // namespace

MediaFolder::MediaFolder(fs::path folder) : m_folder(std::move(folder)) {}

fs::path MediaFolder::Find(const std::string& announcedPath) const {
    const fs::path relative = RelativeName(announcedPath);
    std::error_code error;
    const fs::path folder = fs::canonical(m_folder, error);
    if (error)
        throw MediaNameError("the media folder \"" + m_folder.string() +
                             "\" cannot be read: " + error.message());
    fs::path file = fs::canonical(folder / relative, error);
    if (error == std::errc::no_such_file_or_directory || error == std::errc::not_a_directory)
        throw MediaNameError("there is no sound file \"" + relative.string() + "\" in the media folder");
    if (error)
        throw MediaNameError("\"" + relative.string() + "\" cannot be read: " + error.message());
    if (!IsInside(file, folder))
        throw MediaNameError("\"" + relative.string() + "\" leads out of the media folder");
    return file;
}

} // namespace controller::audio
