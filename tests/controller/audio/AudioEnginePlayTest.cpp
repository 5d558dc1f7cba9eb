#include "controller/audio/VolumeLaw.h"
#include "tests/controller/audio/PlayFixture.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace controller::audio::test {

class AudioEnginePlayTest : public PlayFixture {};

TEST_F(AudioEnginePlayTest, PlaysTheWholeFileUnchangedInEveryRoomAtFullVolume) {
    EngineHarness harness({FileOutput("one.wav"), FileOutput("two.wav")});
    harness.OpenWithAllRooms();
    const auto result = harness.PlayToEnd(m_clip);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->error, "");
    EXPECT_EQ(result->rooms, (Rooms{1, 2}));
    EXPECT_GE(result->startDelay.count(), 0);
    ExpectWholeClip("one.wav");
    ExpectWholeClip("two.wav");
    EXPECT_TRUE(harness.Troubles().empty());
    EXPECT_TRUE(harness.CloseAndWait());
}

TEST_F(AudioEnginePlayTest, AllRoomsStartWithinFiveMilliseconds) {
    EngineHarness harness({FileOutput("one.wav"), FileOutput("two.wav"), FileOutput("three.wav")});
    harness.OpenWithAllRooms();
    ASSERT_TRUE(harness.PlayToEnd(m_clip));
    const auto first = Recorded("one.wav").First();
    EXPECT_LE(std::abs(Recorded("two.wav").First() - first), kRate / 200);
    EXPECT_LE(std::abs(Recorded("three.wav").First() - first), kRate / 200);
}

