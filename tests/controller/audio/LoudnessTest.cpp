#include "controller/audio/Loudness.h"

#include "controller/audio/SoundFile.h"
#include "tests/controller/audio/Sounds.h"
#include "tests/controller/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cmath>

namespace controller::audio::test {

namespace {

constexpr double kPi = 3.14159265358979323846;

/// A tone of 1 kHz on both sides, `level` dB below full scale.
std::vector<float> Tone(double seconds, double level) {
    std::vector<float> samples;
    const double amplitude = std::pow(10.0, level / 20);
    for (int frame = 0; frame < seconds * 48000; ++frame) {
        const auto sample = static_cast<float>(amplitude * std::sin(2 * kPi * 1000 * frame / 48000));
        samples.insert(samples.end(), 2, sample);
    }
    return samples;
}

class LoudnessTest : public testing::Test {
protected:
    [[nodiscard]] Loudness Measure(const std::vector<float>& samples) const {
        const std::string file = m_folder.Path() / "sound.wav";
        WriteFloats(file, samples, 2, 48000);
        return MeasureLoudness(file);
    }

    controller::TemporaryFolder m_folder;
};

} // namespace

TEST_F(LoudnessTest, ToneOnBothSidesIsAsLoudAsTheStandardSays) {
    // EBU Tech 3341, case 1: a stereo sine of 1 kHz at -23 dBFS is -23 LUFS.
    const Loudness loudness = Measure(Tone(2, -23));

    EXPECT_NEAR(loudness.lufs, -23, 0.1);
    EXPECT_NEAR(loudness.truePeak, -23, 0.2);
    EXPECT_NEAR(GainFor(loudness), 7, 0.1);
}

TEST_F(LoudnessTest, WhatIsShorterThanABlockHasItsMomentaryValue) {
    const Loudness loudness = Measure(Tone(0.2, -20));

    EXPECT_NEAR(loudness.lufs, -23, 0.3); // half of the 0.4 s is silent
    EXPECT_NEAR(loudness.truePeak, -20, 0.5);
}

TEST_F(LoudnessTest, GainEndsAtTwelveDecibelsAndAtTheTruePeak) {
    EXPECT_DOUBLE_EQ(GainFor({-40, -30}), 12);
    EXPECT_DOUBLE_EQ(GainFor({-20, -3}), 2);
    EXPECT_DOUBLE_EQ(GainFor({-10, -8}), -6);
    EXPECT_DOUBLE_EQ(GainFor({-16, 1}), -2);
    EXPECT_NEAR(FactorOf(-6), 0.501, 0.001);
    EXPECT_FLOAT_EQ(FactorOf(0), 1);
}

TEST_F(LoudnessTest, SilenceStaysSilenceAndWhatIsTooQuietToMeasureIsRaisedAsFarAsAllowed) {
    const Loudness silence = Measure(std::vector<float>(96000, 0));

    EXPECT_TRUE(std::isinf(silence.lufs));
    EXPECT_TRUE(std::isinf(silence.truePeak));
    EXPECT_DOUBLE_EQ(GainFor(silence), 0);
    EXPECT_DOUBLE_EQ(GainFor(Measure(Tone(1, -80))), 12);
}

TEST_F(LoudnessTest, WhatCannotBePlayedCannotBeMeasured) {
    EXPECT_THROW((void)MeasureLoudness(m_folder.Write("broken.wav", "RIFF")), SoundFileError);
    EXPECT_THROW((void)MeasureLoudness(m_folder.Path() / "missing.wav"), SoundFileError);
}

} // namespace controller::audio::test
