#pragma once

#include "controller/speech/Wave.h"

/// Chime and speech as one sound.
namespace controller::joining {

/// Between chime and speech.
constexpr std::size_t kGap = wave::kRate * 300 / 1000;

/// Without the silence before and behind, but for a breath of it, so that nothing is cut off; empty when all
/// of it is silence.
[[nodiscard]] wave::Samples Trimmed(const wave::Samples& speech);

/// Chime, gap, speech; without a chime the speech alone.
[[nodiscard]] wave::Samples Joined(wave::Samples chime, const wave::Samples& speech);

} // namespace controller::joining
