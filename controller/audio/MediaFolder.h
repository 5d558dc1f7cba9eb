#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>

namespace controller::audio {

/// A name that does not lead to a file in the media folder; the text says why.
class MediaNameError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Announcements name their sounds "/media/announcements/NAME.wav". This finds the file behind such a name in
/// the house's media folder, and never one outside it. Looks into the file system, so not for the driver
/// thread. Any thread otherwise.
class MediaFolder final {
public:
    static constexpr const char* kPrefix = "/media/announcements/";

    explicit MediaFolder(std::filesystem::path folder);

    /// The real path of the file, every link followed.
    /// @throws MediaNameError for another prefix; for names with ".." or that are absolute, empty or hold a
    /// zero byte; for links that lead out of the folder; for files that are missing.
    [[nodiscard]] std::filesystem::path Find(const std::string& announcedPath) const;

    [[nodiscard]] const std::filesystem::path& Folder() const { return m_folder; }

private:
    std::filesystem::path m_folder;
};

} // namespace controller::audio
