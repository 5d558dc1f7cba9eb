#include "controller/rooms/RoomVolumes.h"

#include "tests/controller/support/EventTexts.h"
#include "tests/controller/support/TestLog.h"

#include <gtest/gtest.h>

namespace controller {

namespace {

using Texts = std::vector<std::string>;

/// Notes the writes, and answers them when the test says so.
class FakeRoomStore final : public IRoomStore {
public:
    void WriteTaken(const JournalEntry& entry, unsigned volume, WriteDone done) override {
        const std::string set = entry.volumeSet ? std::to_string(*entry.volumeSet) : "-";
        Note("taken " + std::to_string(entry.room) + " before " + std::to_string(entry.volumeBefore) +
                 " set " + set + " now " + std::to_string(volume),
             std::move(done));
    }
    void WriteFree(std::uint32_t room, unsigned volume, WriteDone done) override {
        Note("free " + std::to_string(room) + " now " + std::to_string(volume), std::move(done));
    }

    /// Answers the oldest write.
    void Answer(const std::string& error = "") {
        const WriteDone done = std::move(waiting.front());
        waiting.erase(waiting.begin());
        done(error);
    }
    void AnswerAll() {
        while (!waiting.empty())
            Answer();
    }

    Texts writes;
    std::vector<WriteDone> waiting;

private:
    void Note(const std::string& text, WriteDone done) {
        writes.push_back(text);
        waiting.push_back(std::move(done));
    }
};

class RoomVolumesTest : public testing::Test {
protected:
    RoomVolumesTest()
        : m_volumes(
              {{1, "Kitchen", 70, 40}, {2, "Hall", 100, 30}},
              [this](std::uint32_t room, unsigned volume) {
                  m_applied.push_back(std::to_string(room) + " at " + std::to_string(volume));
              },
              m_store,
              m_feed,
              m_log.log) {
        m_applied.clear();
    }

