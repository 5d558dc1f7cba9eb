#include "controller/rooms/RoomVolumes.h"

#include "tests/controller/support/EventTexts.h"
#include "tests/controller/support/FakeScheduler.h"
#include "tests/controller/support/TestLog.h"

#include <gtest/gtest.h>

namespace controller {

namespace {

using Texts = std::vector<std::string>;

/// Notes the writes, one text a write, and answers them when the test says so.
class FakeRoomStore final : public IRoomStore {
public:
    void WriteRooms(std::vector<RoomRow> rows, WriteDone done) override {
        std::string text;
        for (const RoomRow& row : rows)
            text += (text.empty() ? "" : "; ") + TextOf(row);
        writes.push_back(text);
        waiting.push_back(std::move(done));
    }

    /// Answers the oldest write.
    void Answer(const std::string& error = "") {
        const WriteDone done = std::move(waiting.front());
        waiting.erase(waiting.begin());
        done(error);
    }

    Texts writes;
    std::vector<WriteDone> waiting;

private:
    static std::string TextOf(const RoomRow& row) {
        const std::string now = std::to_string(row.room) + " now " + std::to_string(row.volume);
        if (!row.taken)
            return "free " + now;
        EXPECT_EQ(row.taken->room, row.room);
        return "taken " + now + " before " + std::to_string(row.taken->volumeBefore) + " set " +
               (row.taken->volumeSet ? std::to_string(*row.taken->volumeSet) : "-");
    }
};

class RoomVolumesTest : public testing::Test {
protected:
    using Rooms = std::vector<RoomVolumes::Room>;

    RoomVolumesTest() { m_applied.clear(); }

    RoomVolumes::Parts Parts() {
        return {[this](std::uint32_t room, unsigned volume) {
                    m_applied.push_back(std::to_string(room) + " at " + std::to_string(volume));
                },
                m_store, m_scheduler, m_feed, m_log.log};
    }

    /// What is soon written is written, and the disk answers all.
    void LetTheDiskWork() {
        m_scheduler.Advance({});
        while (!m_store.waiting.empty()) {
            m_store.Answer();
            m_scheduler.Advance({});
        }
    }

    WriteDone Note() {
        return [this](const std::string& error) {
            m_told.push_back(error.empty() ? "written" : error);
        };
    }

    static WriteDone Nobody() {
        return [](const std::string& /*error*/) {
        };
    }

