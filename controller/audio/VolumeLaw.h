#pragma once

#include <algorithm>

namespace controller::audio {

constexpr unsigned kFullVolume = 100;

/// The factor by which samples are multiplied at a volume of 0 to 100 (more is 100): cubic, so that half
/// the scale sounds about half as loud. 0 is silence, 100 leaves the samples as they are, 50 is 0.125. The
/// desktop's sound servers follow the same law, so the numbers mean the same here and there.
[[nodiscard]] constexpr double Gain(unsigned volume) {
    const double share = static_cast<double>(std::min(volume, kFullVolume)) / kFullVolume;
    return share * share * share;
}

} // namespace controller::audio