    Texts m_applied;
    FakeRoomStore m_store;
    EventFeed m_feed;
    EventTexts m_events{m_feed};
    TestLog m_log;
    RoomVolumes m_volumes;
};

TEST_F(RoomVolumesTest, EveryRoomIsAtItsVolumeFromTheStartNeverAboveItsHighest) {
    Texts applied;
    const RoomVolumes volumes(
        {{1, "A", 100, 40}, {2, "B", 20, 35}},
        [&](std::uint32_t room, unsigned volume) {
            applied.push_back(std::to_string(room) + " at " + std::to_string(volume));
        },
        m_store, m_feed, m_log.log);
    EXPECT_EQ(applied, (Texts{"1 at 40", "2 at 20"}));
}

TEST_F(RoomVolumesTest, WhatTheVolumeWasStandsInTheJournalBeforeItChanges) {
    m_volumes.Take(1);
    m_volumes.SetForAnnouncement(1, 60);
    EXPECT_EQ(m_store.writes, Texts{"taken 1 before 40 set - now 40"});
    EXPECT_TRUE(m_applied.empty());
    EXPECT_EQ(m_volumes.Volume(1), 40U);
    m_store.Answer();
    EXPECT_EQ(m_applied, Texts{"1 at 60"});
    EXPECT_EQ(m_store.writes.back(), "taken 1 before 40 set 60 now 60");
    EXPECT_EQ(m_events.Take(), (Texts{"set up 1 at 40", "volume 1 60"}));
}

TEST_F(RoomVolumesTest, GivenBackARoomIsAtItsOwnVolumeAndOutOfTheJournal) {
    m_volumes.Take(1);
    m_store.AnswerAll();
    m_volumes.SetForAnnouncement(1, 60);
    (void)m_events.Take();
    m_volumes.GiveBack(1);
    EXPECT_EQ(m_applied, (Texts{"1 at 60", "1 at 40"}));
    EXPECT_EQ(m_store.writes.back(), "free 1 now 40");
    EXPECT_FALSE(m_volumes.IsTaken(1));
    EXPECT_EQ(m_events.Take(), (Texts{"volume 1 40", "restored 1 40"}));
}

TEST_F(RoomVolumesTest, NoAnnouncementIsLouderThanTheRoomsHighest) {
    m_volumes.Take(1);
    m_store.AnswerAll();
    m_volumes.SetForAnnouncement(1, 100);
    EXPECT_EQ(m_applied, Texts{"1 at 70"});
}

TEST_F(RoomVolumesTest, AVolumeBelow0IsNotTakenForTheLoudest) {
    m_volumes.Take(1);
    m_store.AnswerAll();
    m_volumes.SetForAnnouncement(1, static_cast<unsigned>(-5));
    EXPECT_TRUE(m_applied.empty());
    EXPECT_EQ(m_log.lines.size(), 1U);
}

TEST_F(RoomVolumesTest, AChangeThatSomebodyMadeMeanwhileStays) {
    m_volumes.Take(1);
    m_store.AnswerAll();
    m_volumes.SetForAnnouncement(1, 60);
    EXPECT_TRUE(m_volumes.Set(1, 25, [](const std::string&) {}));
    EXPECT_EQ(m_store.writes.back(), "taken 1 before 40 set 60 now 25");
    (void)m_events.Take();
    m_volumes.GiveBack(1);
    EXPECT_EQ(m_volumes.Volume(1), 25U);
    EXPECT_EQ(m_store.writes.back(), "free 1 now 25");
    EXPECT_EQ(m_events.Take(), Texts{"restored 1 25 changed"});
}

TEST_F(RoomVolumesTest, AChangeBeforeTheAnnouncementSetsItsVolumeIsTheOneToGoBackTo) {
    m_volumes.Take(1);
    m_store.AnswerAll();
    EXPECT_TRUE(m_volumes.Set(1, 25, [](const std::string&) {}));
    m_volumes.SetForAnnouncement(1, 60);
    EXPECT_EQ(m_store.writes.back(), "taken 1 before 25 set - now 25");
    EXPECT_EQ(m_applied, Texts{"1 at 25"});
    m_store.AnswerAll();
    EXPECT_EQ(m_applied, (Texts{"1 at 25", "1 at 60"}));
    m_volumes.GiveBack(1);
    EXPECT_EQ(m_volumes.Volume(1), 25U);
}

TEST_F(RoomVolumesTest, ASecondAnnouncementNeverTakesTheFirstOnesVolumeForTheRooms) {
    m_volumes.Take(1);
    m_store.AnswerAll();
    m_volumes.SetForAnnouncement(1, 60);
    m_store.AnswerAll();
    m_volumes.Take(1);
    m_volumes.SetForAnnouncement(1, 50);
    m_volumes.GiveBack(1);
    EXPECT_EQ(m_volumes.Volume(1), 40U);
}

TEST_F(RoomVolumesTest, TakenAgainAfterAChangeTheChangeIsTheRoomsOwn) {
    m_volumes.Take(1);
    m_store.AnswerAll();
    m_volumes.SetForAnnouncement(1, 60);
    EXPECT_TRUE(m_volumes.Set(1, 25, [](const std::string&) {}));
    m_volumes.Take(1);
    m_store.AnswerAll();
    m_volumes.SetForAnnouncement(1, 60);
    m_volumes.GiveBack(1);
    EXPECT_EQ(m_volumes.Volume(1), 25U);
}

TEST_F(RoomVolumesTest, ARoomWithoutAVolumeOfTheAnnouncementStaysAsItIs) {
    m_volumes.Take(2);
    m_store.AnswerAll();
    m_volumes.GiveBack(2);
    EXPECT_TRUE(m_applied.empty());
    EXPECT_EQ(m_store.writes.back(), "free 2 now 30");
}

TEST_F(RoomVolumesTest, ADiskThatTakesNothingDoesNotSilenceTheAnnouncement) {
    m_volumes.Take(1);
    m_volumes.SetForAnnouncement(1, 60);
    m_store.Answer("the disk is full");
    EXPECT_EQ(m_applied, Texts{"1 at 60"});
    ASSERT_EQ(m_log.lines.size(), 1U);
    EXPECT_NE(m_log.lines[0].find("the disk is full"), std::string::npos);
    m_volumes.GiveBack(1);
    EXPECT_EQ(m_volumes.Volume(1), 40U);
}

TEST_F(RoomVolumesTest, SoundWaitsForVolumesThatWaitForTheJournal) {
    int told = 0;
    m_volumes.WhenApplied([&] { ++told; });
    EXPECT_EQ(told, 1);
    m_volumes.Take(1);
    m_volumes.SetForAnnouncement(1, 60);
    m_volumes.WhenApplied([&] { ++told; });
    EXPECT_EQ(told, 1);
    m_store.Answer();
    EXPECT_EQ(told, 2);
}

TEST_F(RoomVolumesTest, ARoomGivenBackWhileTheJournalIsWrittenKeepsNoSoundWaiting) {
    int told = 0;
    m_volumes.Take(1);
    m_volumes.SetForAnnouncement(1, 60);
    m_volumes.WhenApplied([&] { ++told; });
    m_volumes.GiveBack(1);
    EXPECT_EQ(told, 1);
    m_store.AnswerAll();
    EXPECT_TRUE(m_applied.empty());
}

TEST_F(RoomVolumesTest, RoomsThatNobodyTookAreLeftAlone) {
    m_volumes.SetForAnnouncement(1, 60);
    m_volumes.GiveBack(1);
    m_volumes.Take(99);
    m_volumes.SetForAnnouncement(99, 60);
    m_volumes.GiveBack(99);
    EXPECT_TRUE(m_applied.empty());
    EXPECT_TRUE(m_store.writes.empty());
    EXPECT_TRUE(m_events.Take().empty());
    EXPECT_EQ(m_volumes.Volume(99), std::nullopt);
}

TEST_F(RoomVolumesTest, SetByHandAVolumeIsCappedAndWritten) {
    std::vector<std::string> answers;
    EXPECT_EQ(m_volumes.Capped(1, 100), 70U);
    EXPECT_TRUE(m_volumes.Set(1, 100, [&](const std::string& error) { answers.push_back(error); }));
    EXPECT_EQ(m_store.writes, Texts{"free 1 now 70"});
    m_store.Answer();
    EXPECT_EQ(answers, Texts{""});
    EXPECT_FALSE(m_volumes.Set(99, 1, [&](const std::string& error) { answers.push_back(error); }));
    EXPECT_EQ(answers, Texts{""});
}

TEST_F(RoomVolumesTest, GivingBackAllGivesBackEveryTakenRoom) {
    m_volumes.Take(1);
    m_volumes.Take(2);
    m_store.AnswerAll();
    m_volumes.SetForAnnouncement(1, 60);
    m_volumes.SetForAnnouncement(2, 60);
    m_volumes.GiveBackAll();
    EXPECT_EQ(m_volumes.Volume(1), 40U);
    EXPECT_EQ(m_volumes.Volume(2), 30U);
    EXPECT_FALSE(m_volumes.IsTaken(1) || m_volumes.IsTaken(2));
}

struct Left {
    JournalEntry entry;
    unsigned volumeAfter;
};

class JournalAtStartTest : public RoomVolumesTest, public testing::WithParamInterface<Left> {};

TEST_P(JournalAtStartTest, IsRestoredReportedAndStruck) {
    m_volumes.Recover({GetParam().entry});
    EXPECT_EQ(m_volumes.Volume(1), GetParam().volumeAfter);
    EXPECT_EQ(m_store.writes, Texts{"free 1 now " + std::to_string(GetParam().volumeAfter)});
    ASSERT_EQ(m_log.lines.size(), 1U);
    EXPECT_EQ(m_log.lines[0].substr(0, 15), "notice: Kitchen");
}

// The room's stored volume is 40.
INSTANTIATE_TEST_SUITE_P(Journal,
                         JournalAtStartTest,
                         testing::Values(Left{{1, 20, 40}, 20},           // still what the announcement set
                                         Left{{1, 20, 60}, 40},           // somebody has set 40 since
                                         Left{{1, 40, std::nullopt}, 40}, // nothing was set yet
                                         Left{{1, 20, std::nullopt}, 40}));

TEST_F(RoomVolumesTest, AtStartTheJournalOfARoomThatIsGoneIsStruck) {
    m_volumes.Recover({{99, 20, 40}});
    EXPECT_EQ(m_store.writes, Texts{"free 99 now 20"});
    EXPECT_TRUE(m_applied.empty());
}

} // namespace

} // namespace controller
