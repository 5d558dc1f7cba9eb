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

    [[nodiscard]] bool WantsHelp() const { return arguments.Has("help"); }
    [[nodiscard]] bool WantsVersion() const { return arguments.Has("version"); }
};

/// Reads the words behind the program's name. Throws Failure (Usage) that says what would be right.
[[nodiscard]] CommandLine ReadCommandLine(const CommandTable& commands,
                                          const std::vector<std::string>& words);
