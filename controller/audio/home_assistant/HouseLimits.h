#pragma once

#include <chrono>

namespace controller::audio {

/// How long a house and its players may take.
struct HouseLimits {
    /// To say what a player is, or to stop it: less than a room may take to close.
    std::chrono::milliseconds answer{2500};
    std::chrono::milliseconds fetch{8000}; ///< until a player fetches its sound
};

} // namespace controller::audio
