#pragma once

#include "controller/announcements/Announcements.h"

#include <stdexcept>
#include <string>
#include <vector>

namespace controller {

/// One line of the console, taken apart.
struct ConsoleCommand {
    std::string verb;               ///< empty for a blank line or a comment
    std::vector<std::string> words; ///< what follows the verb and is no parameter
    Parameters parameters;          ///< `name=value`, in their order
};

/// A line that cannot be understood; the text says what would be right.
class ConsoleError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Takes a line apart: words between blanks; a stretch in double quotes counts as it stands, `\"` and `\\` in
/// it stand for the character. A word with a `=` behind a name is a parameter; a value `@FILE` is read from
/// the file (1 MiB at most), and `@@` stands for one `@`. A line that begins with `#` says nothing. Throws
/// `ConsoleError`.
[[nodiscard]] ConsoleCommand ParseConsoleLine(const std::string& line);

/// Reads the file of an `@FILE`. Throws `ConsoleError`.
[[nodiscard]] std::string ReadConsoleFile(const std::string& file);

} // namespace controller
