#pragma once

#include "picture/PictureHead.h"

#include <cstddef>
#include <cstdint>
#include <vector>

/// A picture in memory: red, green, blue and opacity of each point, a byte each, line by line.
struct Pixels {
    static constexpr std::size_t kBytes = 4;

    picture::Size size;
    std::vector<std::uint8_t> bytes;

    Pixels() = default;
    /// Of which nothing is seen yet.
    explicit Pixels(picture::Size wanted) : size(wanted), bytes(kBytes * wanted.width * wanted.height) {}

    [[nodiscard]] std::uint8_t* Line(std::size_t number) {
        return bytes.data() + number * kBytes * size.width;
    }
    [[nodiscard]] const std::uint8_t* Line(std::size_t number) const {
        return bytes.data() + number * kBytes * size.width;
    }

    /// Whether nothing shines through.
    [[nodiscard]] bool IsOpaque() const;
};

/// As large as a picture may be of which the longer side has at most so many pixels; never larger than it is.
[[nodiscard]] picture::Size Within(picture::Size size, std::uint32_t most);

/// As it is seen by who holds the camera as it was held then; `orientation` is 1 to 8, as EXIF counts.
[[nodiscard]] Pixels Upright(Pixels pixels, unsigned orientation);
