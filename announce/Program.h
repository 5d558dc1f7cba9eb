#pragma once

#include <string>
#include <vector>

/// Runs the command that the words behind the program's name ask for; gives the exit status. What goes wrong
/// is told on standard error.
[[nodiscard]] int RunProgram(const std::vector<std::string>& words);
