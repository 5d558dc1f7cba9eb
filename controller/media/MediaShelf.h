#pragma once

#include <nlohmann/json.hpp>

#include <filesystem>
#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace controller {

/// The media folder as the API sees it. Every operation looks into the file system, so none is for the driver
/// thread; any other thread may call, several at once. Names have been found good by `media_name`; what
/// cannot be done is thrown as `ApiError`.
class MediaShelf {
public:
    static constexpr std::size_t kMaxFile = std::size_t{32} << 20U;
    static constexpr std::size_t kMaxListed = 10000;

    struct File {
        std::shared_ptr<const std::string> content;
        std::string tag; ///< changes when the file does
    };

    explicit MediaShelf(std::filesystem::path folder) : m_folder(std::move(folder)) {}

    /// `{"media": [...]}`, by name; files whose names the API does not take are left out.
    [[nodiscard]] nlohmann::ordered_json List() const;

    /// One file's description.
    [[nodiscard]] nlohmann::ordered_json Describe(const std::string& name) const;

    /// Throws 404 for a file that is missing. Replies that are under way at the same time share the content.
    [[nodiscard]] File Read(const std::string& name);

    struct Stored {
        bool isNew = false;
        nlohmann::ordered_json description;
    };

    /// Checks the content and puts it in place, whole or not at all, and on the disk. Throws 422 for content
    /// that is not what the name says, or a sound that cannot be played as an announcement.
    [[nodiscard]] Stored Store(const std::string& name, const std::string& content);

    void Remove(const std::string& name);

    /// How long a sound lasts; 0 when there is none under the name, or it cannot be played.
    [[nodiscard]] std::int64_t LengthOf(const std::string& name) const noexcept;

private:
    const std::filesystem::path m_folder;
    std::mutex m_mutex;
    std::map<std::string, std::pair<std::string, std::weak_ptr<const std::string>>>
        m_shared; ///< by name, with tag
};

} // namespace controller
