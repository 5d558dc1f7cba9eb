#include "controller/audio/Clip.h"

#include "controller/audio/SoundFormat.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace controller::audio::test {

namespace {

/// Frames whose both samples are their number.
std::vector<float> Numbered(std::int64_t begin, std::int64_t count) {
    std::vector<float> samples;
    for (auto frame = begin; frame < begin + count; ++frame)
        samples.insert(samples.end(), kChannels, static_cast<float>(frame));
    return samples;
}

std::vector<float> Silence(std::size_t frames) {
    return std::vector<float>(frames * kChannels, 0.0F);
}

std::vector<float> ReadFrames(Clip& clip, std::int64_t position, std::int64_t count) {
    std::vector<float> out(static_cast<std::size_t>(count * kChannels), -1.0F);
    clip.Read(position, out.data(), count);
    return out;
}

} // namespace

TEST(ClipTest, IsReadAcrossItsChunks) {
    Clip clip;
    ASSERT_TRUE(clip.Append(Numbered(0, 100)));
    ASSERT_TRUE(clip.Append(Numbered(100, 7)));
    ASSERT_TRUE(clip.Append(Numbered(107, 200)));
    EXPECT_EQ(ReadFrames(clip, 90, 40), Numbered(90, 40));
    EXPECT_EQ(ReadFrames(clip, 0, 300), Numbered(0, 300));
    EXPECT_FALSE(clip.TotalFrames());
    clip.Finish();
    EXPECT_EQ(clip.TotalFrames(), 307);
    EXPECT_EQ(clip.Error(), "");
}

TEST(ClipTest, BehindItsEndIsSilence) {
    Clip clip;
    ASSERT_TRUE(clip.Append(Numbered(0, 10)));
    clip.Finish();
    auto expected = Numbered(5, 5);
    expected.resize(Silence(10).size(), 0.0F);
    EXPECT_EQ(ReadFrames(clip, 5, 10), expected);
    EXPECT_EQ(ReadFrames(clip, 1000, 2), Silence(2));
}

TEST(ClipTest, AReaderWaitsForWhatIsStillToCome) {
    Clip clip;
    std::vector<float> read;
    std::thread reader([&] { read = ReadFrames(clip, 0, 20); });
    EXPECT_TRUE(clip.Append(Numbered(0, 10)));
    EXPECT_TRUE(clip.Append(Numbered(10, 10)));
    reader.join();
    EXPECT_EQ(read, Numbered(0, 20));
}

TEST(ClipTest, AFileThatComesTooSlowlyEndsTheClipWithTheReason) {
    Clip clip;
    EXPECT_EQ(ReadFrames(clip, 0, 2), Silence(2));
    EXPECT_EQ(clip.Error(), "the file cannot be read as fast as it plays");
    EXPECT_EQ(clip.TotalFrames(), 0);
    EXPECT_FALSE(clip.Append(Numbered(0, 10)));
}

TEST(ClipTest, TheFirstEndStands) {
    Clip failed;
    failed.Fail("first");
    failed.Fail("second");
    failed.Finish();
    EXPECT_EQ(failed.Error(), "first");
    Clip finished;
    finished.Finish();
    finished.Fail("late");
    EXPECT_EQ(finished.Error(), "");
}

TEST(ClipTest, OnlyAWindowIsKept) {
    constexpr std::int64_t kSeconds = 20;
    Clip clip;
    std::atomic<std::int64_t> appended{0};
    std::thread decoder([&] {
        for (std::int64_t second = 0; second < kSeconds; ++second) {
            EXPECT_TRUE(clip.Append(Numbered(second * kRate, kRate)));
            ++appended;
        }
        clip.Finish();
    });
    for (std::int64_t second = 0; second < kSeconds; ++second) {
        EXPECT_EQ(ReadFrames(clip, second * kRate, kRate), Numbered(second * kRate, kRate));
        EXPECT_LE(appended, second + 5) << "the decoder is at most some seconds ahead";
    }
    decoder.join();
    EXPECT_EQ(clip.TotalFrames(), kSeconds * kRate);
    EXPECT_EQ(ReadFrames(clip, 0, 2), Silence(2)) << "long dropped";
}

TEST(ClipTest, ARoomWithTheLongestSilenceInFrontReadsWhatAnotherWasGivenThatMuchEarlier) {
    constexpr std::int64_t kSeconds = 20;
    constexpr std::int64_t kLongest = 11; ///< 10 s of silence, and a stall that is not given up yet
    Clip clip;
    std::thread decoder([&] {
        for (std::int64_t second = 0; second < kSeconds; ++second)
            EXPECT_TRUE(clip.Append(Numbered(second * kRate, kRate)));
        clip.Finish();
    });
    for (std::int64_t second = 0; second < kSeconds; ++second) {
        EXPECT_EQ(ReadFrames(clip, second * kRate, kRate), Numbered(second * kRate, kRate));
        if (second >= kLongest) {
            const std::int64_t behind = (second - kLongest) * kRate;
            EXPECT_EQ(ReadFrames(clip, behind, 2), Numbered(behind, 2)) << second;
        }
    }
    decoder.join();
}

TEST(ClipTest, WhenNobodyListensTheDecoderIsToldSo) {
    Clip clip;
    std::thread decoder([&] {
        while (clip.Append(Numbered(0, kRate))) {
        }
    });
    clip.Abandon();
    decoder.join();
    EXPECT_EQ(ReadFrames(clip, std::int64_t{100} * kRate, 2), Silence(2)) << "no wait";
}

} // namespace controller::audio::test
