#pragma once

#include "announce/definitions/Definitions.h"

#include <string>

/// The manual, from the definitions of the commands.
namespace manual {

/// As a manual page (mdoc).
[[nodiscard]] std::string AsRoff(const CommandTable& commands);

/// As docs/cli.md.
[[nodiscard]] std::string AsMarkdown(const CommandTable& commands);

} // namespace manual
