#pragma once

#include "controller/speech/Wave.h"

#include <chrono>
#include <filesystem>

namespace controller {

/// What is in a sound file, taken from its bytes: no length in it is believed.
struct HeardSound {
    /// Throws `std::runtime_error` for what is no WAV file with 48 kHz, mono, 16 bit and nothing but its seal
    /// behind.
    explicit HeardSound(const std::filesystem::path& file);

    wave::Samples samples;

    [[nodiscard]] std::chrono::milliseconds Duration() const;
    /// The loudest of the samples from one to before another.
    [[nodiscard]] int Peak(std::size_t from, std::size_t to) const;
    [[nodiscard]] int Peak() const { return Peak(0, samples.size()); }
};

} // namespace controller
