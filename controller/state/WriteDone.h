#pragma once

#include <functional>
#include <string>

namespace controller {

/// Told how a write went, on the driver thread: with the reason when it failed, and, when it was tried again
/// later and succeeded, once more; with an empty text once it stands on the disk.
using WriteDone = std::function<void(const std::string& error)>;

} // namespace controller
