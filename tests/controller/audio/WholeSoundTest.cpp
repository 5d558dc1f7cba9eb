#include "controller/audio/WholeSound.h"

#include "controller/audio/Clip.h"

#include <gtest/gtest.h>

#include <optional>

namespace controller::audio::test {

namespace {

std::string Bytes(std::initializer_list<int> values) {
    std::string text;
    for (const int value : values)
        text += static_cast<char>(value);
    return text;
}

std::vector<float> Second() {
    return std::vector<float>(static_cast<std::size_t>(kRate) * kChannels, 0.25F);
}

/// What a listener was told: nothing yet, or a file, or none.
using GivenFile = std::optional<WholeSound::File>;

WholeSound::Listener Into(GivenFile& told) {
    return [&told](const WholeSound::File& file) {
        EXPECT_FALSE(told) << "once";
        told = file;
    };
}

} // namespace

TEST(WholeSoundTest, IsAWavFileOf16BitsStereo48KilohertzOfAllSamples) {
    WholeSound sound;
    GivenFile before;
    sound.WhenMade(Into(before));
    sound.Append({0, 0.5F});
    sound.Append({-1, 1});
    EXPECT_FALSE(before);
    sound.Finish();
    const std::string expected =
        "RIFF" + Bytes({44, 0, 0, 0}) + "WAVEfmt " +
        Bytes({16, 0, 0, 0, 1, 0, 2, 0, 0x80, 0xbb, 0, 0, 0, 0xee, 2, 0, 4, 0, 16, 0}) + "data" +
        Bytes({8, 0, 0, 0, 0, 0, 0, 0x40, 0, 0x80, 0xff, 0x7f});
    ASSERT_TRUE(before && *before);
    EXPECT_EQ(**before, expected);
    GivenFile behind;
    sound.WhenMade(Into(behind));
    ASSERT_TRUE(behind);
    EXPECT_EQ(behind->get(), before->get()) << "shared by all who need it";
    sound.Fail();
    EXPECT_EQ(before->get(), behind->get());
}

TEST(WholeSoundTest, HasNoFileWhenItFailsOrLastsLongerThanAMinute) {
    WholeSound failed;
    failed.Append({0, 0});
    GivenFile told;
    failed.WhenMade(Into(told));
    failed.Fail();
    failed.Finish();
    ASSERT_TRUE(told);
    EXPECT_EQ(*told, nullptr);

    WholeSound minute;
    for (int second = 0; second < 60; ++second)
        minute.Append(Second());
    EXPECT_TRUE(minute.IsOpen());
    minute.Append({0, 0});
    EXPECT_FALSE(minute.IsOpen());
    minute.Finish();
    GivenFile none;
    minute.WhenMade(Into(none));
    ASSERT_TRUE(none);
    EXPECT_EQ(*none, nullptr);
}

TEST(WholeSoundTest, AClipThatIsKeptWholeIsDecodedAtOnceToItsEnd) {
    Clip clip;
    EXPECT_EQ(clip.Whole(), nullptr);
    clip.KeepWhole();
    GivenFile told;
    clip.Whole()->WhenMade(Into(told));
    for (int second = 0; second < 20; ++second)
        ASSERT_TRUE(clip.Append(Second())); // Nobody reads: it would wait for that.
    clip.Finish();
    ASSERT_TRUE(told && *told);
    EXPECT_EQ((*told)->size(), 44U + std::size_t{20} * kRate * 4);
    std::vector<float> frame(kChannels);
    clip.Read(0, frame.data(), 1);
    EXPECT_EQ(frame, std::vector<float>(kChannels, 0.25F));
}

TEST(WholeSoundTest, OfAClipThatIsGivenUpThereIsNoFile) {
    Clip clip;
    clip.KeepWhole();
    GivenFile told;
    clip.Whole()->WhenMade(Into(told));
    ASSERT_TRUE(clip.Append(Second()));
    clip.Abandon();
    ASSERT_TRUE(told);
    EXPECT_EQ(*told, nullptr);
}

} // namespace controller::audio::test
