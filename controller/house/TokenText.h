#pragma once

#include "controller/access/Token.h"

#include <string>

/// Tokens in the text of a house file, written and taken out by hand, so that everything else, comments too,
/// stays as people wrote it. Throws `std::runtime_error` for a file in which that cannot be done, with what
/// to do instead.
namespace controller::token_text {

/// The text with one more token at the head of the list.
[[nodiscard]] std::string Add(const std::string& house, const Token& token);

/// The text without the token of this name.
[[nodiscard]] std::string Remove(const std::string& house, const std::string& name);

} // namespace controller::token_text
