#pragma once

#include <charconv>
#include <cstddef>
#include <limits>
#include <string>
#include <string_view>
#include <type_traits>

/// Appends a text as a JSON string, in quotes: `"`, `\` and control characters escaped, and nothing else.
void AppendJsonText(std::string& out, std::string_view text);

/// Appends a number in decimal.
template <class Number>
void AppendNumber(std::string& out, Number number) {
    static_assert(std::is_integral_v<Number>);
    char digits[std::numeric_limits<Number>::digits10 + 2];
    const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    out.append(digits, static_cast<std::size_t>(end - digits));
}

/// A text for messages and people: in quotes, escaped as JSON, and cut where it is longer than `most` bytes.
[[nodiscard]] std::string QuotedExcerpt(std::string_view text, std::size_t most = 60);

/// The longest beginning of a UTF-8 text that has at most `most` bytes and ends between two characters.
[[nodiscard]] std::string_view Beginning(std::string_view text, std::size_t most);
