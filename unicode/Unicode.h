#pragma once

#include <string>
#include <string_view>

/// Names as people mean them, in whatever language. What is not UTF-8 is given back as it is.
namespace unicode {

/// What is equal for two texts that differ in small and capital letters only, or in how their accents are
/// coded: "FRÜHSTÜCK" and "Frühstück", "STRASSE" and "Straße".
[[nodiscard]] std::string Folded(std::string_view text);

/// The letters without their accents: "Frühstück" is "Fruhstuck".
[[nodiscard]] std::string WithoutMarks(std::string_view text);

} // namespace unicode
