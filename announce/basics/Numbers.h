#pragma once

#include <optional>
#include <string>

/// `text` as a whole number; nothing when it is none, or too large for one.
[[nodiscard]] std::optional<long> WholeNumber(const std::string& text);

/// The same within bounds; throws Failure (Usage) that names `what` and says what would be right.
[[nodiscard]] long ReadNumber(const std::string& what, const std::string& text, long smallest, long largest);
