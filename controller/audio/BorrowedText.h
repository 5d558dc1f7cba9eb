#pragma once

#include "controller/audio/Borrowed.h"

#include <optional>
#include <string>

/// Entries as they go through a pipe: any text may stand in them.
namespace controller::audio::borrowed_text {

[[nodiscard]] std::string Of(const Borrowed& entry);

/// Takes the first entry off what has come so far; nothing when it is not whole yet.
[[nodiscard]] std::optional<Borrowed> TakeFirst(std::string& text);

} // namespace controller::audio::borrowed_text
