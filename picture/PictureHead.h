#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

/// What can be told of a picture, and taken out of it, without decoding it.
namespace picture {

enum class Type { None, Png, Jpeg, Gif, WebP };

/// By the first bytes.
[[nodiscard]] Type TypeOf(std::string_view content) noexcept;

/// "image/png"; empty for none.
[[nodiscard]] std::string_view MediaTypeOf(Type type) noexcept;

struct Size {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
};

/// Gives the bytes of the file from a place on; fewer where it ends.
using Read = std::function<std::string(std::size_t place, std::size_t count)>;

/// As large as the picture is shown, by its header: of a photo, turned as its camera was held. Nothing for
/// what is no picture, or is cut short.
[[nodiscard]] std::optional<Size> SizeOf(const Read& read);

/// The same of what is in memory.
[[nodiscard]] std::optional<Size> SizeOf(std::string_view content);

/// How the camera was held, 1 to 8, by what the camera says (EXIF); 1, upright, where that is not told.
[[nodiscard]] unsigned OrientationIn(std::string_view exif);

/// A number of up to four bytes; what lies behind the end counts as nothing.
[[nodiscard]] std::uint32_t
Number(std::string_view text, std::size_t place, std::size_t bytes, bool isBigEndian = true) noexcept;

} // namespace picture
