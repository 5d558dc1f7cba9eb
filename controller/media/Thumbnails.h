#pragma once

#include "controller/driver/BoundedFolder.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace controller {

/// Small pictures of those of the media folder, kept under their name and what tells the file from another
/// one. Looks into the file system, so not for the driver thread; any other thread, several at once.
class Thumbnails {
public:
    static constexpr std::uintmax_t kMost = std::uintmax_t{32} << 20U;

    /// An empty folder: nothing is kept.
    explicit Thumbnails(const std::filesystem::path& folder);

    /// Null when there is none.
    [[nodiscard]] std::shared_ptr<const std::string> Find(const std::string& name,
                                                          const std::string& tag) const;

    /// In the place of those of former files of the name. What cannot be kept is made again.
    void Keep(const std::string& name, const std::string& tag, const std::string& content) noexcept;

    void Remove(const std::string& name) noexcept;

private:
    std::optional<BoundedFolder> m_kept;
};

} // namespace controller
