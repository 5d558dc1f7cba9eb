#pragma once

#include "controller/audio/SoundFormat.h"
#include "tests/controller/audio/EngineHarness.h"
#include "tests/controller/audio/Sounds.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace controller::audio::test {

using Rooms = std::vector<std::uint32_t>;

/// A folder with a clip of half a second, in the engine's own format, and recording outputs in that folder.
class PlayFixture : public ::testing::Test {
protected:
    static constexpr std::size_t kClipFrames = kRate / 2;

    PlayFixture() : m_melody(Melody(kClipFrames, kChannels)), m_clip(m_folder.Path("clip.wav")) {
        WriteSound(m_clip, m_melody, kChannels, kRate);
    }

    [[nodiscard]] std::string FileOutput(const std::string& name) const {
        return "file: " + m_folder.Path(name);
    }
    [[nodiscard]] Recording Recorded(const std::string& name) const {
        return ReadRecording(m_folder.Path(name));
    }

    [[nodiscard]] std::uintmax_t SizeOf(const std::string& name) const {
        std::error_code error;
        const auto size = std::filesystem::file_size(m_folder.Path(name), error);
        return error ? 0 : size;
    }

    /// The recording holds the clip, sample for sample, nothing else but silence, and 100 ms of that behind
    /// it.
    void ExpectWholeClip(const std::string& name) const {
        const Recording recording = Recorded(name);
        ASSERT_EQ(recording.rate, kRate) << name;
        ASSERT_EQ(recording.channels, kChannels) << name;
        const auto first = recording.First();
        ASSERT_GE(first, 0) << name;
        ASSERT_EQ(recording.Last() - first + 1, static_cast<std::int64_t>(kClipFrames)) << name;
        const auto begin = recording.samples.begin() + first * kChannels;
        EXPECT_EQ(std::vector<short>(begin, begin + static_cast<std::int64_t>(m_melody.size())), m_melody)
            << name;
        EXPECT_GE(recording.Frames() - 1 - recording.Last(), kRate / 10)
            << name << ": silence behind the clip";
    }

    TemporaryFolder m_folder;
    std::vector<short> m_melody;
    std::string m_clip;
};

} // namespace controller::audio::test
