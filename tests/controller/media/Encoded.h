#pragma once

#include <string>

namespace controller::test {

/// A file as other programs make it: a tone of 440 Hz, stereo at 48 kHz, of at least so many seconds, through
/// GStreamer's elements, such as "lamemp3enc" or "voaacenc ! mp4mux".
[[nodiscard]] std::string Encoded(const std::string& elements, double seconds);

} // namespace controller::test
