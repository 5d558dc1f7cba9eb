#include "controller/audio/ClipReader.h"

#include "controller/audio/DecodebinReader.h"
#include "controller/audio/SoundFileReader.h"

namespace controller::audio {

std::unique_ptr<IClipReader> OpenClipReader(const std::string& path) {
    try {
        return std::make_unique<SoundFileReader>(path);
    } catch (const UnknownSoundFormat&) {
        return std::make_unique<DecodebinReader>(path);
    }
}

} // namespace controller::audio
