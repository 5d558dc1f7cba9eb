#pragma once

#include <algorithm>
#include <charconv>
#include <optional>
#include <string>
#include <string_view>

/// What texts from outside say, whatever the machine's language is.
namespace controller {

/// The text as a whole decimal number, no more and no less, from `least` to `most`; nothing otherwise.
template <class Number>
[[nodiscard]] std::optional<Number> ReadNumber(std::string_view text, Number least, Number most) {
    Number number{};
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, number);
    const bool isNumber = read.ec == std::errc() && read.ptr == end && number >= least && number <= most;
    return isNumber ? std::optional(number) : std::nullopt;
}

/// The text with its ASCII letters small.
[[nodiscard]] inline std::string Lower(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return lower;
}

/// The text on one line, without anything that a terminal would obey: each control character is a blank, and
/// what is no UTF-8 is a question mark.
[[nodiscard]] std::string OneLine(std::string_view text);

/// The same for each line of the text.
[[nodiscard]] std::string PlainLines(std::string_view text);

/// "1 room", "2 rooms".
[[nodiscard]] inline std::string CountOf(std::size_t count, const std::string& thing) {
    return std::to_string(count) + " " + thing + (count == 1 ? "" : "s");
}

} // namespace controller
