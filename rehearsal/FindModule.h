#pragma once

#include <string>

/// The file of the agent's module that belongs to this program: beside it, or where the build tree and the
/// installation have it, seen from the program. Throws `std::runtime_error`, which names the places, when it
/// is in none of them.
[[nodiscard]] std::string FindModule();
