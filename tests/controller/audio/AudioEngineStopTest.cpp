#include "tests/controller/audio/PlayFixture.h"

#include <algorithm>
#include <optional>

namespace controller::audio::test {

/// With a clip of 20 s of one level, so that every change of volume shows.
class AudioEngineStopTest : public PlayFixture {
protected:
    static constexpr short kLevel = 16'000;

    AudioEngineStopTest() : m_long(m_folder.Path("long.wav")) {
        WriteSound(m_long, std::vector<short>(std::size_t{20} * kRate, kLevel), 1, kRate);
    }

    /// Stops what plays as soon as the room's recording has come so far.
    [[nodiscard]] std::optional<PlayResult>
    PlayAndStop(EngineHarness& harness, const std::string& recording, std::uintmax_t bytes) const {
        std::optional<PlayResult> result;
        harness.Engine().Play(m_long, [&result](const PlayResult& played) { result = played; });
        EXPECT_TRUE(harness.RunUntil([&] { return SizeOf(recording) >= bytes; }));
        harness.Engine().StopPlay();
        harness.Engine().StopPlay(); // of what is being stopped already
        EXPECT_TRUE(harness.RunUntil([&result] { return result.has_value(); }));
        return result;
    }

    /// Full level, then ever less over 50 ms, then silence.
    void ExpectFadedOut(const std::string& name) const {
        const Recording recording = Recorded(name);
        const auto first = recording.First();
        const auto last = recording.Last();
        ASSERT_GE(first, 0) << name;
        ASSERT_LT(last - first, std::int64_t{10} * kRate) << name;
        std::int64_t fade = last;
        while (fade > first && recording.At(fade, 0) < kLevel)
            --fade;
        EXPECT_NEAR(static_cast<double>(last - fade), kFadeFrames, 2.0) << name;
        for (std::int64_t frame = fade; frame < last; ++frame)
            ASSERT_GE(recording.At(frame, 0), recording.At(frame + 1, 0)) << name << ", frame " << frame;
        EXPECT_TRUE(std::all_of(recording.samples.begin() + first * kChannels,
                                recording.samples.begin() + fade * kChannels,
                                [](short sample) { return sample == kLevel; }))
            << name;
    }

    const std::string m_long;
};

TEST_F(AudioEngineStopTest, WhatPlaysFadesOutOverFiftyMillisecondsInEveryRoom) {
    EngineHarness harness({FileOutput("one.wav"), FileOutput("two.wav")});
    harness.OpenWithAllRooms();
    const auto result = PlayAndStop(harness, "two.wav", 100'000);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->error, "");
    EXPECT_TRUE(result->isStopped);
    EXPECT_EQ(result->rooms, Rooms{});
    EXPECT_GE(result->startDelay.count(), 0);
    EXPECT_TRUE(harness.CloseAndWait());
    ExpectFadedOut("one.wav");
    ExpectFadedOut("two.wav");
    EXPECT_TRUE(harness.Troubles().empty());
}

TEST_F(AudioEngineStopTest, WhatIsStoppedBeforeItBeginsIsNeverHeard) {
    RoomConfig room;
    room.id = 1;
    room.output = ParseOutput(FileOutput("room-%n.wav"));
    room.leadSilence = std::chrono::seconds(10);
    EngineHarness harness({room});
    harness.OpenWithAllRooms();
    // Once at once, once in the silence in front of it.
    std::optional<PlayResult> result;
    harness.Engine().Play(m_long, [&result](const PlayResult& played) { result = played; });
    harness.Engine().StopPlay();
    ASSERT_TRUE(harness.RunUntil([&result] { return result.has_value(); }));
    EXPECT_TRUE(result->isStopped);
    result = PlayAndStop(harness, "room-1.wav", 100'000);
    ASSERT_TRUE(result);
    EXPECT_TRUE(result->isStopped);
    EXPECT_EQ(result->error, "");
    EXPECT_TRUE(harness.CloseAndWait());
    EXPECT_EQ(Recorded("room-1.wav").First(), -1);
}

TEST_F(AudioEngineStopTest, WhatPlaysBehindItOnTheSameStreamIsWhole) {
    EngineHarness harness({FileOutput("room-%n.wav")});
    harness.OpenWithAllRooms();
    harness.Engine().StopPlay(); // of nothing
    ASSERT_TRUE(PlayAndStop(harness, "room-1.wav", 50'000));
    const auto second = harness.PlayToEnd(m_clip);
    ASSERT_TRUE(second);
    EXPECT_EQ(second->error, "");
    EXPECT_FALSE(second->isStopped);
    EXPECT_EQ(second->rooms, Rooms{1});
    ExpectWholeClip("room-2.wav");
}

} // namespace controller::audio::test
