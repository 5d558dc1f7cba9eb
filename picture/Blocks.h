#pragma once

#include "picture/PictureHead.h"

#include <optional>
#include <string_view>
#include <vector>

namespace picture {

/// A piece that a picture is built of: a segment of a JPEG, a chunk of a PNG or WebP, a block of a GIF.
struct Block {
    std::string_view kind;  ///< "eXIf", "EXIF"; of a JPEG its marker, of a GIF the byte that it begins with,
                            ///< or the one behind "!"; "head" of what comes first
    std::string_view body;  ///< what it says
    std::string_view whole; ///< as it stands in the file
};

/// All pieces, up to the one that ends the picture; what stands behind that is none of it. All views are into
/// the content. Nothing for a picture that is cut short, or built otherwise.
[[nodiscard]] std::optional<std::vector<Block>> BlocksOf(Type type, std::string_view content);

/// By the pieces, how the camera was held; see `OrientationIn`.
[[nodiscard]] unsigned OrientationOf(Type type, const std::vector<Block>& blocks);

/// Whether it is more than one picture.
[[nodiscard]] bool IsAnimated(Type type, const std::vector<Block>& blocks);

} // namespace picture
