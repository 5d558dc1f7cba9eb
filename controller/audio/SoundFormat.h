#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>

namespace controller::audio {

/// The one format that everything between file and output is in: interleaved 32-bit float, stereo, 48 kHz.
/// 16- and 24-bit samples pass through it unchanged. Outputs convert to what their device wants.
constexpr int kRate = 48000;
constexpr int kChannels = 2;

/// Outputs are fed in blocks of 5 ms: a clip starts at the next one. A whole number of nanoseconds, so that
/// time stamps never need rounding.
constexpr std::int64_t kBlockFrames = kRate / 200;
constexpr std::size_t kBlockSamples = static_cast<std::size_t>(kBlockFrames) * kChannels;
constexpr std::size_t kBlockBytes = kBlockSamples * sizeof(float);

/// A clip that is stopped fades out so long: a whole number of blocks.
constexpr std::int64_t kFadeFrames = kRate / 20;

/// Silence after a clip: some players swallow up to 50 ms of what comes last.
constexpr std::int64_t kTailFrames = kRate / 10;

[[nodiscard]] constexpr std::int64_t FramesOf(std::chrono::nanoseconds time) {
    return time.count() / 1000 * kRate / 1'000'000;
}

[[nodiscard]] constexpr std::chrono::nanoseconds TimeOf(std::int64_t frames) {
    return std::chrono::nanoseconds(frames * 1'000'000 / kRate * 1000 +
                                    frames * 1'000'000 % kRate * 1000 / kRate);
}

} // namespace controller::audio
