#include "controller/audio/Timeline.h"

#include "controller/audio/SoundFormat.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <vector>

namespace controller::audio::test {

namespace {

constexpr std::chrono::seconds kReadiness{20};

std::shared_ptr<Clip> FinishedClip(std::int64_t frames) {
    auto clip = std::make_shared<Clip>();
    EXPECT_TRUE(clip->Append(std::vector<float>(static_cast<std::size_t>(frames * kChannels), 0.5F)));
    clip->Finish();
    return clip;
}

} // namespace

class TimelineTest : public ::testing::Test {
protected:
    TimelineTest() { gst_init(nullptr, nullptr); }

    /// A room that runs and has been given its first block.
    std::shared_ptr<RoomSlot> RunningRoom(std::uint32_t id) {
        auto slot = m_timeline.AddRoom(id);
        EXPECT_EQ(m_timeline.NextTurn(*slot).kind, Turn::Kind::Block);
        m_timeline.SetRunning(*slot, false);
        return slot;
    }

    /// The room's turns until it has the clip's first frame; its place on the timeline.
    std::int64_t ClipBegin(RoomSlot& slot) {
        for (;;) {
            const Turn turn = m_timeline.NextTurn(slot);
            if (turn.kind != Turn::Kind::Block)
                return -1;
            if (turn.clip && turn.clipPosition + kBlockFrames > 0)
                return turn.frame - turn.clipPosition;
        }
    }

