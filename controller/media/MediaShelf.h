#pragma once

#include "controller/media/Converter.h"
#include "controller/media/MediaError.h"
#include "controller/media/SoundLevels.h"
#include "controller/media/Thumbnails.h"
#include "picture/PictureHead.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace controller {

/// The media folder as people see it from afar. Every operation looks into the file system, so none is for
/// the driver thread; any other thread may call, several at once. Names have been found good by `media_name`,
/// but for those of what comes; what cannot be done is thrown as `MediaError`.
class MediaShelf {
public:
    static constexpr std::size_t kMaxFile = std::size_t{32} << 20U;
    static constexpr std::size_t kMaxListed = 10000;

    struct File {
        std::shared_ptr<const std::string> content;
        std::string tag;       ///< changes when the file does
        std::string_view type; ///< "image/png"
    };

    struct Sound {
        std::chrono::milliseconds duration{0};
        int rate = 0;
        int channels = 0;
    };
    /// What a sound is made of that is spoken, and is no file of the folder.
    struct Spoken {
        std::string text;
        std::string voice;
        unsigned speed = 0; ///< percent
        std::string chime;
        std::filesystem::path file; ///< where it is kept
    };
    struct Description {
        std::string name;
        bool isSound = false;
        std::uintmax_t bytes = 0;
        std::chrono::system_clock::time_point modified;
        std::optional<Sound> sound;              ///< of a sound that can be read
        std::string trouble;                     ///< why a sound cannot
        std::optional<picture::Size> size;       ///< of an image that says so
        std::optional<SoundLevels::Level> level; ///< of a sound that has been measured
        std::optional<bool> isConverted; ///< of what has just been stored: whether it is another than came
        std::optional<Spoken> spoken;
    };

    /// `levels` is borrowed for life; null: sounds are not measured. `thumbnails` is where they are kept;
    /// empty: they are not.
    explicit MediaShelf(std::filesystem::path folder,
                        Converter converter = Converter(),
                        SoundLevels* levels = nullptr,
                        const std::filesystem::path& thumbnails = {})
        : m_folder(std::move(folder))
        , m_converter(std::move(converter))
        , m_levels(levels)
        , m_thumbnails(thumbnails) {}

    /// By name; files whose names are not taken are left out.
    [[nodiscard]] std::vector<Description> List() const;

    [[nodiscard]] Description Describe(const std::string& name) const;

    /// Replies that are under way at the same time share the content.
    [[nodiscard]] File Read(const std::string& name);

    /// The image with at most 320 pixels on the longer side; without content where it has to be made. Its tag
    /// is the image's.
    [[nodiscard]] File FindThumbnail(const std::string& name) const;

    /// The same, made where there is none.
    [[nodiscard]] File MakeThumbnail(const std::string& name);

    struct Stored {
        bool isNew = false;
        Description description;
    };

    /// Makes of the content what the folder takes, and puts it in place, whole or not at all, and on the
    /// disk; the description has the name that it has become.
    [[nodiscard]] Stored
    Store(const std::string& name, const std::string& content, const SoundSpan& span = {});

    void Remove(const std::string& name);

    struct Length {
        std::chrono::milliseconds length{0};
        std::string trouble; ///< why nothing is heard; empty when it is
    };

    /// How long a sound lasts that announcements name like this; found as it is when it is played.
    [[nodiscard]] Length LengthOf(const std::string& sound) const;

private:
    const std::filesystem::path m_folder;
    const Converter m_converter;
    SoundLevels* const m_levels;
    Thumbnails m_thumbnails;
    std::mutex m_mutex;
    std::map<std::string, std::pair<std::string, std::weak_ptr<const std::string>>>
        m_shared; ///< by name, with tag
};

} // namespace controller
