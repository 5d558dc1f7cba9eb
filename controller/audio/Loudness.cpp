#include "controller/audio/Loudness.h"

#include "controller/audio/ClipReader.h"
#include "controller/audio/Gst.h"
#include "controller/audio/SoundFormat.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <memory>
#include <new>
#include <vector>

#include <ebur128.h>

namespace controller::audio {

namespace {

constexpr double kSilence = -std::numeric_limits<double>::infinity();
/// The length of a block of the measure; what is shorter has no integrated value.
constexpr std::size_t kBlock = static_cast<std::size_t>(kRate) * 4 / 10;

struct MeterEnd {
    void operator()(ebur128_state* meter) const { ebur128_destroy(&meter); }
};
using Meter = std::unique_ptr<ebur128_state, MeterEnd>;

double LufsOf(ebur128_state& meter, std::size_t frames) {
    double lufs = 0;
    const int result =
        frames < kBlock ? ebur128_loudness_momentary(&meter, &lufs) : ebur128_loudness_global(&meter, &lufs);
    if (result != EBUR128_SUCCESS)
        return kSilence;
    return lufs;
}

double TruePeakOf(ebur128_state& meter) {
    double highest = 0;
    for (unsigned channel = 0; channel < kChannels; ++channel) {
        double peak = 0;
        if (ebur128_true_peak(&meter, channel, &peak) == EBUR128_SUCCESS)
            highest = std::max(highest, peak);
    }
    return highest > 0 ? 20 * std::log10(highest) : kSilence;
}

} // namespace

Loudness MeasureLoudness(const std::string& file) {
    StartGstreamer();
    const auto reader = OpenClipReader(file);
    const Meter meter(ebur128_init(kChannels, kRate, EBUR128_MODE_I | EBUR128_MODE_TRUE_PEAK));
    if (!meter)
        throw std::bad_alloc();
    std::size_t frames = 0;
    for (auto samples = reader->Read(); !samples.empty(); samples = reader->Read()) {
        const std::size_t count = samples.size() / kChannels;
        if (ebur128_add_frames_float(meter.get(), samples.data(), count) != EBUR128_SUCCESS)
            throw std::bad_alloc();
        frames += count;
    }
    return {LufsOf(*meter, frames), TruePeakOf(*meter)};
}

double GainFor(const Loudness& loudness) noexcept {
    if (std::isinf(loudness.truePeak))
        return 0; // nothing becomes louder that is not there
    return std::min({kTargetLufs - loudness.lufs, kMostGain, kMostTruePeak - loudness.truePeak});
}

float FactorOf(double gain) noexcept {
    return static_cast<float>(std::pow(10.0, gain / 20));
}

} // namespace controller::audio