TEST_F(AudioEnginePlayTest, RoomsThatOpenAtDifferentMomentsStartTogether) {
    EngineHarness harness({FileOutput("early.wav"), FileOutput("late.wav")});
    harness.Engine().OpenStream({});
    harness.Engine().AddRoom(1);
    // The first room has been recording for a while when the second one comes.
    ASSERT_TRUE(harness.RunUntil([&] { return SizeOf("early.wav") > 19'200; }));
    harness.Engine().AddRoom(2);
    const auto result = harness.PlayToEnd(m_clip);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->rooms, (Rooms{1, 2}));
    EXPECT_LE(std::abs(Recorded("early.wav").First() - Recorded("late.wav").First()), kRate / 200);
    ExpectWholeClip("late.wav");
}

// Whether the clip begins in the very block that takes the new volume is a matter of chance: several tries.
TEST_F(AudioEnginePlayTest, AVolumeThatIsSetJustBeforeTheClipHoldsFromItsFirstSample) {
    EngineHarness harness({FileOutput("take-%n.wav")});
    for (int take = 1; take <= 5; ++take) {
        harness.Engine().SetVolume(1, 40);
        harness.OpenWithAllRooms();
        harness.Engine().SetVolume(1, 100);
        ASSERT_TRUE(harness.PlayToEnd(m_clip));
        ASSERT_TRUE(harness.CloseAndWait());
        ExpectWholeClip("take-" + std::to_string(take) + ".wav");
    }
}

TEST_F(AudioEnginePlayTest, EachRoomHasItsOwnVolumeByTheCubicLaw) {
    EngineHarness harness({FileOutput("full.wav"), FileOutput("half.wav"), FileOutput("none.wav")});
    harness.Engine().SetVolume(2, 50);
    harness.Engine().SetVolume(3, 0);
    harness.OpenWithAllRooms();
    const auto result = harness.PlayToEnd(m_clip);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->error, "");
    EXPECT_EQ(result->rooms, (Rooms{1, 2, 3}));
    const auto full = Recorded("full.wav");
    const auto half = Recorded("half.wav");
    ExpectWholeClip("full.wav");
    const auto offset = half.First() - full.First();
    ASSERT_EQ(half.Last() - half.First(), full.Last() - full.First());
    for (auto frame = full.First(); frame <= full.Last(); ++frame)
        for (int channel = 0; channel < kChannels; ++channel)
            ASSERT_NEAR(half.At(frame + offset, channel), full.At(frame, channel) * 0.125, 1.0) << frame;
    EXPECT_EQ(Recorded("none.wav").First(), -1) << "volume 0 is silence";
    EXPECT_GE(Recorded("none.wav").Frames(), static_cast<std::int64_t>(kClipFrames));
}

TEST_F(AudioEnginePlayTest, VolumeSetWhilePlayingIsHeardInThisPlay) {
    const auto clip = m_folder.Path("long.wav");
    const auto melody = Melody(std::size_t{2} * kRate, kChannels);
    WriteSound(clip, melody, kChannels, kRate);
    EngineHarness harness({FileOutput("room.wav")});
    harness.OpenWithAllRooms();
    bool isDone = false;
    harness.Engine().Play(clip, [&](const PlayResult&) { isDone = true; });
    // The recording's file grows while it plays; a second of it is 192,000 bytes.
    const auto isUnderWay = [&] {
        return isDone || SizeOf("room.wav") > 192'000;
    };
    ASSERT_TRUE(harness.RunUntil(isUnderWay));
    ASSERT_FALSE(isDone);
    harness.Engine().SetVolume(1, 50);
    EXPECT_EQ(harness.Engine().Volume(1), 50U);
    ASSERT_TRUE(harness.RunUntil([&] { return isDone; }));
    const auto recording = Recorded("room.wav");
    const auto first = recording.First();
    EXPECT_EQ(recording.At(first, 0), melody.front()) << "the beginning is at the first volume";
    const auto tenth = kRate / 10;
    const auto before = recording.Rms(first, first + tenth);
    const auto after = recording.Rms(recording.Last() - tenth, recording.Last());
    EXPECT_NEAR(after / before, Gain(50), 0.01);
}

TEST_F(AudioEnginePlayTest, ARoomThatIsRemovedWhenItHasHeardTheClipHasPlayedIt) {
    EngineHarness harness({FileOutput("room.wav")});
    harness.OpenWithAllRooms();
    std::optional<PlayResult> result;
    harness.Engine().Play(m_clip, [&](const PlayResult& played) { result = played; });
    // The silence behind the clip is still to come, unless this machine is too slow to see it.
    const auto isInTail = [&] {
        const auto recording = Recorded("room.wav");
        const auto end = recording.First() + static_cast<std::int64_t>(kClipFrames);
        return result || (recording.First() >= 0 && recording.Frames() > end + kBlockFrames);
    };
    ASSERT_TRUE(harness.RunUntil(isInTail));
    harness.Engine().RemoveRoom(1);
    ASSERT_TRUE(harness.RunUntil([&] { return result.has_value(); }));
    EXPECT_EQ(result->error, "");
    EXPECT_EQ(result->rooms, (Rooms{1}));
    EXPECT_TRUE(harness.Log().empty());
}

TEST_F(AudioEnginePlayTest, LeadSilenceComesBeforeTheClipInAllRooms) {
    std::vector<RoomConfig> rooms(2);
    rooms[0].id = 1;
    rooms[0].output = ParseOutput(FileOutput("quick.wav"));
    rooms[1].id = 2;
    rooms[1].output = ParseOutput(FileOutput("slow.wav"));
    rooms[1].leadSilence = std::chrono::milliseconds(300);
    EngineHarness harness(rooms);
    harness.OpenWithAllRooms();
    const auto result = harness.PlayToEnd(m_clip);
    ASSERT_TRUE(result);
    EXPECT_GE(result->startDelay, std::chrono::milliseconds(300));
    const auto slow = Recorded("slow.wav");
    const auto quick = Recorded("quick.wav");
    EXPECT_GE(slow.First(), kRate * 3 / 10);
    EXPECT_LE(std::abs(slow.First() - quick.First()), kRate / 200);
    ExpectWholeClip("slow.wav");
    ExpectWholeClip("quick.wav");
}

TEST_F(AudioEnginePlayTest, TheRecordingBeginsWhenTheStreamIsOpened) {
    EngineHarness harness({FileOutput("room.wav")});
    harness.OpenWithAllRooms();
    const auto isUnderWay = [&] {
        return SizeOf("room.wav") > 19'200;
    };
    ASSERT_TRUE(harness.RunUntil(isUnderWay)) << "it is recorded before anything plays";
    constexpr std::int64_t kHeaderBytes = 44;
    constexpr std::int64_t kFrameBytes = std::int64_t{2} * kChannels;
    const auto before = (static_cast<std::int64_t>(SizeOf("room.wav")) - kHeaderBytes) / kFrameBytes;
    ASSERT_TRUE(harness.PlayToEnd(m_clip));
    EXPECT_GE(Recorded("room.wav").First(), before) << "silence up to the clip";
    ExpectWholeClip("room.wav");
}

TEST_F(AudioEnginePlayTest, TwoAnnouncementsInARowAreBothWhole) {
    EngineHarness harness({FileOutput("one-%n.wav"), FileOutput("sub/two-%r-%n.wav")});
    for (int round = 1; round <= 2; ++round) {
        harness.OpenWithAllRooms();
        const auto result = harness.PlayToEnd(m_clip);
        ASSERT_TRUE(result);
        EXPECT_EQ(result->error, "");
        EXPECT_EQ(result->rooms, (Rooms{1, 2}));
        harness.Engine().CloseStream({});
    }
    ASSERT_TRUE(harness.CloseAndWait());
    for (const char* name : {"one-1.wav", "one-2.wav", "sub/two-2-1.wav", "sub/two-2-2.wav"})
        ExpectWholeClip(name);
}

TEST_F(AudioEnginePlayTest, ARoomIsRecordedAgainIntoTheSameFileOnlyWhenItsFormerOutputIsClosed) {
    EngineHarness harness({FileOutput("room.wav")});
    harness.OpenWithAllRooms();
    ASSERT_TRUE(harness.PlayToEnd(m_clip));
    harness.Engine().CloseStream({});
    harness.OpenWithAllRooms(); // Does not wait for the end of closing.
    const auto result = harness.PlayToEnd(m_clip);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->error, "");
    ExpectWholeClip("room.wav");
}

TEST_F(AudioEnginePlayTest, AnotherPlayOnTheSameStreamPlaysInAllItsRooms) {
    EngineHarness harness({FileOutput("one-%n.wav"), FileOutput("two-%n.wav")});
    harness.OpenWithAllRooms();
    ASSERT_TRUE(harness.PlayToEnd(m_clip));
    const auto second = harness.PlayToEnd(m_clip);
    ASSERT_TRUE(second);
    EXPECT_EQ(second->error, "");
    EXPECT_EQ(second->rooms, (Rooms{1, 2}));
    for (const char* name : {"one-1.wav", "two-1.wav", "one-2.wav", "two-2.wav"})
        ExpectWholeClip(name);
}

TEST_F(AudioEnginePlayTest, AFileRemovedWhileItPlaysIsPlayedToItsEnd) {
    EngineHarness harness({FileOutput("room.wav")});
    harness.OpenWithAllRooms();
    std::optional<PlayResult> result;
    harness.Engine().Play(m_clip, [&](const PlayResult& played) { result = played; });
    ASSERT_TRUE(harness.RunUntil([&] { return SizeOf("room.wav") > 50'000; }));
    std::filesystem::remove(m_clip);
    ASSERT_TRUE(harness.RunUntil([&] { return result.has_value(); }));
    EXPECT_EQ(result->error, "");
    ExpectWholeClip("room.wav");
}

} // namespace controller::audio::test