    Timeline m_timeline;
};

TEST_F(TimelineTest, AClipBeginsAtTheSameFrameInRoomsThatAreAtDifferentPlaces) {
    const auto first = RunningRoom(1);
    const auto second = RunningRoom(2);
    // The second room is given several blocks more.
    for (int i = 0; i < 3; ++i)
        (void)m_timeline.NextTurn(*second);
    ASSERT_TRUE(m_timeline.StartClip(FinishedClip(1000), 0, kReadiness));
    const auto begin = ClipBegin(*first);
    EXPECT_GE(begin, 0);
    EXPECT_EQ(ClipBegin(*second), begin);
}

TEST_F(TimelineTest, AClipWaitsForNoRoomThatIsNotAwaited) {
    const auto room = RunningRoom(1);
    const auto trouble = m_timeline.AddRoom(2, false);
    ASSERT_TRUE(m_timeline.StartClip(FinishedClip(1000), 0, std::chrono::hours(1)));
    EXPECT_EQ(m_timeline.StateOf(*trouble), RoomSlot::State::Opening);
    EXPECT_GE(ClipBegin(*room), 0);
}

TEST_F(TimelineTest, ARoomWasReadyWhenItOpenedInTime) {
    const auto room = m_timeline.AddRoom(1);
    EXPECT_EQ(m_timeline.WasReady(*room, kReadiness), std::nullopt);
    EXPECT_EQ(m_timeline.WasReady(*room, std::chrono::seconds(0)), false);
    m_timeline.SetRunning(*room, false);
    EXPECT_EQ(m_timeline.WasReady(*room, kReadiness), true);
    EXPECT_EQ(m_timeline.WasReady(*room, std::chrono::seconds(0)), false);
    m_timeline.SetDone(*room);
    EXPECT_EQ(m_timeline.WasReady(*room, kReadiness), true);
}

TEST_F(TimelineTest, ARoomHasPlayedTheClipWhenItsLastSampleHasPassed) {
    const auto room = RunningRoom(1);
    const auto opening = m_timeline.AddRoom(2, false);
    EXPECT_FALSE(m_timeline.HasPlayedClip(*room));
    ASSERT_TRUE(m_timeline.StartClip(FinishedClip(1000), kRate / 50, kReadiness));
    EXPECT_FALSE(m_timeline.HasPlayedClip(*room));
    const auto end = ClipBegin(*room) + 1000;
    while (m_timeline.NextTurn(*room).frame < end + kBlockFrames)
        continue;
    EXPECT_TRUE(m_timeline.HasPlayedClip(*room));
    EXPECT_EQ(m_timeline.NextTurn(*room).kind, Turn::Kind::Block) << "silence is still to come";
    EXPECT_FALSE(m_timeline.HasPlayedClip(*opening));
}

TEST_F(TimelineTest, LeadSilencePutsTheClipOff) {
    const auto room = RunningRoom(1);
    const auto before = m_timeline.NextTurn(*room).frame;
    ASSERT_TRUE(m_timeline.StartClip(FinishedClip(1000), kRate / 10, kReadiness));
    EXPECT_GE(ClipBegin(*room), before + kRate / 10);
}

TEST_F(TimelineTest, ARoomEndsWhenClipAndTailHavePassed) {
    const auto room = RunningRoom(1);
    ASSERT_TRUE(m_timeline.StartClip(FinishedClip(1000), 0, kReadiness));
    const auto begin = ClipBegin(*room);
    Turn turn = m_timeline.NextTurn(*room);
    std::int64_t last = 0;
    for (; turn.kind == Turn::Kind::Block; turn = m_timeline.NextTurn(*room))
        last = turn.frame;
    EXPECT_EQ(turn.kind, Turn::Kind::End);
    EXPECT_GE(last + kBlockFrames, begin + 1000 + kTailFrames);
    EXPECT_LT(last, begin + 1000 + kTailFrames);
}

TEST_F(TimelineTest, AnAbandonedClipDoesNotStartInRoomsOfTheNextOne) {
    const auto room = RunningRoom(1);
    const auto clip = FinishedClip(1000);
    clip->Abandon();
    EXPECT_FALSE(m_timeline.StartClip(clip, 0, kReadiness));
    EXPECT_FALSE(m_timeline.HasClip());
    EXPECT_EQ(m_timeline.NextTurn(*room).clip, nullptr);
}

TEST_F(TimelineTest, AStoppedClipFadesOutWhereARoomIsAndARoomThatOpensLaterHearsNothing) {
    EXPECT_FALSE(m_timeline.FadeOut()) << "there is no clip";
    const auto room = RunningRoom(1);
    const auto late = m_timeline.AddRoom(2, false);
    ASSERT_TRUE(m_timeline.StartClip(FinishedClip(kRate), 0, kReadiness));
    const auto begin = ClipBegin(*room);
    EXPECT_TRUE(m_timeline.FadeOut());
    float volume = 1.0F;
    std::int64_t last = begin;
    Turn turn = m_timeline.NextTurn(*room);
    for (; turn.clip; turn = m_timeline.NextTurn(*room)) {
        EXPECT_LT(turn.fade, volume);
        volume = turn.fade;
        last = turn.frame;
    }
    EXPECT_EQ(volume, 0.0F);
    EXPECT_EQ(last + kBlockFrames, begin + kBlockFrames + kFadeFrames);
    EXPECT_EQ(m_timeline.NextTurn(*late).clip, nullptr);
    while (turn.kind == Turn::Kind::Block)
        turn = m_timeline.NextTurn(*room);
    EXPECT_EQ(turn.kind, Turn::Kind::End);
}

TEST_F(TimelineTest, WithoutRoomsNoClipStarts) {
    EXPECT_FALSE(m_timeline.StartClip(FinishedClip(1000), 0, kReadiness));
    const auto room = m_timeline.AddRoom(1);
    m_timeline.Remove(room);
    EXPECT_FALSE(m_timeline.StartClip(FinishedClip(1000), 0, kReadiness));
}

TEST_F(TimelineTest, ARoomThatIsStillOpeningIsAwaitedOnlyForItsTime) {
    const auto running = RunningRoom(1);
    const auto opening = m_timeline.AddRoom(2);
    EXPECT_TRUE(m_timeline.StartClip(FinishedClip(1000), 0, std::chrono::milliseconds(1)));
    EXPECT_EQ(m_timeline.StateOf(*opening), RoomSlot::State::Opening);
}

TEST_F(TimelineTest, ARemovedRoomFadesAndEndsAnAbortedOneStopsAtOnce) {
    const auto removed = RunningRoom(1);
    const auto aborted = RunningRoom(2);
    m_timeline.Remove(removed);
    EXPECT_EQ(m_timeline.NextTurn(*removed).kind, Turn::Kind::LastBlock);
    EXPECT_EQ(m_timeline.NextTurn(*removed).kind, Turn::Kind::End);
    m_timeline.Abort(aborted);
    EXPECT_EQ(m_timeline.NextTurn(*aborted).kind, Turn::Kind::Abort);
}

} // namespace controller::audio::test
