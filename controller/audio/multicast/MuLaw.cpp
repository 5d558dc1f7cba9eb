#include "controller/audio/multicast/MuLaw.h"

#include <algorithm>
#include <cstdlib>

namespace controller::audio {

namespace {

constexpr int kBias = 132; ///< puts every segment's first step at a power of two
constexpr int kHighest = 32767 - kBias;

} // namespace

std::uint8_t MuLawOf(std::int16_t sample) {
    const int sign = sample < 0 ? 0x80 : 0;
    const int biased = std::min(std::abs(int{sample}), kHighest) + kBias;
    const int segment = 24 - __builtin_clz(static_cast<unsigned>(biased));
    const int step = (biased >> (segment + 3)) & 0x0f;
    return static_cast<std::uint8_t>(~(sign | segment << 4 | step));
}

} // namespace controller::audio
