#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Texts as a terminal shows them.
namespace text {

/// The text on one line and without anything that a terminal would obey: line breaks and tabs become spaces,
/// other control characters and broken UTF-8 the replacement character.
[[nodiscard]] std::string Visible(std::string_view text);

/// The same for each line of the text.
[[nodiscard]] std::string VisibleLines(std::string_view text);

/// How many cells of a terminal the text takes: two for a character of East Asia and most emoji, none for an
/// accent that stands on another character.
[[nodiscard]] std::size_t Width(std::string_view text);

/// The text, cut behind as many characters as fit and ended by "…" when it is wider than `width`.
[[nodiscard]] std::string Shortened(std::string_view text, std::size_t width);

/// The text with spaces behind it, or in front of it, up to `width`.
[[nodiscard]] std::string PaddedRight(std::string_view text, std::size_t width);
[[nodiscard]] std::string PaddedLeft(std::string_view text, std::size_t width);

/// Whether the text is UTF-8.
[[nodiscard]] bool IsUtf8(std::string_view text);

} // namespace text
