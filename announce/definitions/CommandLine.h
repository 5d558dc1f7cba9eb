#pragma once

#include "announce/definitions/Arguments.h"
#include "announce/definitions/Definitions.h"

#include <string>
#include <vector>

/// What the user has typed, taken apart.
struct CommandLine {
    const CommandDefinition* command = nullptr; ///< null: help about the program, or about a group
    std::string group;                          ///< of the help; empty for the program
    Arguments arguments;
    bool wantsHelp = false;
    bool wantsVersion = false;
};

/// Reads the words behind the program's name. Throws Failure (Usage) that says what would be right.
[[nodiscard]] CommandLine ReadCommandLine(const std::vector<std::string>& words);
