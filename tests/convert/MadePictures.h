#pragma once

#include "convert/Pixels.h"

#include <string>
#include <vector>

/// Pictures that tests make for themselves.
namespace made_pictures {

/// Red, green, blue and white in the corners: from left to right, from above.
[[nodiscard]] Pixels Corners(picture::Size size, std::uint8_t opacity = 255);

/// 'r', 'g', 'b', 'w' in the corners; '-' where nothing is seen, '?' for another colour.
[[nodiscard]] std::string CornersOf(const Pixels& pixels);

/// What a camera says: that it was held so, and a place, which stands there as "51.5N".
[[nodiscard]] std::string Camera(unsigned orientation);

/// With what the camera says.
[[nodiscard]] std::string Jpeg(const Pixels& pixels, unsigned orientation);
[[nodiscard]] std::string Png(const Pixels& pixels, unsigned orientation);
[[nodiscard]] std::string WebP(const Pixels& pixels, unsigned orientation);

/// With a comment that tells the place; of several pictures when it moves. Its lines may come in another
/// order.
struct GifKind {
    unsigned pictures = 1;
    bool isInterlaced = false;
};
[[nodiscard]] std::string Gif(const Pixels& pixels, GifKind kind = {});

/// Of two pictures.
[[nodiscard]] std::string MovingWebP(const Pixels& pixels);

/// For a printing press: in four inks, turned over as programs do.
[[nodiscard]] std::string InkJpeg(const Pixels& pixels);

/// A header that claims a picture of this size, and little else.
[[nodiscard]] std::vector<std::string> Claims();

/// A JPEG in four colours that comes in several passes, and takes 800 MB to be put together.
[[nodiscard]] std::string MemoryBomb();

} // namespace made_pictures
