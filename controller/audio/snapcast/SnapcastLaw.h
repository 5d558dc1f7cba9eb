#pragma once

#include "controller/audio/VolumeLaw.h"

#include <algorithm>
#include <cmath>

namespace controller::audio {

/// The factor by which a snapclient multiplies samples at so many percent: 50 is 0.24.
[[nodiscard]] inline double SnapcastGain(unsigned percent) {
    return (std::pow(10.0, percent / 100.0) - 1) / 9;
}

/// The percent at which a snapclient is as loud as any room at this volume, as near as whole numbers come: 1
/// is its quietest, and what a room at 14 is; 0 is silence in both.
[[nodiscard]] inline unsigned SnapcastPercent(unsigned volume) {
    const double gain = Gain(volume);
    if (gain <= 0)
        return 0;
    return std::clamp(static_cast<unsigned>(std::lround(100 * std::log10(1 + 9 * gain))), 1U, 100U);
}

} // namespace controller::audio
