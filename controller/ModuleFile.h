#pragma once

#include <filesystem>

namespace controller {

/// The agent's module as it lies beside this program: in the build tree, or where both are installed. When it
/// is in none of these places, the one where it should be, so that whoever loads it says so.
[[nodiscard]] std::filesystem::path FindModuleFile();

} // namespace controller
