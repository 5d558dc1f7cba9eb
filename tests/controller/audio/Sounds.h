#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <sndfile.h>

namespace controller::audio::test {

/// A tone that nothing else looks like: no two blocks of it are the same, its first and last sample are not
/// 0.
[[nodiscard]] std::vector<short> Melody(std::size_t frames, int channels);

/// Writes a sound file; `format` as the library has it.
void WriteSound(const std::string& path,
                const std::vector<short>& samples,
                int channels,
                int rate,
                int format = SF_FORMAT_WAV | SF_FORMAT_PCM_16);

/// Writes a WAV file of 32-bit floats, whatever they are.
void WriteFloats(const std::string& path, const std::vector<float>& samples, int channels, int rate);

/// What was recorded: interleaved, with `channels` channels.
struct Recording {
    std::vector<short> samples;
    int channels = 0;
    int rate = 0;

    [[nodiscard]] std::int64_t Frames() const;
    [[nodiscard]] short At(std::int64_t frame, int channel) const;
    /// The first and the last frame that is not silent; -1 if all are.
    [[nodiscard]] std::int64_t First() const;
    [[nodiscard]] std::int64_t Last() const;
    /// The mean power's root from frame to frame, in steps of 16 bits.
    [[nodiscard]] double Rms(std::int64_t from, std::int64_t to) const;
};

/// Reads a recording; empty if there is none.
[[nodiscard]] Recording ReadRecording(const std::string& path);

void WriteBytes(const std::string& path, const std::string& bytes);
[[nodiscard]] std::string ReadBytes(const std::string& path);

} // namespace controller::audio::test
