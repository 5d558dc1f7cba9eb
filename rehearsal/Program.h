#pragma once

#include "rehearsal/Options.h"

/// Runs the rehearsal that the options ask for, from the scenario to standard output, and gives the exit
/// status. What goes wrong is said in one message on standard error.
[[nodiscard]] int RunProgram(const Options& options);
