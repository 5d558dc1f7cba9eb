#pragma once

#include <string>

namespace controller::audio {

/// How loud a sound is heard at full volume, after EBU R 128.
struct Loudness {
    double lufs = 0;     ///< integrated; of what is shorter than 0.4 s the momentary value; -inf: too quiet
    double truePeak = 0; ///< dBTP; -inf: silence
};

/// Every sound is brought to this loudness when it is played, as far as the two limits let it.
constexpr double kTargetLufs = -16;
constexpr double kMostGain = 12;     ///< dB, upwards
constexpr double kMostTruePeak = -1; ///< dBTP

/// Measures what rooms hear of the file. Reads it whole: not for the driver thread.
/// @throws SoundFileError when it cannot be played.
[[nodiscard]] Loudness MeasureLoudness(const std::string& file);

/// The gain by which a sound is played, in dB.
[[nodiscard]] double GainFor(const Loudness& loudness) noexcept;

/// A gain in dB as a factor.
[[nodiscard]] float FactorOf(double gain) noexcept;

} // namespace controller::audio
