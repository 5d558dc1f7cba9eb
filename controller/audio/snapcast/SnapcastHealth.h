#pragma once

#include "controller/audio/snapcast/SnapcastState.h"

#include <string>

namespace controller::audio {

/// Why a client of this server, "HOST:PORT", cannot hear announcements of this stream; empty when it can.
[[nodiscard]] std::string WhyNotHeard(const SnapcastState& state,
                                      const std::string& server,
                                      const std::string& client,
                                      const std::string& stream);

} // namespace controller::audio
