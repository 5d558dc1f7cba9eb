#include "host/Conversion.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <string_view>
#include <system_error>

namespace vq {
namespace {

/// Any magnitude above this is out of every range that a reader has.
constexpr std::int64_t kLargest = std::numeric_limits<std::int64_t>::max();

/// The number that the text begins with; beyond 63 bits the largest of its sign.
std::int64_t ReadNumber(std::string_view text) noexcept {
    const std::size_t first = text.find_first_not_of(" \t\n\v\f\r");
    if (first == std::string_view::npos)
        return 0;
    text.remove_prefix(first);

    const bool isNegative = text.front() == '-';
    if (isNegative || text.front() == '+')
        text.remove_prefix(1);

    std::uint64_t magnitude = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), magnitude);
    if (error == std::errc::result_out_of_range || magnitude > static_cast<std::uint64_t>(kLargest))
        magnitude = static_cast<std::uint64_t>(kLargest);
    const auto number = static_cast<std::int64_t>(magnitude);
    return isNegative ? -number : number;
}

} // namespace

std::uint32_t ToULong(const std::string& text) noexcept {
    constexpr std::int64_t kLowest = std::numeric_limits<std::int32_t>::min();
    constexpr std::int64_t kHighest = std::numeric_limits<std::uint32_t>::max();
    return static_cast<std::uint32_t>(std::clamp(ReadNumber(text), kLowest, kHighest));
}

std::int32_t ToLong(const std::string& text) noexcept {
    constexpr std::int64_t kLowest = std::numeric_limits<std::int32_t>::min();
    constexpr std::int64_t kHighest = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::clamp(ReadNumber(text), kLowest, kHighest));
}

std::string ToString(std::uint32_t number) {
    return std::to_string(number);
}

std::string ToString(std::int32_t number) {
    return std::to_string(number);
}

} // namespace vq
