#pragma once

#include <functional>
#include <string>

namespace controller {

/// Told once how a write went, on the driver thread: with the reason when it failed, though it is tried
/// again; with an empty text when it stands on the disk.
using WriteDone = std::function<void(const std::string& error)>;

/// For a write that nobody waits for, and whose failure concerns nobody.
inline void Nobody(const std::string& /*error*/) {}

} // namespace controller
