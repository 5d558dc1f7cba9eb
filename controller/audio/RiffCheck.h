#pragma once

#include <cstdint>
#include <string>

namespace controller::audio {

/// Libraries clamp a WAV file's sound to what is there and so take half a file for a whole one. This reads
/// the chunk sizes themselves: throws SoundFileError when the sound is missing, empty or shorter than its
/// header says. Files that are not RIFF/WAVE pass. `name` is for the message; the file's place is undefined
/// afterwards.
void RequireWholeRiff(int descriptor, std::int64_t fileSize, const std::string& name);

} // namespace controller::audio
