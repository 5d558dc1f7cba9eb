#pragma once

#include "controller/audio/Borrowed.h"
#include "controller/audio/pulse/PulseState.h"

#include <string>
#include <vector>

/// How the music under an announcement is lowered, and how what was lowered is known again.
namespace controller::audio::ducked_volume {

constexpr const char* kKind = "pulse";
constexpr const char* kVolume = "volume";
constexpr int kSteps = 5;

/// What `step` of `kSteps` makes of a volume: that many fifths of `decibels` (negative) quieter, 0: none.
[[nodiscard]] PulseVolume Step(const PulseVolume& before, double decibels, int step);

/// How much quieter `set` is; 0 when that cannot be said.
[[nodiscard]] double DecibelsBetween(const PulseVolume& before, const PulseVolume& set);

/// Whether the volume is one of those that lie on the way from `before` to `set`, both included, as far as a
/// server that counts in other units keeps them.
[[nodiscard]] bool IsOurs(const PulseVolume& before, const PulseVolume& set, const PulseVolume& present);

[[nodiscard]] bool AreSame(const PulseVolume& one, const PulseVolume& other);

/// The entry that is written down before a stream is lowered.
[[nodiscard]] Borrowed EntryOf(const PulseStream& stream, const PulseVolume& before, const PulseVolume& set);

/// Volumes of an entry; empty when it is not one.
[[nodiscard]] PulseVolume VolumeOf(const std::string& text);

/// Of which stream an entry is: the very one, or one of the same program.
[[nodiscard]] bool IsOf(const Borrowed& entry, const PulseStream& stream);
[[nodiscard]] bool IsOfProgram(const Borrowed& entry, const std::string& program);

} // namespace controller::audio::ducked_volume
