#pragma once

#include <memory>
#include <string>
#include <vector>

namespace controller::audio {

/// Decodes one sound file, from its beginning, into the engine's format.
///
/// Files may hold any number; what is given is harmless (`MakeHarmless`).
class IClipReader {
public:
    virtual ~IClipReader() = default;

    /// The next frames, interleaved, some thousands at most; empty at the end.
    /// @throws SoundFileError when the file turns out to be broken.
    [[nodiscard]] virtual std::vector<float> Read() = 0;
};

/// Makes silence of what is no number, and full scale of what is beyond it: the volume is a factor, and
/// bounds nothing else.
void MakeHarmless(std::vector<float>& samples);

/// Makes harmless samples louder or quieter; they stay harmless.
void Amplify(std::vector<float>& samples, float factor);

/// Opens a sound file for playing: what the sound file library knows is proven whole and read by it,
/// everything else is left to GStreamer's decoders. May block; not for the driver thread.
/// @throws SoundFileError when the file is missing, unreadable, broken or known to nobody.
[[nodiscard]] std::unique_ptr<IClipReader> OpenClipReader(const std::string& path);

} // namespace controller::audio
