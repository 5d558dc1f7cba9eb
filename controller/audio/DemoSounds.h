#pragma once

#include <string>

/// The sounds that a new house starts with and a room is tried out by, as whole WAV files: 16-bit mono, less
/// than a second each. They are computed here, so that a house can be made anywhere without files to copy.
namespace controller::demosounds {

/// Two falling bell tones.
[[nodiscard]] std::string Doorbell();

/// One deep gong with its overtones.
[[nodiscard]] std::string Gong();

/// Three rising tones.
[[nodiscard]] std::string TestTone();

} // namespace controller::demosounds
