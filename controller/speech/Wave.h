#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// WAV files, as engines give them and as they are kept.
namespace controller::wave {

/// What is kept: 48 kHz, mono, 16 bit.
constexpr std::uint32_t kRate = 48000;
constexpr const char* kEnding = ".wav";
using Samples = std::vector<std::int16_t>;

struct Format {
    std::uint32_t rate = 0;
    std::uint16_t bytes = 0; ///< of a sample of one channel
    std::uint16_t channels = 0;
};

/// How long so many samples of what is kept last, rounded up.
[[nodiscard]] constexpr std::chrono::milliseconds DurationOf(std::size_t samples) {
    return std::chrono::milliseconds((samples * 1000 + kRate - 1) / kRate);
}

/// A WAV file of these samples, interleaved and little-endian.
[[nodiscard]] std::string Of(const Format& format, const std::string& samples);

/// The file with lengths that are true: what a program writes to a pipe before it knows how much there will
/// be says anything, and its sound goes on to the end. Throws `SpeechError` for what is no WAV file, or holds
/// no sound.
[[nodiscard]] std::string Mended(const std::string& file);

/// The sound of a whole WAV file, brought to `kRate` and mono; that of a file by its path, of any kind that
/// rooms play. Throws `SpeechError`, also for what lasts longer than five minutes. Not for the driver thread.
[[nodiscard]] Samples Decode(const std::string& file);
[[nodiscard]] Samples DecodeFile(const std::string& path);

/// The samples as a file that tells when it has been damaged.
[[nodiscard]] std::string Sealed(const Samples& samples);

/// Whether the file is as `Sealed` has made it; gives how many samples it holds.
[[nodiscard]] bool IsSealed(const std::string& file, std::size_t& samples);

} // namespace controller::wave
