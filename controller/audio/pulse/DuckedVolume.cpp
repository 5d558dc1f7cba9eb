#include "controller/audio/pulse/DuckedVolume.h"

#include <algorithm>
#include <cmath>
#include <sstream>

namespace controller::audio::ducked_volume {

namespace {

/// A thousandth of the scale. People change volumes by hundredths.
constexpr std::int64_t kSame = 65;

/// What is left of the scale: a decibel is a sixtieth of a power of ten where volumes are cubic.
constexpr double kDecibelsOfTen = 60;

std::string TextOf(const PulseVolume& volume) {
    std::string text;
    for (const std::uint32_t channel : volume)
        text += (text.empty() ? "" : " ") + std::to_string(channel);
    return text;
}

} // namespace

double DecibelsBetween(const PulseVolume& before, const PulseVolume& set) {
    const auto loudest = std::max_element(before.begin(), before.end());
    const auto place = static_cast<std::size_t>(loudest - before.begin());
    if (loudest == before.end() || *loudest == 0 || place >= set.size() || set[place] == 0)
        return 0;
    return kDecibelsOfTen * std::log10(static_cast<double>(set[place]) / *loudest);
}

PulseVolume Step(const PulseVolume& before, double decibels, int step) {
    const double factor = std::pow(10, decibels * step / kSteps / kDecibelsOfTen);
    PulseVolume volume;
    volume.reserve(before.size());
    for (const std::uint32_t channel : before)
        volume.push_back(static_cast<std::uint32_t>(std::lround(channel * factor)));
    return volume;
}

bool AreSame(const PulseVolume& one, const PulseVolume& other) {
    return std::equal(
        one.begin(), one.end(), other.begin(), other.end(),
        [](std::int64_t first, std::int64_t second) { return std::abs(first - second) <= kSame; });
}

bool IsOurs(const PulseVolume& before, const PulseVolume& set, const PulseVolume& present) {
    const double decibels = DecibelsBetween(before, set);
    for (int step = 0; step <= kSteps; ++step)
        if (AreSame(present, Step(before, decibels, step)))
            return true;
    return AreSame(present, set);
}

Borrowed EntryOf(const PulseStream& stream, const PulseVolume& before, const PulseVolume& set) {
    return {kKind, std::to_string(stream.index) + " " + stream.program, kVolume, TextOf(before), TextOf(set)};
}

PulseVolume VolumeOf(const std::string& text) {
    std::istringstream words(text);
    PulseVolume volume;
    for (std::uint32_t channel = 0; words >> channel;)
        volume.push_back(channel);
    return volume;
}

bool IsOfProgram(const Borrowed& entry, const std::string& program) {
    const auto space = entry.thing.find(' ');
    return entry.property == kVolume && space != std::string::npos &&
           entry.thing.compare(space + 1, std::string::npos, program) == 0;
}

bool IsOf(const Borrowed& entry, const PulseStream& stream) {
    return entry.property == kVolume && entry.thing == std::to_string(stream.index) + " " + stream.program;
}

} // namespace controller::audio::ducked_volume
