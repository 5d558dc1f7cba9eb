#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// `announcement-controller token`: the tokens of a house file. Everything throws `std::runtime_error` (or
/// `HouseError`), which says what is wrong; what a person has to know is printed on standard output. A
/// controller that is running takes notice at its next start.
namespace controller::token_command {

/// Makes a token with these rights, keeps its hash in the house file, and prints the token, which nobody can
/// find out afterwards.
void Add(const std::filesystem::path& house, const std::string& name, const std::vector<std::string>& rights);

/// Prints names and rights.
void List(const std::filesystem::path& house);

void Remove(const std::filesystem::path& house, const std::string& name);

} // namespace controller::token_command
