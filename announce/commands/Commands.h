#pragma once

#include "announce/definitions/Definitions.h"

/// Every command of the program, with what does it.
[[nodiscard]] CommandTable AllCommands();
