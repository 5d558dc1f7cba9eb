#include "controller/audio/Loudness.h"
#include "tests/controller/audio/EngineHarness.h"
#include "tests/controller/audio/PlayFixture.h"

#include <gtest/gtest.h>

#include <cmath>

namespace controller::audio::test {

namespace {

class AudioEngineLoudnessTest : public PlayFixture {
protected:
    /// Noise of 1.5 s whose samples are at most so high, the same at every run.
    std::string WriteNoise(const std::string& name, float highest) const {
        std::vector<float> samples;
        std::uint32_t chance = 1;
        for (int sample = 0; sample < kRate * 3; ++sample) {
            chance = chance * 1664525U + 1013904223U;
            samples.push_back(highest * (static_cast<float>(chance >> 8U) / 8388608.0F - 1.0F));
        }
        std::string file = m_folder.Path(name);
        WriteFloats(file, samples, kChannels, kRate);
        return file;
    }

    /// How loud a room is when the sound is played in it at full volume.
    [[nodiscard]] double LufsInARoom(const PlayedSound& sound) const {
        EngineHarness harness({FileOutput("room.wav")});
        harness.Engine().SetVolume(1, 100);
        harness.OpenWithAllRooms();
        EXPECT_TRUE(harness.PlayToEnd(sound));
        EXPECT_TRUE(harness.CloseAndWait());
        return MeasureLoudness(m_folder.Path("room.wav")).lufs;
    }
};

} // namespace

TEST_F(AudioEngineLoudnessTest, ThreeSoundsOfDifferentLoudnessAreHeardWithinOneLu) {
    for (const auto& [name, highest] :
         {std::pair("quiet.wav", 0.08F), {"usual.wav", 0.2F}, {"loud.wav", 0.9F}}) {
        const std::string file = WriteNoise(name, highest);
        const Loudness loudness = MeasureLoudness(file);
        EXPECT_NEAR(LufsInARoom({file, GainFor(loudness)}), kTargetLufs, 0.5) << name << " " << loudness.lufs;
    }
}

TEST_F(AudioEngineLoudnessTest, GainLeavesAPlainSoundToTheBitAndNeverGoesBeyondFullScale) {
    const std::string file = WriteNoise("noise.wav", 0.5F);
    EXPECT_NEAR(LufsInARoom(file), MeasureLoudness(file).lufs, 0.3);

    EngineHarness harness({FileOutput("far.wav")});
    harness.OpenWithAllRooms();
    ASSERT_TRUE(harness.PlayToEnd({file, 40}));
    ASSERT_TRUE(harness.CloseAndWait());
    // A sum that wraps around would change its sign from one full scale to the other.
    const Recording recording = Recorded("far.wav");
    EXPECT_GT(recording.Rms(recording.First(), recording.Last()), 30000);
}

} // namespace controller::audio::test
