#include "controller/audio/ClipReader.h"

#include "controller/audio/DecodebinReader.h"
#include "controller/audio/SoundFileReader.h"

#include <algorithm>
#include <cmath>

namespace controller::audio {

void MakeHarmless(std::vector<float>& samples) {
    for (float& sample : samples)
        sample = std::isfinite(sample) ? std::clamp(sample, -1.0F, 1.0F) : 0.0F;
}

void Amplify(std::vector<float>& samples, float factor) {
    if (factor == 1.0F)
        return; // to the bit
    for (float& sample : samples)
        sample = std::clamp(sample * factor, -1.0F, 1.0F);
}

std::unique_ptr<IClipReader> OpenClipReader(const std::string& path) {
    try {
        return std::make_unique<SoundFileReader>(path);
    } catch (const UnknownSoundFormat&) {
        return std::make_unique<DecodebinReader>(path);
    }
}

} // namespace controller::audio
