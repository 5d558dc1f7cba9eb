#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Names of files of the media folder, as the API takes them: no name leads out of the folder, or to a hidden
/// file.
namespace controller::media_name {

constexpr std::size_t kMaxLength = 100;

enum class Kind { None, Sound, Image };

/// `None` for a name that is not taken.
[[nodiscard]] Kind KindOf(std::string_view name) noexcept;

/// The sound that the agent plays under this path: "/media/announcements/chime.wav" is "chime".
[[nodiscard]] std::string SoundOf(std::string_view path);

/// The name that the folder takes, as near as can be to one that a file has elsewhere: "My Door Bell.WAV" is
/// "My-Door-Bell.wav". The page makes the same one. It is not taken when its ending is of no kind.
[[nodiscard]] std::string GoodName(std::string_view name);

/// The good name of a file of this media type, which is of a kind that is taken: "My chime.mp3" is
/// "My-chime.wav" as "audio/wav". An ending that goes with the type stays.
[[nodiscard]] std::string NameFor(std::string_view name, std::string_view type);

struct Refusal {
    std::string text;  ///< what the file is
    std::string right; ///< what would be right
};

/// Why a file of this good name is not taken, whatever it holds: an image that not every screen can show.
[[nodiscard]] std::optional<Refusal> RefusalOf(const std::string& name);

/// What a name has to be, in words.
[[nodiscard]] std::string Right();

/// The media type that goes with the name's ending.
[[nodiscard]] std::string_view TypeOf(std::string_view name) noexcept;

/// Whether a body of this type (parameters left aside) may hold a sound or an image; which, its content says.
[[nodiscard]] bool IsTypeTaken(std::string_view contentType);

} // namespace controller::media_name
