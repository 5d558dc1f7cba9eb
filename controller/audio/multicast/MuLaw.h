#pragma once

#include <cstdint>

namespace controller::audio {

/// ITU-T G.711, u-law: what telephones take for a sample.
[[nodiscard]] std::uint8_t MuLawOf(std::int16_t sample);

} // namespace controller::audio
