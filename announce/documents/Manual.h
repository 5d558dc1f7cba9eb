#pragma once

#include <string>

/// The manual, from the definitions of the commands.
namespace manual {

/// As a manual page (mdoc).
[[nodiscard]] std::string AsRoff();

/// As docs/cli.md.
[[nodiscard]] std::string AsMarkdown();

} // namespace manual
