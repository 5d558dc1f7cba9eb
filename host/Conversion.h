#pragma once

#include "host/Export.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <system_error>

/// Between numbers and text, one reading for every reader: XML values, command parameters, ids in requests.
///
/// Base 10. Leading blanks (those of `isspace` in the C locale) and one sign are accepted; reading stops at
/// the first character that is no ASCII digit; no digits give 0. Nothing depends on the platform's word size
/// or locale. Readers bring the reading along: it is nothing that a host has to offer.
namespace vq {

/// The number that the text begins with, or the nearest end of this range, which must lie well within 64
/// bits.
[[nodiscard]] inline std::int64_t
ReadNumber(std::string_view text, std::int64_t lowest, std::int64_t highest) noexcept {
    const std::size_t first = text.find_first_not_of(" \t\n\v\f\r");
    if (first == std::string_view::npos)
        return 0;
    text.remove_prefix(first);

    const bool isNegative = text.front() == '-';
    if (isNegative || text.front() == '+')
        text.remove_prefix(1);

    constexpr std::uint64_t kLargest = std::numeric_limits<std::int64_t>::max();
    std::uint64_t magnitude = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), magnitude);
    if (error == std::errc::result_out_of_range || magnitude > kLargest)
        magnitude = kLargest;
    const auto number = static_cast<std::int64_t>(magnitude);
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
