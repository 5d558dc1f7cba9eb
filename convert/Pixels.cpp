#include "convert/Pixels.h"

#include <algorithm>
#include <cstring>
#include <utility>

bool Pixels::IsOpaque() const {
    constexpr std::uint8_t kOpaque = 255;
    for (std::size_t place = kBytes - 1; place < bytes.size(); place += kBytes)
        if (bytes[place] != kOpaque)
            return false;
    return true;
}

picture::Size Within(picture::Size size, std::uint32_t most) {
    const std::uint32_t longer = std::max(size.width, size.height);
    if (longer <= most)
        return size;
    const auto scaled = [&](std::uint32_t side) {
        return static_cast<std::uint32_t>(
            std::max<std::uint64_t>(1, (std::uint64_t{side} * most + longer / 2) / longer));
    };
    return {scaled(size.width), scaled(size.height)};
}

Pixels Upright(Pixels pixels, unsigned orientation) {
    if (orientation <= 1)
        return pixels;
    const bool isOnItsSide = orientation >= 5;
    const bool isFromTheRight = orientation == 2 || orientation == 3 || orientation == 7 || orientation == 8;
    const bool isFromBelow = orientation == 3 || orientation == 4 || orientation == 6 || orientation == 7;
    const auto [width, height] = pixels.size;
    Pixels turned(isOnItsSide ? picture::Size{height, width} : pixels.size);
    for (std::uint32_t y = 0; y < turned.size.height; ++y) {
        std::uint8_t* const line = turned.Line(y);
        for (std::uint32_t x = 0; x < turned.size.width; ++x) {
            std::uint32_t column = isOnItsSide ? y : x;
            std::uint32_t row = isOnItsSide ? x : y;
            column = isFromTheRight ? width - 1 - column : column;
            row = isFromBelow ? height - 1 - row : row;
            std::memcpy(line + x * Pixels::kBytes, pixels.Line(row) + column * Pixels::kBytes,
                        Pixels::kBytes);
        }
    }
    return turned;
}