    Texts m_applied;
    Texts m_told;
    FakeRoomStore m_store;
    FakeScheduler m_scheduler;
    EventFeed m_feed;
    EventTexts m_events{m_feed};
    TestLog m_log;
    RoomVolumes m_volumes{{{1, "Kitchen", 70, 40}, {2, "Hall", 100, 30}}, Parts()};
};

TEST_F(RoomVolumesTest, EveryRoomIsAtItsVolumeFromTheStartNeverAboveItsHighest) {
    const RoomVolumes volumes({{1, "A", 100, 40}, {2, "B", 20, 35}}, Parts());
    EXPECT_EQ(m_applied, (Texts{"1 at 40", "2 at 20"}));
    EXPECT_EQ(volumes.Volume(2), 20U);
}

TEST_F(RoomVolumesTest, WhatTheVolumeWasStandsInTheJournalBeforeItChanges) {
    m_volumes.Take(1);
    m_scheduler.Advance({});
    m_volumes.SetForAnnouncement(1, 60);
    EXPECT_EQ(m_store.writes, Texts{"taken 1 now 40 before 40 set -"});
    EXPECT_TRUE(m_applied.empty());
    EXPECT_EQ(m_volumes.Volume(1), 40U);
    LetTheDiskWork();
    EXPECT_EQ(m_applied, Texts{"1 at 60"});
    EXPECT_EQ(m_store.writes.back(), "taken 1 now 60 before 40 set 60");
    EXPECT_EQ(m_events.Take(), (Texts{"set up 1 at 40", "volume 1 60"}));
}

TEST_F(RoomVolumesTest, TheRoomsOfAnAnnouncementAreWrittenAsOne) {
    m_volumes.Take(1);
    m_volumes.Take(2);
    m_volumes.SetForAnnouncement(1, 60);
    m_volumes.SetForAnnouncement(2, 60);
    m_scheduler.Advance({});
    EXPECT_EQ(m_store.writes, Texts{"taken 1 now 40 before 40 set -; taken 2 now 30 before 30 set -"});
    LetTheDiskWork();
    EXPECT_EQ(m_applied, (Texts{"1 at 60", "2 at 60"}));
    m_volumes.GiveBack(1);
    m_volumes.GiveBack(2);
    m_scheduler.Advance({});
    EXPECT_EQ(m_store.writes, (Texts{"taken 1 now 40 before 40 set -; taken 2 now 30 before 30 set -",
                                     "taken 1 now 60 before 40 set 60; taken 2 now 60 before 30 set 60",
                                     "free 1 now 40; free 2 now 30"}));
}

TEST_F(RoomVolumesTest, ADiskThatIsSlowHoldsUpNoSoundForLongerThanItsPatience) {
    int told = 0;
    m_volumes.Take(1);
    m_volumes.Take(2);
    m_scheduler.Advance({});
    m_volumes.SetForAnnouncement(1, 60);
    m_volumes.SetForAnnouncement(2, 60);
    m_volumes.WhenApplied([&] { ++told; });
    m_scheduler.Advance(RoomVolumes::kPatience - std::chrono::milliseconds(1));
    EXPECT_EQ(told, 0);
    EXPECT_TRUE(m_applied.empty());
    m_scheduler.Advance(std::chrono::milliseconds(1));
    EXPECT_EQ(told, 1);
    EXPECT_EQ(m_applied, (Texts{"1 at 60", "2 at 60"}));
    m_scheduler.Advance({});
    // In this order the disk never has the announcement's volume without what it was before.
    EXPECT_EQ(m_store.writes, (Texts{"taken 1 now 40 before 40 set -; taken 2 now 30 before 30 set -",
                                     "taken 1 now 60 before 40 set 60; taken 2 now 60 before 30 set 60"}));
    LetTheDiskWork();
    m_volumes.GiveBackAll();
    EXPECT_EQ(m_volumes.Volume(1), 40U);
    EXPECT_EQ(m_volumes.Volume(2), 30U);
    EXPECT_EQ(m_scheduler.Waiting(), 0U);
}

TEST_F(RoomVolumesTest, GivenBackARoomIsAtItsOwnVolumeAndOutOfTheJournal) {
    m_volumes.Take(1);
    LetTheDiskWork();
    m_volumes.SetForAnnouncement(1, 60);
    (void)m_events.Take();
    m_volumes.GiveBack(1);
    LetTheDiskWork();
    EXPECT_EQ(m_applied, (Texts{"1 at 60", "1 at 40"}));
    EXPECT_EQ(m_store.writes.back(), "free 1 now 40");
    EXPECT_FALSE(m_volumes.IsTaken(1));
    EXPECT_EQ(m_events.Take(), (Texts{"volume 1 40", "restored 1 40"}));
}

TEST_F(RoomVolumesTest, NoAnnouncementIsLouderThanTheRoomsHighest) {
    m_volumes.Take(1);
    LetTheDiskWork();
    m_volumes.SetForAnnouncement(1, 100);
    EXPECT_EQ(m_applied, Texts{"1 at 70"});
}

TEST_F(RoomVolumesTest, AVolumeBelow0IsNotTakenForTheLoudest) {
    m_volumes.Take(1);
    LetTheDiskWork();
    m_volumes.SetForAnnouncement(1, static_cast<unsigned>(-5));
    EXPECT_TRUE(m_applied.empty());
    EXPECT_EQ(m_log.lines.size(), 1U);
}

TEST_F(RoomVolumesTest, AChangeThatSomebodyMadeMeanwhileStays) {
    m_volumes.Take(1);
    LetTheDiskWork();
    m_volumes.SetForAnnouncement(1, 60);
    EXPECT_TRUE(m_volumes.Set(1, 25, Note()));
    LetTheDiskWork();
    EXPECT_EQ(m_store.writes.back(), "taken 1 now 25 before 25 set -");
    EXPECT_EQ(m_told, Texts{"written"});
    (void)m_events.Take();
    m_volumes.GiveBack(1);
    LetTheDiskWork();
    EXPECT_EQ(m_volumes.Volume(1), 25U);
    EXPECT_EQ(m_store.writes.back(), "free 1 now 25");
    EXPECT_EQ(m_events.Take(), Texts{"restored 1 25 changed"});
}

TEST_F(RoomVolumesTest, TheVeryVolumeOfTheAnnouncementSetByHandStaysToo) {
    m_volumes.Take(1);
    LetTheDiskWork();
    m_volumes.SetForAnnouncement(1, 60);
    EXPECT_TRUE(m_volumes.Set(1, 60, Note()));
    LetTheDiskWork();
    EXPECT_EQ(m_store.writes.back(), "taken 1 now 60 before 60 set -") << "and after a kill";
    EXPECT_EQ(m_told, Texts{"written"});
    (void)m_events.Take();
    m_volumes.GiveBack(1);
    LetTheDiskWork();
    EXPECT_EQ(m_volumes.Volume(1), 60U);
    EXPECT_EQ(m_store.writes.back(), "free 1 now 60");
    EXPECT_EQ(m_events.Take(), Texts{"restored 1 60 changed"});
    EXPECT_EQ(m_applied, Texts{"1 at 60"});
}

TEST_F(RoomVolumesTest, AChangeBeforeTheAnnouncementSetsItsVolumeIsTheOneToGoBackTo) {
    m_volumes.Take(1);
    LetTheDiskWork();
    EXPECT_TRUE(m_volumes.Set(1, 25, Note()));
    m_volumes.SetForAnnouncement(1, 60);
    m_scheduler.Advance({});
    EXPECT_EQ(m_store.writes.back(), "taken 1 now 25 before 25 set -");
    EXPECT_EQ(m_applied, Texts{"1 at 25"});
    LetTheDiskWork();
    EXPECT_EQ(m_applied, (Texts{"1 at 25", "1 at 60"}));
    EXPECT_EQ(m_told, Texts{"written"});
    m_volumes.GiveBack(1);
    EXPECT_EQ(m_volumes.Volume(1), 25U);
}

TEST_F(RoomVolumesTest, AnAnswerForAFormerTakingLetsNoVolumeThrough) {
    m_volumes.Take(1);
    m_scheduler.Advance({});
    m_volumes.GiveBack(1);
    m_volumes.Take(1);
    m_volumes.SetForAnnouncement(1, 60);
    m_store.Answer();
    EXPECT_TRUE(m_applied.empty());
    LetTheDiskWork();
    EXPECT_EQ(m_applied, Texts{"1 at 60"});
}

TEST_F(RoomVolumesTest, ASecondAnnouncementNeverTakesTheFirstOnesVolumeForTheRooms) {
    m_volumes.Take(1);
    LetTheDiskWork();
    m_volumes.SetForAnnouncement(1, 60);
    LetTheDiskWork();
    m_volumes.Take(1);
    m_volumes.SetForAnnouncement(1, 50);
    m_volumes.GiveBack(1);
    EXPECT_EQ(m_volumes.Volume(1), 40U);
}

TEST_F(RoomVolumesTest, TakenAgainAfterAChangeTheChangeIsTheRoomsOwn) {
    m_volumes.Take(1);
    LetTheDiskWork();
    m_volumes.SetForAnnouncement(1, 60);
    EXPECT_TRUE(m_volumes.Set(1, 25, Nobody()));
    (void)m_events.Take();
    m_volumes.Take(1);
    LetTheDiskWork();
    m_volumes.SetForAnnouncement(1, 60);
    m_volumes.GiveBack(1);
    EXPECT_EQ(m_volumes.Volume(1), 25U);
    EXPECT_EQ(m_events.Take(), (Texts{"set up 1 at 25", "volume 1 60", "volume 1 25", "restored 1 25"}));
}

TEST_F(RoomVolumesTest, ARoomWithoutAVolumeOfTheAnnouncementStaysAsItIs) {
    m_volumes.Take(2);
    LetTheDiskWork();
    m_volumes.GiveBack(2);
    LetTheDiskWork();
    EXPECT_TRUE(m_applied.empty());
    EXPECT_EQ(m_store.writes.back(), "free 2 now 30");
}

TEST_F(RoomVolumesTest, ADiskThatTakesNothingDoesNotSilenceTheAnnouncement) {
    m_volumes.Take(1);
    m_scheduler.Advance({});
    m_volumes.SetForAnnouncement(1, 60);
    m_store.Answer("the disk is full");
    EXPECT_EQ(m_applied, Texts{"1 at 60"});
    EXPECT_EQ(m_log.lines, Texts{"error: The volume of Kitchen could not be written to the disk: the disk is "
                                 "full; it is kept in memory and tried again"});
    m_volumes.GiveBack(1);
    EXPECT_EQ(m_volumes.Volume(1), 40U);
}

TEST_F(RoomVolumesTest, SoundWaitsForVolumesThatWaitForTheJournal) {
    int told = 0;
    m_volumes.WhenApplied([&] { ++told; });
    EXPECT_EQ(told, 1);
    m_volumes.Take(1);
    m_scheduler.Advance({});
    m_volumes.SetForAnnouncement(1, 60);
    m_volumes.WhenApplied([&] { ++told; });
    EXPECT_EQ(told, 1);
    m_store.Answer();
    EXPECT_EQ(told, 2);
}

TEST_F(RoomVolumesTest, ARoomGivenBackWhileTheJournalIsWrittenKeepsNoSoundWaiting) {
    int told = 0;
    m_volumes.Take(1);
    m_scheduler.Advance({});
    m_volumes.SetForAnnouncement(1, 60);
    m_volumes.WhenApplied([&] { ++told; });
    m_volumes.GiveBack(1);
    EXPECT_EQ(told, 1);
    LetTheDiskWork();
    EXPECT_TRUE(m_applied.empty());
}

TEST_F(RoomVolumesTest, RoomsThatNobodyTookAreLeftAlone) {
    m_volumes.SetForAnnouncement(1, 60);
    m_volumes.GiveBack(1);
    m_volumes.Take(99);
    m_volumes.SetForAnnouncement(99, 60);
    m_volumes.GiveBack(99);
    m_scheduler.Advance({});
    EXPECT_TRUE(m_applied.empty());
    EXPECT_TRUE(m_store.writes.empty());
    EXPECT_TRUE(m_events.Take().empty());
    EXPECT_EQ(m_volumes.Volume(99), std::nullopt);
}

TEST_F(RoomVolumesTest, SetByHandAVolumeIsCappedAndWritten) {
    EXPECT_EQ(m_volumes.Capped(1, 100), 70U);
    EXPECT_TRUE(m_volumes.Set(1, 100, Note()));
    EXPECT_TRUE(m_volumes.Set(2, 35, Note()));
    m_scheduler.Advance({});
    EXPECT_EQ(m_store.writes, Texts{"free 1 now 70; free 2 now 35"});
    EXPECT_TRUE(m_told.empty());
    m_store.Answer();
    EXPECT_EQ(m_told, (Texts{"written", "written"}));
    EXPECT_FALSE(m_volumes.Set(99, 1, Note()));
    EXPECT_EQ(m_told.size(), 2U);
}

TEST_F(RoomVolumesTest, GivingBackAllGivesBackEveryTakenRoomAndLeavesNothingToWrite) {
    m_volumes.Take(1);
    m_volumes.Take(2);
    LetTheDiskWork();
    m_volumes.SetForAnnouncement(1, 60);
    m_volumes.SetForAnnouncement(2, 60);
    m_volumes.GiveBackAll();
    EXPECT_EQ(m_volumes.Volume(1), 40U);
    EXPECT_EQ(m_volumes.Volume(2), 30U);
    EXPECT_FALSE(m_volumes.IsTaken(1) || m_volumes.IsTaken(2));
    EXPECT_EQ(m_store.writes.back(), "free 1 now 40; free 2 now 30");
    EXPECT_EQ(m_scheduler.Waiting(), 0U);
}

/// The kitchen as an end without warning left it, and what becomes of it.
struct Left {
    unsigned volumeLeft;
    unsigned maxVolume;
    JournalEntry entry;
    unsigned volumeAfter;
    const char* why;
};

class JournalAtStartTest : public RoomVolumesTest, public testing::WithParamInterface<Left> {};

TEST_P(JournalAtStartTest, IsRestoredReportedAndStruck) {
    const Left& left = GetParam();
    RoomVolumes volumes({{1, "Kitchen", left.maxVolume, left.volumeLeft}}, Parts());
    volumes.Recover({left.entry});
    EXPECT_EQ(volumes.Volume(1), left.volumeAfter);
    EXPECT_EQ(m_applied.back(), "1 at " + std::to_string(left.volumeAfter));
    m_scheduler.Advance({});
    EXPECT_EQ(m_store.writes, Texts{"free 1 now " + std::to_string(left.volumeAfter)});
    EXPECT_EQ(m_log.lines, Texts{"notice: Kitchen was left in the middle of an announcement; its volume is " +
                                 std::to_string(left.volumeAfter) + left.why});
}

INSTANTIATE_TEST_SUITE_P(Journal,
                         JournalAtStartTest,
                         testing::Values(Left{40, 100, {1, 20, 40}, 20, " again"},
                                         Left{40, 100, {1, 20, 60}, 40, ", as it was set since"},
                                         Left{40, 100, {1, 40, std::nullopt}, 40, " again"},
                                         Left{40, 100, {1, 20, std::nullopt}, 40, ", as it was set since"},
                                         // The room's highest was lowered meanwhile.
                                         Left{90, 80, {1, 30, 90}, 30, " again"},
                                         Left{20, 50, {1, 90, 20}, 50, ", its highest"},
                                         Left{90, 80, {1, 30, 60}, 80, ", its highest"},
                                         // What no room can be set to.
                                         Left{40, 70, {1, 5000, 40}, 70, ", its highest"},
                                         Left{5000, 70, {1, 30, 5000}, 30, " again"}));

TEST_F(RoomVolumesTest, AtStartTheJournalOfARoomThatIsGoneIsStruck) {
    m_volumes.Recover({{99, 20, 40}});
    EXPECT_EQ(m_store.writes, Texts{"free 99 now 20"});
    EXPECT_TRUE(m_applied.empty());
}

} // namespace

} // namespace controller
