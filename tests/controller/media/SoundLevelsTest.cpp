#include "controller/media/SoundLevels.h"

#include "controller/audio/DemoSounds.h"
#include "controller/audio/SoundFile.h"
#include "tests/controller/support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace controller {

namespace fs = std::filesystem;

namespace {

class SoundLevelsTest : public testing::Test {
protected:
    SoundLevels::Parts Parts() {
        return {{}, false, [this](const SoundLevels::Entry& entry) {
                    m_kept.push_back(entry);
                }};
    }

    TemporaryFolder m_folder;
    const fs::path m_gong = m_folder.Write("gong.wav", demosounds::Gong());
    std::vector<SoundLevels::Entry> m_kept;
    SoundLevels m_levels{Parts()};
};

} // namespace

TEST_F(SoundLevelsTest, SoundIsMeasuredOnceAndAgainWhenItsFileIsAnother) {
    EXPECT_FALSE(m_levels.Known(m_gong));
    const auto first = m_levels.Of(m_gong);
    EXPECT_DOUBLE_EQ(first.gain, audio::GainFor(first.loudness));
    EXPECT_NE(first.gain, 0);
    EXPECT_DOUBLE_EQ(m_levels.Of(m_gong).gain, first.gain);
    ASSERT_EQ(m_kept.size(), 1U);
    EXPECT_EQ(m_kept[0].name, "gong.wav");

    m_folder.Write("gong.wav", demosounds::TestTone());
    EXPECT_FALSE(m_levels.Known(m_gong));
    EXPECT_NE(m_levels.Of(m_gong).loudness.lufs, first.loudness.lufs);
    EXPECT_EQ(m_kept.size(), 2U);
}

TEST_F(SoundLevelsTest, WhatIsKeptIsNotMeasuredAnewAfterARestart) {
    (void)m_levels.Of(m_gong);
    auto parts = Parts();
    parts.entries = m_kept;
    SoundLevels restarted(std::move(parts));

    ASSERT_TRUE(restarted.Known(m_gong));
    EXPECT_DOUBLE_EQ(restarted.Of(m_gong).gain, m_levels.Of(m_gong).gain);
    EXPECT_EQ(m_kept.size(), 1U);
}

TEST_F(SoundLevelsTest, WhatWasSaidOfASoundGoesWithIt) {
    (void)m_levels.Of(m_gong);
    (void)m_levels.SetAsItIs("gong.wav", true);
    m_levels.Forget("gong.wav");
    EXPECT_FALSE(m_levels.Known(m_gong));
    EXPECT_FALSE(m_levels.LevelOf("gong.wav"));
    EXPECT_FALSE(m_levels.Of(m_gong).isAsItIs);
}

TEST_F(SoundLevelsTest, SoundOrWholeHouseIsPlayedAsItIsWhenSomebodySaysSo) {
    const double gain = m_levels.Of(m_gong).gain;
    const auto entry = m_levels.SetAsItIs("gong.wav", true);
    EXPECT_TRUE(entry.isAsItIs);
    EXPECT_NE(entry.file, "");
    EXPECT_DOUBLE_EQ(m_levels.Of(m_gong).gain, 0);
    EXPECT_TRUE(m_levels.LevelOf("gong.wav")->isAsItIs);
    (void)m_levels.SetAsItIs("gong.wav", false);
    EXPECT_DOUBLE_EQ(m_levels.Of(m_gong).gain, gain);

    auto parts = Parts();
    parts.isHouseAsItIs = true;
    SoundLevels asItIs(std::move(parts));
    EXPECT_DOUBLE_EQ(asItIs.Of(m_gong).gain, 0);
    EXPECT_FALSE(asItIs.Of(m_gong).isAsItIs);
}

TEST_F(SoundLevelsTest, MadeSoundIsMeasuredAndNothingOfItIsKept) {
    const auto made = m_levels.OfMade(m_gong, "supper.wav");
    EXPECT_DOUBLE_EQ(made.gain, audio::GainFor(made.loudness));
    (void)m_levels.SetAsItIs("supper.wav", true);
    EXPECT_DOUBLE_EQ(m_levels.OfMade(m_gong, "supper.wav").gain, 0);
    EXPECT_TRUE(m_kept.empty());
    EXPECT_FALSE(m_levels.LevelOf("supper.wav"));
}

TEST_F(SoundLevelsTest, WhatCannotBePlayedHasNoLevel) {
    EXPECT_THROW((void)m_levels.Of(m_folder.Write("broken.wav", "RIFF")), audio::SoundFileError);
    EXPECT_THROW((void)m_levels.Of(m_folder.Path() / "missing.wav"), audio::SoundFileError);
    EXPECT_TRUE(m_kept.empty());
}

} // namespace controller
