#include "controller/audio/DemoSounds.h"

#include <cmath>
#include <cstdint>
#include <vector>

namespace controller {

namespace {

constexpr std::uint32_t kRate = 8000;
constexpr double kTurn = 6.283185307179586;

/// A struck tone: starts `at` seconds from the beginning, and dies away with the given half-life in seconds.
struct Tone {
    double at;
    double hertz;
    double loudness;
    double halfLife;
};

double ValueOf(const Tone& tone, double time) {
    const double since = time - tone.at;
    if (since < 0)
        return 0;
    // A few milliseconds of rise, for a stroke that begins at full height is heard as a click.
    const double rise = std::fmin(since / 0.004, 1.0);
    return tone.loudness * rise * std::exp2(-since / tone.halfLife) * std::sin(kTurn * tone.hertz * since);
}

std::vector<std::int16_t> Samples(double seconds, const std::vector<Tone>& tones) {
    std::vector<std::int16_t> samples(static_cast<std::size_t>(seconds * kRate));
    for (std::size_t index = 0; index < samples.size(); ++index) {
        const double time = static_cast<double>(index) / kRate;
        double value = 0;
        for (const Tone& tone : tones)
            value += ValueOf(tone, time);
        const double fall = std::fmin((seconds - time) / 0.02, 1.0);
        samples[index] = static_cast<std::int16_t>(std::lround(value * fall * 32000));
    }
    return samples;
}

void Append(std::string& bytes, std::uint32_t number, int size) {
    for (int index = 0; index < size; ++index)
        bytes += static_cast<char>((number >> (8 * index)) & 0xff);
}

std::string Wave(const std::vector<std::int16_t>& samples) {
    const auto dataSize = static_cast<std::uint32_t>(samples.size() * 2);
    std::string bytes = "RIFF";
    Append(bytes, 36 + dataSize, 4);
    bytes += "WAVEfmt ";
    Append(bytes, 16, 4);
    Append(bytes, 1, 2); // PCM
    Append(bytes, 1, 2); // one channel
    Append(bytes, kRate, 4);
    Append(bytes, kRate * 2, 4);
    Append(bytes, 2, 2);
    Append(bytes, 16, 2);
    bytes += "data";
    Append(bytes, dataSize, 4);
    for (const std::int16_t sample : samples)
        Append(bytes, static_cast<std::uint16_t>(sample), 2);
    return bytes;
}

} // namespace

std::string demosounds::Doorbell() {
    return Wave(Samples(0.9, {{0.0, 659.3, 0.55, 0.10},
                              {0.0, 1318.5, 0.15, 0.05},
                              {0.35, 523.3, 0.55, 0.14},
                              {0.35, 1046.5, 0.15, 0.07}}));
}

std::string demosounds::Gong() {
    return Wave(Samples(0.9, {{0.0, 196.0, 0.50, 0.25},
                              {0.0, 392.9, 0.20, 0.16},
                              {0.0, 528.0, 0.12, 0.12},
                              {0.0, 1061.0, 0.06, 0.06}}));
}

std::string demosounds::TestTone() {
    return Wave(Samples(0.95, {{0.0, 523.3, 0.4, 0.08}, {0.25, 659.3, 0.4, 0.08}, {0.5, 784.0, 0.4, 0.16}}));
}

} // namespace controller
