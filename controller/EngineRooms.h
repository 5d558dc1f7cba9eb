#pragma once

#include "controller/audio/AudioEngine.h"
#include "controller/house/House.h"

#include <vector>

namespace controller {

/// The rooms of the house as the sound engine has them.
[[nodiscard]] std::vector<audio::RoomConfig> EngineRooms(const House& house);

} // namespace controller
