#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace controller {

/// What a WAV file says of itself, read by its chunks.
struct WavHeader {
    unsigned format = 0; ///< 1: plain samples
    unsigned channels = 0;
    unsigned rate = 0;
    unsigned bits = 0;
    std::uint32_t promised = 0; ///< bytes of sound, by the header
    std::uint64_t there = 0;    ///< bytes behind the header
    /// Whoever wrote it could not go back, and put a length there that none has.
    [[nodiscard]] bool IsStreamed() const noexcept;
    /// 16 bits, mono or stereo, in good order: what every room and every browser plays as it is.
    [[nodiscard]] bool IsPlain() const noexcept;
};

/// Nothing for what is no WAV file, or ends before its sound begins.
[[nodiscard]] std::optional<WavHeader> ReadWavHeader(std::string_view content);

/// A WAV file of samples of 16 bits, interleaved, of little end.
[[nodiscard]] std::string WavOf(std::string_view samples, unsigned channels, unsigned rate);

} // namespace controller
