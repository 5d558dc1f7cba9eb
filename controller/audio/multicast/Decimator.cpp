#include "controller/audio/multicast/Decimator.h"

#include "controller/audio/SoundFormat.h"

#include <cmath>

namespace controller::audio {

namespace {

constexpr double kPi = 3.14159265358979323846;

/// Steep enough that nothing above half the new rate is left, and 92 % of what is below it.
constexpr std::int64_t kReachInSamples = 36;
constexpr double kCutOff = 0.462;

double SincOf(double x) {
    return x == 0.0 ? 1.0 : std::sin(kPi * x) / (kPi * x);
}

/// Blackman's window; `place` from -1 to 1.
double WindowOf(double place) {
    return 0.42 + 0.5 * std::cos(kPi * place) + 0.08 * std::cos(2 * kPi * place);
}

} // namespace

Decimator::Decimator(int factor) : m_factor(factor), m_reach(kReachInSamples * factor) {
    std::vector<double> weights;
    double sum = 0;
    for (std::int64_t at = -m_reach; at <= m_reach; ++at) {
        const auto place = static_cast<double>(at);
        weights.push_back(SincOf(2 * kCutOff * place / factor) *
                          WindowOf(place / static_cast<double>(m_reach + 1)));
        sum += weights.back();
    }
    // Of both channels half.
    for (const double weight : weights)
        m_weights.push_back(static_cast<float>(weight / sum / kChannels));
}

void Decimator::Run(const std::vector<float>& in, std::vector<float>& out) const {
    for (std::size_t sample = 0; sample < out.size(); ++sample) {
        const float* frame = in.data() + sample * static_cast<std::size_t>(m_factor * kChannels);
        float sum = 0;
        for (const float weight : m_weights) {
            sum += weight * (frame[0] + frame[1]);
            frame += kChannels;
        }
        out[sample] = sum;
    }
}

} // namespace controller::audio
