#pragma once

#include "announce/definitions/Definitions.h"

#include <string>

/// What --help prints.
namespace help_text {

/// About the program: every command with its summary.
[[nodiscard]] std::string OfProgram(const CommandTable& commands);

/// About a group of commands, "media".
[[nodiscard]] std::string OfGroup(const CommandTable& commands, const std::string& group);

[[nodiscard]] std::string OfCommand(const CommandTable& commands, const CommandDefinition& command);

} // namespace help_text
