#pragma once

#include <map>
#include <string>
#include <vector>

/// Texts in which `{Name}` stands for the value of a variable.
namespace controller::speech_text {

/// The names that stand in the text, each once, in the order in which they come.
[[nodiscard]] std::vector<std::string> VariablesIn(const std::string& text);

/// The text with the values in their place. Throws `std::invalid_argument`, which says which names there are,
/// for a name that has no value.
[[nodiscard]] std::string Filled(const std::string& text, const std::map<std::string, std::string>& values);

/// Whether there is nothing to speak in it.
[[nodiscard]] bool IsBlank(const std::string& text);

} // namespace controller::speech_text
