#pragma once

#include "controller/speech/Patience.h"

#include <cstddef>
#include <string>
#include <vector>

namespace controller {

/// What a program has printed on standard output.
///
/// It is started without a shell, in a process group of its own, with nothing of ours but standard input and
/// output, a bare environment and the root as its folder, and is killed with its group when it is over,
/// however that comes. Not for the driver thread. Throws `SpeechError` when it cannot be started, fails,
/// prints more than `mostOutput` bytes, or when patience ends.
/// Where the thread does not block SIGPIPE, as a `Worker` does, the process ignores it.
[[nodiscard]] std::string RunProgram(const std::vector<std::string>& words,
                                     const std::string& input,
                                     std::size_t mostOutput,
                                     const Patience& patience);

/// What is said of a program that there is not.
[[nodiscard]] std::string NotInstalled(const std::string& program);

} // namespace controller
