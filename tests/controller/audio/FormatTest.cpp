#include "controller/audio/ClipReader.h"
#include "controller/audio/SoundFile.h"
#include "controller/audio/VolumeLaw.h"
#include "tests/controller/audio/PlayFixture.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include <gst/gst.h>

namespace controller::audio::test {

namespace {

std::vector<float> Decode(const std::string& path) {
    const auto reader = OpenClipReader(path);
    std::vector<float> all;
    for (auto part = reader->Read(); !part.empty(); part = reader->Read())
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

/// A sine of 440 Hz in one channel, silence in the others.
std::vector<short> SineIn(int channel, int channels, int rate, std::int64_t frames) {
    std::vector<short> samples(static_cast<std::size_t>(frames * channels));
    for (std::int64_t frame = 0; frame < frames; ++frame)
        samples.at(static_cast<std::size_t>(frame * channels + channel)) = static_cast<short>(
            std::lround(16000 * std::sin(2 * M_PI * 440 * static_cast<double>(frame) / rate)));
    return samples;
}

double Power(const std::vector<float>& samples, std::size_t channel) {
    double sum = 0;
    for (std::size_t i = channel; i < samples.size(); i += kChannels)
        sum += static_cast<double>(samples[i]) * static_cast<double>(samples[i]);
    return std::sqrt(sum / (static_cast<double>(samples.size()) / kChannels));
}

/// Puts a WAV file's sound into a container that the sound file library does not know.
void WrapInMatroska(const std::string& from, const std::string& to) {
    GError* error = nullptr;
    const std::string description =
        "filesrc location=" + from + " ! wavparse ! matroskamux ! filesink name=out location=" + to;
    GstElement* pipeline = gst_parse_launch(description.c_str(), &error);
    ASSERT_TRUE(pipeline && !error);
    gst_element_set_state(pipeline, GST_STATE_PLAYING);
    GstBus* bus = gst_element_get_bus(pipeline);
    GstMessage* end = gst_bus_timed_pop_filtered(
        bus, 20 * GST_SECOND, static_cast<GstMessageType>(GST_MESSAGE_EOS | GST_MESSAGE_ERROR));
    ASSERT_TRUE(end && GST_MESSAGE_TYPE(end) == GST_MESSAGE_EOS);
    gst_message_unref(end);
    gst_object_unref(bus);
    gst_element_set_state(pipeline, GST_STATE_NULL);
    gst_object_unref(pipeline);
}

struct Encoding {
    const char* name;
    int format;
    double tolerance; ///< Of a sample, full scale being 1.
    bool isPredictive = false;
};

void PrintTo(const Encoding& encoding, std::ostream* stream) {
    *stream << encoding.name;
}

} // namespace

class FormatTest : public PlayFixture {
protected:
    FormatTest() { gst_init(nullptr, nullptr); }
};

class EncodingTest : public FormatTest, public ::testing::WithParamInterface<Encoding> {};

TEST_P(EncodingTest, IsDecodedWholeAndAsItWas) {
    const auto path = m_folder.Path("encoded.wav");
    WriteSound(path, m_melody, kChannels, kRate, GetParam().format);
    const auto decoded = Decode(path);
    ASSERT_GE(decoded.size(), m_melody.size());
    EXPECT_LE(decoded.size(), m_melody.size() + kRate / 10) << "a codec may fill its last block";
    // A codec that stores differences needs some samples for the jumps at the melody's ends.
    const std::size_t edge = GetParam().isPredictive ? 100 : 0;
    for (std::size_t i = edge; i < m_melody.size() - edge; ++i)
        ASSERT_NEAR(static_cast<double>(decoded[i]), m_melody[i] / 32768.0, GetParam().tolerance) << i;
}

INSTANTIATE_TEST_SUITE_P(
    Encodings,
    EncodingTest,
    ::testing::Values(Encoding{"Unsigned8", SF_FORMAT_WAV | SF_FORMAT_PCM_U8, 1.0 / 127},
                      Encoding{"Signed16", SF_FORMAT_WAV | SF_FORMAT_PCM_16, 0},
                      Encoding{"Signed24", SF_FORMAT_WAV | SF_FORMAT_PCM_24, 0},
                      Encoding{"Signed32", SF_FORMAT_WAV | SF_FORMAT_PCM_32, 0},
                      Encoding{"Float", SF_FORMAT_WAV | SF_FORMAT_FLOAT, 1.0 / 32768},
                      Encoding{"Double", SF_FORMAT_WAV | SF_FORMAT_DOUBLE, 1.0 / 32768},
                      Encoding{"Extensible24", SF_FORMAT_WAVEX | SF_FORMAT_PCM_24, 0},
                      Encoding{"MuLaw", SF_FORMAT_WAV | SF_FORMAT_ULAW, 0.04},
                      Encoding{"ALaw", SF_FORMAT_WAV | SF_FORMAT_ALAW, 0.04},
                      Encoding{"MicrosoftAdpcm", SF_FORMAT_WAV | SF_FORMAT_MS_ADPCM, 0.05, true},
                      Encoding{"ImaAdpcm", SF_FORMAT_WAV | SF_FORMAT_IMA_ADPCM, 0.05, true},
                      Encoding{"Flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_16, 0}),
    [](const auto& encoding) { return std::string(encoding.param.name); });

class RateTest : public FormatTest, public ::testing::WithParamInterface<int> {};

TEST_P(RateTest, IsResampledToTheSameLengthAndLoudnessFromItsFirstMomentOn) {
    const int rate = GetParam();
    const auto path = m_folder.Path("rate.wav");
    WriteSound(path, SineIn(0, 1, rate, rate / 2), 1, rate);
    const auto decoded = Decode(path);
    const auto frames = static_cast<std::int64_t>(decoded.size()) / kChannels;
    EXPECT_NEAR(static_cast<double>(frames), std::floor(rate / 2.0) * kRate / rate, 1.0);
    // Against the sine as it would be at the engine's rate, away from the edges. The bound is what half a
    // sample of displacement makes: a resampler may place its result between two samples.
    for (std::int64_t frame = 500; frame < frames - 500; ++frame) {
        const double expected =
            16000.0 / 32768 * std::sin(2 * M_PI * 440 * static_cast<double>(frame) / kRate);
        for (std::int64_t channel = 0; channel < kChannels; ++channel)
            ASSERT_NEAR(static_cast<double>(decoded[static_cast<std::size_t>(frame * kChannels + channel)]),
                        expected, 0.0145)
                << frame;
    }
}

INSTANTIATE_TEST_SUITE_P(Rates,
                         RateTest,
                         ::testing::Values(8000, 11025, 16000, 22050, 44100, 48000, 96000, 192000));

class ChannelsTest : public FormatTest, public ::testing::WithParamInterface<int> {};

TEST_P(ChannelsTest, EveryChannelIsHeardAndNoneTooLoud) {
    const int channels = GetParam();
    const auto path = m_folder.Path("channels.wav");
    for (int channel = 0; channel < channels; ++channel) {
        WriteSound(path, SineIn(channel, channels, kRate, 4800), channels, kRate);
        const auto decoded = Decode(path);
        ASSERT_EQ(decoded.size(), 4800U * kChannels);
        const double loudest = std::max(Power(decoded, 0), Power(decoded, 1));
        const bool isLowFrequencyEffect = channel == 3 && channels >= 6;
        EXPECT_TRUE(loudest > 0.01 || isLowFrequencyEffect) << channel;
        EXPECT_LE(loudest, 16000.0 / 32768 * 0.7072) << channel;
    }
}

INSTANTIATE_TEST_SUITE_P(Channels, ChannelsTest, ::testing::Values(1, 2, 3, 4, 5, 6, 7, 8));

TEST_F(FormatTest, MonoIsHeardUnchangedOnBothSides) {
    const auto path = m_folder.Path("mono.wav");
    const auto melody = Melody(4800, 1);
    WriteSound(path, melody, 1, kRate);
    const auto decoded = Decode(path);
    ASSERT_EQ(decoded.size(), melody.size() * kChannels);
    for (std::size_t i = 0; i < decoded.size(); ++i)
        ASSERT_EQ(static_cast<double>(decoded[i]), melody[i / kChannels] / 32768.0) << i;
}

TEST_F(FormatTest, TheLeftChannelOfSurroundSoundIsHeardOnTheLeft) {
    const auto path = m_folder.Path("surround.wav");
    WriteSound(path, SineIn(0, 6, kRate, 4800), 6, kRate);
    const auto decoded = Decode(path);
    EXPECT_GT(Power(decoded, 0), 0.05);
    EXPECT_LT(Power(decoded, 1), 0.0001);
}

TEST_F(FormatTest, WhatOnlyADecoderPluginKnowsIsPlayedToo) {
    const auto path = m_folder.Path("clip.mkv");
    WrapInMatroska(m_clip, path);
    EngineHarness harness({FileOutput("room.wav")});
    harness.OpenWithAllRooms();
    const auto result = harness.PlayToEnd(path);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->error, "");
    ExpectWholeClip("room.wav");
}

/// Sound beyond all bounds, in a file of its own rate and kind.
struct Overfull {
    const char* name;
    int rate;
    bool isForADecoder;
};

void PrintTo(const Overfull& overfull, std::ostream* stream) {
    *stream << overfull.name;
}

class OverfullTest : public FormatTest, public ::testing::WithParamInterface<Overfull> {};

TEST_P(OverfullTest, IsNoLouderThanTheRoomsVolume) {
    constexpr float kInfinite = std::numeric_limits<float>::infinity();
    const std::array<float, 8> bad{1e30F, -1e30F, kInfinite, -kInfinite, std::nanf(""), 5.0F, -5.0F, 3e38F};
    std::vector<float> samples;
    // Sound that is as loud as it may be, and then what no sound may be.
    for (int frame = 0; frame < 4800; ++frame)
        samples.insert(samples.end(), 2, frame / 100 % 2 == 0 ? 1.0F : -1.0F);
    for (std::size_t frame = 0; frame < 4800; ++frame)
        samples.insert(samples.end(), 2, bad.at(frame / 7 % bad.size()));
    const auto plain = m_folder.Path("overfull.wav");
    const auto path = GetParam().isForADecoder ? m_folder.Path("overfull.mkv") : plain;
    WriteFloats(plain, samples, 2, GetParam().rate);
    if (path != plain)
        WrapInMatroska(plain, path);
    EngineHarness harness({FileOutput("room.wav")});
    harness.Engine().SetVolume(1, 20);
    harness.OpenWithAllRooms();
    const auto result = harness.PlayToEnd(path);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->error, "");
    const auto recording = Recorded("room.wav");
    const auto [lowest, highest] = std::minmax_element(recording.samples.begin(), recording.samples.end());
    ASSERT_NE(lowest, recording.samples.end());
    const double bound = Gain(20) * 32768;
    EXPECT_NEAR(*highest, bound, bound / 100);
    EXPECT_NEAR(*lowest, -bound, bound / 100);
}

INSTANTIATE_TEST_SUITE_P(Files,
                         OverfullTest,
                         ::testing::Values(Overfull{"Plain", kRate, false},
                                           Overfull{"Resampled", 44100, false},
                                           Overfull{"Decoded", kRate, true},
                                           Overfull{"DecodedAndResampled", 44100, true}),
                         [](const auto& overfull) { return std::string(overfull.param.name); });

TEST_F(FormatTest, AFloatFileThatHoldsNoNumbersIsSilentThere) {
    const auto path = m_folder.Path("nan.wav");
    WriteSound(path, std::vector<short>(200, 16384), 2, kRate, SF_FORMAT_WAV | SF_FORMAT_FLOAT);
    auto bytes = ReadBytes(path);
    const auto data = bytes.find("data") + 8;
    bytes.replace(data, 4, std::string("\x00\x00\xc0\x7f", 4));     // not a number
    bytes.replace(data + 4, 4, std::string("\x00\x00\x80\x7f", 4)); // infinite
    WriteBytes(path, bytes);
    const auto decoded = Decode(path);
    ASSERT_EQ(decoded.size(), 200U);
    EXPECT_EQ(decoded[0], 0.0F);
    EXPECT_EQ(decoded[1], 0.0F);
    EXPECT_EQ(decoded[2], 0.5F);
}

TEST_F(FormatTest, ResampledSoundIsWholeInTheRoom) {
    const auto path = m_folder.Path("phone.wav");
    WriteSound(path, SineIn(0, 1, 8000, 2400), 1, 8000, SF_FORMAT_WAV | SF_FORMAT_ULAW);
    EngineHarness harness({FileOutput("room.wav")});
    harness.OpenWithAllRooms();
    const auto result = harness.PlayToEnd(path);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->error, "");
    const auto recording = Recorded("room.wav");
    EXPECT_NEAR(static_cast<double>(recording.Last() - recording.First()), kRate * 0.3, 60);
    EXPECT_NEAR(recording.Rms(recording.First(), recording.Last()), 16000 / std::sqrt(2.0), 300);
}

} // namespace controller::audio::test
