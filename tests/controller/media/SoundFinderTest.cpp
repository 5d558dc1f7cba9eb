#include "controller/media/SoundFinder.h"

#include "controller/audio/DemoSounds.h"
#include "tests/controller/support/FakeScheduler.h"
#include "tests/controller/support/TemporaryFolder.h"
#include "tests/controller/support/TestLog.h"
#include "tests/controller/support/Within.h"

#include <gtest/gtest.h>

#include <future>
#include <memory>
#include <optional>

namespace controller {

namespace {

namespace fs = std::filesystem;

class SoundFinderTest : public testing::Test {
protected:
    struct Told {
        std::string file;
        std::string error;
        double gain = 0;
    };

    Told Find(const std::string& path) {
        std::optional<Told> told;
        m_finder->Find(path, [&](const audio::PlayedSound& sound, const std::string& error) {
            told = Told{sound.path, error, sound.gain};
        });
        m_driver.DoNextPosted();
        return told.value_or(Told{"", "not told"});
    }

    void Open() {
        m_finder = std::make_unique<SoundFinder>(m_media.Path(), TestTone(m_data.Path()), m_levels, m_driver,
                                                 m_log.log);
    }

    TemporaryFolder m_media;
    TemporaryFolder m_data;
    FakeScheduler m_driver;
    TestLog m_log;
    SoundLevels m_levels{{}};
    std::unique_ptr<SoundFinder> m_finder;
};

TEST_F(SoundFinderTest, ASoundOfTheMediaFolderIsFound) {
    m_media.Write("chime.wav", demosounds::Gong());
    Open();

    const Told told = Find("/media/announcements/chime.wav");

    EXPECT_EQ(told.file, fs::canonical(m_media.Path() / "chime.wav"));
    EXPECT_EQ(told.error, "");
}

TEST_F(SoundFinderTest, WhatIsNotThereIsToldWithItsReason) {
    Open();

    const Told told = Find("/media/announcements/missing.wav");

    EXPECT_EQ(told.file, "");
    EXPECT_EQ(told.error, "there is no sound file \"missing.wav\" in the media folder");
}

TEST_F(SoundFinderTest, TheTestToneIsWrittenToTheDataFolderWhenItIsWanted) {
    Open();
    EXPECT_FALSE(fs::exists(m_data.Path() / "test-tone.wav"));

    const Told told = Find("/media/announcements/.test-tone.wav");

    EXPECT_EQ(told.error, "");
    EXPECT_EQ(told.file, m_data.Path() / "test-tone.wav");
    EXPECT_EQ(TemporaryFolder::Read(told.file), demosounds::TestTone());
}

TEST_F(SoundFinderTest, ATestToneThatWasCutIsWrittenAnew) {
    m_data.Write("test-tone.wav", demosounds::TestTone().substr(0, 100));
    Open();

    const Told told = Find("/media/announcements/.test-tone.wav");

    EXPECT_EQ(TemporaryFolder::Read(told.file), demosounds::TestTone());
}

TEST_F(SoundFinderTest, ASoundThatCannotBePlayedIsToldAtTheStart) {
    std::promise<std::string> said;
    m_log.log.SetListener([&](Severity /*severity*/, const std::string& text) { said.set_value(text); });
    m_media.Write("cut.wav", demosounds::Gong().substr(0, 2000));
    m_media.Write("whole.wav", demosounds::Gong());
    m_media.Write("cut.txt", "no sound");
    Open();

    EXPECT_EQ(Within("a word about cut.wav", said.get_future()),
              "cut.wav: truncated: its header promises 14400 bytes of sound, only 1956 are there");
    m_finder = nullptr;
}

} // namespace

} // namespace controller
