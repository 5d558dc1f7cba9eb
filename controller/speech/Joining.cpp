#include "controller/speech/Joining.h"

#include <algorithm>

namespace controller::joining {

namespace {

/// -50 dB below full scale.
constexpr int kSilent = 104;
constexpr std::ptrdiff_t kBreathBefore = wave::kRate * 10 / 1000;
constexpr std::ptrdiff_t kBreathBehind = wave::kRate * 40 / 1000;

bool IsHeard(std::int16_t sample) {
    return sample > kSilent || sample < -kSilent;
}

} // namespace

wave::Samples Trimmed(const wave::Samples& speech) {
    const auto first = std::find_if(speech.begin(), speech.end(), IsHeard);
    if (first == speech.end())
        return {};
    const auto end = std::find_if(speech.rbegin(), speech.rend(), IsHeard).base();
    return {first - std::min(kBreathBefore, first - speech.begin()),
            end + std::min(kBreathBehind, speech.end() - end)};
}

wave::Samples Joined(wave::Samples chime, const wave::Samples& speech) {
    if (chime.empty())
        return speech;
    chime.resize(chime.size() + kGap);
    chime.insert(chime.end(), speech.begin(), speech.end());
    return chime;
}

} // namespace controller::joining
