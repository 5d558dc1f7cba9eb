#pragma once

#include "host/Export.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

/// Between numbers and text, one reading for every reader: XML values, command parameters, ids in requests.
///
/// Base 10. Leading blanks (those of `isspace` in the C locale) and one sign are accepted; reading stops at
/// the first character that is no ASCII digit; no digits give 0. Nothing depends on the platform's word size
/// or locale. Readers bring the reading along: it is nothing that a host has to offer.
namespace vq {

/// The number that the text begins with, or the nearest end of this range, which lies within 40 bits.
[[nodiscard]] inline std::int64_t
ReadNumber(std::string_view text, std::int64_t lowest, std::int64_t highest) noexcept {
    const std::size_t first = text.find_first_not_of(" \t\n\v\f\r");
    if (first == std::string_view::npos)
        return 0;
    text.remove_prefix(first);

    const bool isNegative = text.front() == '-';
    if (isNegative || text.front() == '+')
        text.remove_prefix(1);

    constexpr std::int64_t kBeyondEveryRange = std::int64_t{1} << 40;
    std::int64_t number = 0;
    for (const char character : text) {
        if (character < '0' || character > '9')
            break;
        if (number < kBeyondEveryRange) // and from there on it stays beyond, however many digits follow
            number = number * 10 + (character - '0');
    }
    return std::clamp(isNegative ? -number : number, lowest, highest);
}

/// Values from -2147483648 to 4294967295 count modulo 2^32 (-1 is 4294967295), others as the nearest end of
/// that range.
[[nodiscard]] inline std::uint32_t ToULong(std::string_view text) noexcept {
    return static_cast<std::uint32_t>(ReadNumber(text, std::numeric_limits<std::int32_t>::min(),
                                                 std::numeric_limits<std::uint32_t>::max()));
}

/// The value, or the nearest end of the signed 32-bit range.
[[nodiscard]] inline std::int32_t ToLong(std::string_view text) noexcept {
    return static_cast<std::int32_t>(
        ReadNumber(text, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()));
}

/// The decimal text of a number.
[[nodiscard]] VQ_EXPORT std::string ToString(std::uint32_t number);

} // namespace vq
