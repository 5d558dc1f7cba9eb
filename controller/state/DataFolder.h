#pragma once

#include <filesystem>

namespace controller {

/// The folder that one controller keeps its data in, made when it is missing, and locked against every other
/// controller for as long as this object lives (and no longer than the process does).
class DataFolder {
public:
    /// Throws `std::runtime_error`, which says what is wrong and what to do, when the folder cannot be made,
    /// cannot be written, or belongs to another running controller.
    explicit DataFolder(const std::filesystem::path& folder);
    DataFolder(const DataFolder&) = delete;
    DataFolder& operator=(const DataFolder&) = delete;
    ~DataFolder();

    [[nodiscard]] const std::filesystem::path& Path() const noexcept { return m_folder; }

private:
    std::filesystem::path m_folder;
    int m_lock = -1;
};

} // namespace controller
