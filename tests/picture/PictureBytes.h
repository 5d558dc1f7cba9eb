#pragma once

#include <cstdint>
#include <string>

/// What pictures that tests make for themselves are put together from.
namespace picture::test {

inline std::string Bytes(std::uint32_t number, unsigned bytes, bool isBigEndian = true) {
    std::string text;
    for (unsigned index = 0; index < bytes; ++index)
        text += static_cast<char>(number >> (8 * (isBigEndian ? bytes - 1 - index : index)));
    return text;
}

inline std::string JpegSegment(char marker, const std::string& content) {
    return std::string("\xff") + marker + Bytes(static_cast<std::uint32_t>(content.size()) + 2, 2) + content;
}

} // namespace picture::test
