#include "controller/audio/SoundFile.h"

#include "tests/controller/audio/EngineHarness.h"
#include "tests/controller/audio/Sounds.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <string>

#include <sys/stat.h>

namespace controller::audio::test {

class SoundFileTest : public ::testing::Test {
protected:
    SoundFileTest() : m_path(m_folder.Path("clip.wav")) {}

    /// What is said against the file; empty if nothing.
    [[nodiscard]] static std::string Refusal(const std::string& path) {
        try {
            const SoundFile file(path);
        } catch (const SoundFileError& error) {
            return error.what();
        }
        return {};
    }

    void ExpectRefused(const std::string& bytes, const std::string& reason) const {
        WriteBytes(m_path, bytes);
        const auto refusal = Refusal(m_path);
        EXPECT_EQ(refusal.rfind("clip.wav: ", 0), 0U) << "the file is named: " << refusal;
        EXPECT_NE(refusal.find(reason), std::string::npos) << refusal;
    }

    /// A whole WAV file of 1000 samples, mono, 16 bits, at 8000 Hz.
    [[nodiscard]] std::string WholeWav() const {
        WriteSound(m_path, Melody(1000, 1), 1, 8000);
        return ReadBytes(m_path);
    }

    TemporaryFolder m_folder;
    std::string m_path;
};

TEST_F(SoundFileTest, AWholeFileTellsItsLengthRateAndChannels) {
    WriteSound(m_path, Melody(4411, 2), 2, 44100);
    const SoundFile file(m_path);
    EXPECT_EQ(file.Frames(), 4411);
    EXPECT_EQ(file.Rate(), 44100);
    EXPECT_EQ(file.Channels(), 2);
    EXPECT_EQ(file.Duration(), std::chrono::milliseconds(101)) << "rounded up";
}

TEST_F(SoundFileTest, ATruncatedWavIsRefusedWithBothSizes) {
    const auto whole = WholeWav();
    ASSERT_EQ(whole.size(), 44U + 2000U);
    ExpectRefused(whole.substr(0, 44 + 500), "truncated: its header promises 2000 bytes of sound, only 500");
    ExpectRefused(whole.substr(0, whole.size() - 1), "only 1999 are there");
    ExpectRefused(whole.substr(0, 44), "only 0 are there");
}

TEST_F(SoundFileTest, AHeaderWithoutSoundIsRefused) {
    auto header = WholeWav().substr(0, 44);
    header.replace(40, 4, std::string(4, '\0'));
    ExpectRefused(header, "a WAV header without any sound");
    ExpectRefused(WholeWav().substr(0, 36), "no \"data\" chunk");
    ExpectRefused(WholeWav().substr(0, 12), "no \"data\" chunk");
}

TEST_F(SoundFileTest, AnEmptyFileIsRefused) {
    ExpectRefused("", "an empty file");
}

TEST_F(SoundFileTest, WhatIsNoSoundIsRefused) {
    ExpectRefused("Some text that somebody called a sound, long enough for a header.",
                  "not a playable sound file");
    ExpectRefused(std::string(100'000, '\0'), "not a playable sound file");
    ExpectRefused("R", "not a playable sound file");
}

TEST_F(SoundFileTest, AMissingFileAFolderAndAFifoAreRefused) {
    EXPECT_EQ(Refusal(m_folder.Path("missing.wav")), "missing.wav: there is no such sound file");
    EXPECT_EQ(Refusal(m_folder.Path("clip.wav/x.wav")), "x.wav: there is no such sound file");
    ASSERT_EQ(mkdir(m_path.c_str(), 0700), 0);
    EXPECT_EQ(Refusal(m_path), "clip.wav: not a regular file");
    const auto fifo = m_folder.Path("fifo.wav");
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    EXPECT_EQ(Refusal(fifo), "fifo.wav: not a regular file");
}

TEST_F(SoundFileTest, ChunksInFrontOfTheSoundAreSkipped) {
    const auto whole = WholeWav();
    // An odd size, so that a padding byte follows.
    const std::string chunk = std::string("LIST\x05\x00\x00\x00", 8) + "hello" + std::string(1, '\0');
    WriteBytes(m_path, whole.substr(0, 36) + chunk + whole.substr(36));
    EXPECT_EQ(Refusal(m_path), "");
    EXPECT_EQ(SoundFile(m_path).Frames(), 1000);
}

TEST_F(SoundFileTest, ACompressedFileIsReadWholeToKnowThatItIsWhole) {
    const auto path = m_folder.Path("clip.flac");
    WriteSound(path, Melody(48000, 2), 2, 48000, SF_FORMAT_FLAC | SF_FORMAT_PCM_16);
    EXPECT_EQ(Refusal(path), "");
    const auto whole = ReadBytes(path);
    WriteBytes(path, whole.substr(0, whole.size() / 2));
    EXPECT_NE(Refusal(path).find("truncated or damaged"), std::string::npos) << Refusal(path);
}

TEST_F(SoundFileTest, ASampleRateOrANumberOfChannelsThatNobodyPlaysIsRefused) {
    WriteSound(m_path, Melody(1000, 9), 9, 48000);
    EXPECT_NE(Refusal(m_path).find("has 9 channels"), std::string::npos) << Refusal(m_path);
    WriteSound(m_path, Melody(1000, 1), 1, 1000);
    EXPECT_NE(Refusal(m_path).find("sample rate of 1000 Hz"), std::string::npos) << Refusal(m_path);
}

TEST_F(SoundFileTest, EveryShorterFileIsRefusedAndNoneCrashes) {
    const auto whole = WholeWav();
    for (std::size_t size = 0; size < whole.size(); size += size < 100 ? 1 : 97) {
        WriteBytes(m_path, whole.substr(0, size));
        EXPECT_NE(Refusal(m_path), "") << size;
    }
}

} // namespace controller::audio::test
