#include "controller/audio/SoundFileReader.h"

#include "controller/audio/SoundFormat.h"

#include <algorithm>
#include <array>
#include <filesystem>

namespace controller::audio {

namespace {

constexpr std::int64_t kFramesAtOnce = 4096;
constexpr unsigned kResamplerQuality = 8;

GstAudioChannelPosition PositionOf(int channel) {
    switch (channel) {
    case SF_CHANNEL_MAP_LEFT:
    case SF_CHANNEL_MAP_FRONT_LEFT:
        return GST_AUDIO_CHANNEL_POSITION_FRONT_LEFT;
    case SF_CHANNEL_MAP_RIGHT:
    case SF_CHANNEL_MAP_FRONT_RIGHT:
        return GST_AUDIO_CHANNEL_POSITION_FRONT_RIGHT;
    case SF_CHANNEL_MAP_CENTER:
    case SF_CHANNEL_MAP_FRONT_CENTER:
        return GST_AUDIO_CHANNEL_POSITION_FRONT_CENTER;
    case SF_CHANNEL_MAP_LFE:
        return GST_AUDIO_CHANNEL_POSITION_LFE1;
    case SF_CHANNEL_MAP_REAR_LEFT:
        return GST_AUDIO_CHANNEL_POSITION_REAR_LEFT;
    case SF_CHANNEL_MAP_REAR_RIGHT:
        return GST_AUDIO_CHANNEL_POSITION_REAR_RIGHT;
    case SF_CHANNEL_MAP_REAR_CENTER:
        return GST_AUDIO_CHANNEL_POSITION_REAR_CENTER;
    case SF_CHANNEL_MAP_FRONT_LEFT_OF_CENTER:
        return GST_AUDIO_CHANNEL_POSITION_FRONT_LEFT_OF_CENTER;
    case SF_CHANNEL_MAP_FRONT_RIGHT_OF_CENTER:
        return GST_AUDIO_CHANNEL_POSITION_FRONT_RIGHT_OF_CENTER;
    case SF_CHANNEL_MAP_SIDE_LEFT:
        return GST_AUDIO_CHANNEL_POSITION_SIDE_LEFT;
    case SF_CHANNEL_MAP_SIDE_RIGHT:
        return GST_AUDIO_CHANNEL_POSITION_SIDE_RIGHT;
    default:
        return GST_AUDIO_CHANNEL_POSITION_INVALID;
    }
}

using Positions = std::array<GstAudioChannelPosition, 64>;

/// Where the file's channels are heard: as the file says, or as is usual for their number.
Positions PositionsOf(const SoundFile& file) {
    Positions positions{};
    std::array<int, 64> map{};
    const int channels = file.Channels();
    if (channels == 1) {
        positions[0] = GST_AUDIO_CHANNEL_POSITION_MONO;
        return positions;
    }
    const int size = static_cast<int>(sizeof(int)) * channels;
    const bool isKnown = sf_command(file.Handle(), SFC_GET_CHANNEL_MAP_INFO, map.data(), size) == SF_TRUE;
    std::transform(map.begin(), map.begin() + channels, positions.begin(), PositionOf);
    if (!isKnown || !gst_audio_check_valid_channel_positions(positions.data(), channels, FALSE))
        gst_audio_channel_positions_from_mask(channels, gst_audio_channel_get_fallback_mask(channels),
                                              positions.data());
    return positions;
}

GstAudioConverter* CreateConverter(const SoundFile& file) {
    GstAudioInfo in;
    GstAudioInfo out;
    gst_audio_info_init(&in);
    gst_audio_info_init(&out);
    const Positions positions = PositionsOf(file);
    gst_audio_info_set_format(&in, GST_AUDIO_FORMAT_F32, file.Rate(), file.Channels(), positions.data());
    gst_audio_info_set_format(&out, GST_AUDIO_FORMAT_F32, kRate, kChannels, nullptr);
    GstStructure* options = gst_structure_new_empty("options");
    gst_audio_resampler_options_set_quality(GST_AUDIO_RESAMPLER_METHOD_KAISER, kResamplerQuality, file.Rate(),
                                            kRate, options);
    return gst_audio_converter_new(GST_AUDIO_CONVERTER_FLAG_NONE, &in, &out, options);
}

} // namespace

SoundFileReader::SoundFileReader(const std::string& path)
    : m_name(std::filesystem::path(path).filename().string())
    , m_file(path)
    , m_converter(CreateConverter(m_file))
    , m_framesToCome((m_file.Frames() * kRate + m_file.Rate() - 1) / m_file.Rate()) {
    if (!m_converter)
        throw SoundFileError(m_name + ": its " + std::to_string(m_file.Channels()) + " channels at " +
                             std::to_string(m_file.Rate()) + " Hz cannot be converted");
}

std::vector<float> SoundFileReader::Read() {
    std::vector<float> samples(static_cast<std::size_t>(kFramesAtOnce * m_file.Channels()));
    while (m_framesToCome > 0) {
        const sf_count_t count = sf_readf_float(m_file.Handle(), samples.data(), kFramesAtOnce);
        m_framesRead += count;
        if (count < kFramesAtOnce && m_framesRead < m_file.Frames())
            throw SoundFileError(m_name + ": ended while it was played, after " +
                                 std::to_string(m_framesRead) + " of " + std::to_string(m_file.Frames()) +
                                 " samples");
        // Before the resampler, which would spread it, and behind it, for it may go beyond full scale again.
        MakeHarmless(samples);
        // Silence behind the end draws out what the resampler still holds.
        auto converted = count > 0 ? Convert(samples.data(), static_cast<std::size_t>(count))
                                   : Convert(nullptr, static_cast<std::size_t>(kFramesAtOnce));
        if (!converted.empty())
            return converted;
    }
    return {};
}

std::vector<float> SoundFileReader::Convert(float* samples, std::size_t frames) {
    const std::size_t count = gst_audio_converter_get_out_frames(m_converter.get(), frames);
    std::vector<float> result(count * kChannels);
    if (count > 0) {
        gpointer in = samples;
        gpointer out = result.data();
        if (!gst_audio_converter_samples(m_converter.get(), GST_AUDIO_CONVERTER_FLAG_NONE,
                                         samples ? &in : nullptr, frames, &out, count))
            throw SoundFileError(m_name + ": its samples cannot be converted");
    }
    const auto wanted = std::min(static_cast<std::int64_t>(count), m_framesToCome);
    result.resize(static_cast<std::size_t>(wanted) * kChannels);
    MakeHarmless(result);
    m_framesToCome -= wanted;
    return result;
}

} // namespace controller::audio
