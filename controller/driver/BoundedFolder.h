#pragma once

#include <cstdint>
#include <filesystem>
#include <mutex>
#include <string>

namespace controller {

/// A folder of files that can be made again at any time: what was used longest ago goes when there is no
/// room. Looks into the file system, so not for the driver thread; any other thread, several at once.
class BoundedFolder {
public:
    /// `most`: as many bytes are kept.
    BoundedFolder(std::filesystem::path folder, std::uintmax_t most);

    [[nodiscard]] const std::filesystem::path& Path() const noexcept { return m_folder; }

    /// Makes the folder, and in it the file, whole or not at all unless the power is lost. Throws
    /// `std::system_error`.
    void Keep(const std::string& name, const std::string& content);

    /// Whether there is such a file, which counts as used now.
    [[nodiscard]] bool Use(const std::string& name) const noexcept;

private:
    void MakeRoom(const std::filesystem::path& but);

    const std::filesystem::path m_folder;
    const std::uintmax_t m_most;
    std::mutex m_mutex;
};

} // namespace controller
