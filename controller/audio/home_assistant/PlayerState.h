#pragma once

#include "controller/audio/home_assistant/HomeAssistantRoom.h"

#include <string>

namespace controller::audio {

/// Why the player cannot be a room, by what Home Assistant says of it, as JSON; empty when it can.
[[nodiscard]] std::string WhyUnusable(const HomeAssistantRoom& room, const std::string& state);

} // namespace controller::audio
