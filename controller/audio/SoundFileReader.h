#pragma once

#include "controller/audio/ClipReader.h"
#include "controller/audio/SoundFile.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <gst/audio/audio.h>

namespace controller::audio {

/// Reads files that the sound file library knows. Channels and rate are converted by GStreamer's converter.
class SoundFileReader final : public IClipReader {
public:
    /// @throws SoundFileError, UnknownSoundFormat
    explicit SoundFileReader(const std::string& path);

    [[nodiscard]] std::vector<float> Read() override;

private:
    struct ConverterDeleter {
        void operator()(GstAudioConverter* converter) const { gst_audio_converter_free(converter); }
    };

    [[nodiscard]] std::vector<float> Convert(float* samples, std::size_t frames);

    std::string m_name;
    SoundFile m_file;
    std::unique_ptr<GstAudioConverter, ConverterDeleter> m_converter;
    std::int64_t m_framesRead = 0;
    std::int64_t m_framesToCome = 0; ///< Of the result.
};

} // namespace controller::audio
