#pragma once

#include <string>

/// What keeps this process from touching anything: decoders are given what anybody has sent.
namespace sandbox {

/// Bounds processor time, memory, the size of what is written and the number of open files. The first thing
/// that a process does.
void SetLimits();

/// From here on the process, all its threads included, opens no file, reaches no network and starts no
/// program; it keeps what it has open. Everything that is loaded at run time must have been loaded. Says what
/// holds it, as far as the kernel has it: "seccomp and landlock", one of them, or "" where it has neither.
[[nodiscard]] std::string Enter();

} // namespace sandbox
