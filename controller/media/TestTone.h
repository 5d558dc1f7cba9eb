#pragma once

#include <filesystem>
#include <string>

namespace controller {

/// The tone by which a room is tried out: a sound of the controller's own, which is no file of the media
/// folder and cannot be taken for one.
class TestTone {
public:
    /// The sound's name in an announcement. No file of the media folder can have it.
    static constexpr const char* kName = ".test-tone";

    /// `folder` is where the file is kept.
    explicit TestTone(const std::filesystem::path& folder);

    /// Whether this is the path by which the agent asks for the tone.
    [[nodiscard]] static bool Is(const std::string& announcedPath);

    /// The file, written when it is missing. Looks into the file system, so not for the driver thread. Throws
    /// `std::system_error` when it cannot be written.
    [[nodiscard]] std::filesystem::path File() const;

private:
    std::filesystem::path m_file;
};

} // namespace controller
