#include "controller/announcements/HistoryRecorder.h"

#include "controller/state/UtcText.h"

#include <gtest/gtest.h>

namespace controller {

namespace {

using Ids = std::vector<std::uint32_t>;

class HistoryRecorderTest : public testing::Test {
protected:
    /// What was written, which must be one.
    [[nodiscard]] HistoryEntry Written() {
        EXPECT_EQ(m_written.size(), 1U);
        return m_written.empty() ? HistoryEntry() : m_written.front();
    }

    EventFeed m_feed;
    std::string m_name = "Dinner";
    bool m_isEnding = false;
    std::vector<HistoryEntry> m_written;
    HistoryRecorder m_recorder{m_feed,
                               {[this](std::uint32_t id) { return m_name + " " + std::to_string(id); },
                                [this](const HistoryEntry& entry) { m_written.push_back(entry); },
                                [this] {
                                    return m_isEnding;
                                }}};
};

TEST_F(HistoryRecorderTest, WhatWasPlayedIsWrittenOnceAtItsEndWithAllThatItReached) {
    const std::string before = UtcText(std::chrono::system_clock::now());
    m_feed.Publish(events::AnnouncementStarted{3});
    m_name = "Renamed meanwhile";
    m_feed.Publish(events::RoomSetUp{2, 40});
    m_feed.Publish(events::RoomSetUp{1, 30});
    m_feed.Publish(events::SoundStarted{"/media/announcements/gong.wav"});
    m_feed.Publish(events::PopupShown{7, 12, "Dinner", "", std::chrono::milliseconds(6000), true});
    m_feed.Publish(events::SoundEnded{"/media/announcements/gong.wav", ""});
    m_feed.Publish(events::PopupHidden{7, 12, events::PopupEnd::TimeIsUp});
    EXPECT_TRUE(m_written.empty());
    m_feed.Publish(events::AnnouncementEnded{3});

    const HistoryEntry entry = Written();
    EXPECT_EQ(entry.announcement, 3U);
    EXPECT_EQ(entry.name, "Dinner 3");
    EXPECT_EQ(entry.rooms, (Ids{2, 1}));
    EXPECT_EQ(entry.navigators, Ids{12});
    EXPECT_EQ(entry.file, "/media/announcements/gong.wav");
    EXPECT_EQ(entry.outcome, "ended");
    EXPECT_LE(before, entry.startedAt);
    EXPECT_LE(entry.startedAt, entry.endedAt);
    EXPECT_LE(entry.endedAt, UtcText(std::chrono::system_clock::now()));
}

TEST_F(HistoryRecorderTest, ARoomAndAScreenThatComeAgainStandInItOnce) {
    m_feed.Publish(events::AnnouncementStarted{3});
    for (int count = 0; count < 2; ++count) {
        m_feed.Publish(events::RoomSetUp{1, 40});
        m_feed.Publish(events::PopupShown{7, 12, "Dinner", "", std::chrono::milliseconds(6000), true});
    }
    m_feed.Publish(events::AnnouncementEnded{3});
    EXPECT_EQ(Written().rooms, Ids{1});
    EXPECT_EQ(Written().navigators, Ids{12});
}

TEST_F(HistoryRecorderTest, APopupThatAPersonTookAwayMakesItDismissed) {
    for (const auto why : {events::PopupEnd::TimeIsUp, events::PopupEnd::Hidden, events::PopupEnd::Replaced,
                           events::PopupEnd::Dismissed}) {
        m_written.clear();
        m_feed.Publish(events::AnnouncementStarted{3});
        m_feed.Publish(events::PopupHidden{7, 12, why});
        m_feed.Publish(events::AnnouncementEnded{3});
        EXPECT_EQ(Written().outcome, why == events::PopupEnd::Dismissed ? "dismissed" : "ended");
    }
}

TEST_F(HistoryRecorderTest, ASoundThatFailedGoesBeforeADismissal) {
    for (const bool isDismissedFirst : {false, true}) {
        m_written.clear();
        m_feed.Publish(events::AnnouncementStarted{3});
        if (isDismissedFirst)
            m_feed.Publish(events::PopupHidden{7, 12, events::PopupEnd::Dismissed});
        m_feed.Publish(events::SoundEnded{"/media/announcements/none.wav", "there is no such file"});
        if (!isDismissedFirst)
            m_feed.Publish(events::PopupHidden{7, 12, events::PopupEnd::Dismissed});
        m_feed.Publish(events::AnnouncementEnded{3});
        EXPECT_EQ(Written().outcome, "failed: there is no such file");
        EXPECT_EQ(Written().file, "/media/announcements/none.wav");
    }
}

TEST_F(HistoryRecorderTest, WhatTheEndOfTheControllerCutOffIsInterruptedWhateverElseCame) {
    m_feed.Publish(events::AnnouncementStarted{3});
    m_feed.Publish(events::SoundEnded{"/media/announcements/gong.wav", "stopped"});
    m_isEnding = true;
    m_feed.Publish(events::AnnouncementEnded{3});
    EXPECT_EQ(Written().outcome, "interrupted");
}

TEST_F(HistoryRecorderTest, WhatIsStoppedIsNotDismissedAndWhatHasFailedStaysFailed) {
    m_feed.Publish(events::AnnouncementStarted{3});
    m_feed.Publish(events::AnnouncementStopped{3});
    m_feed.Publish(events::PopupHidden{7, 12, events::PopupEnd::Dismissed});
    m_feed.Publish(events::AnnouncementEnded{3});
    EXPECT_EQ(Written().outcome, "stopped");
    m_written.clear();
    m_feed.Publish(events::AnnouncementStarted{3});
    m_feed.Publish(events::SoundEnded{"x", "there is no such file"});
    m_feed.Publish(events::AnnouncementStopped{3});
    m_feed.Publish(events::AnnouncementEnded{3});
    EXPECT_EQ(Written().outcome, "failed: there is no such file");
}

TEST_F(HistoryRecorderTest, NothingOfOneStandsInTheNext) {
    m_feed.Publish(events::AnnouncementStarted{3});
    m_feed.Publish(events::RoomSetUp{1, 40});
    m_feed.Publish(events::SoundEnded{"/media/announcements/none.wav", "there is no such file"});
    m_feed.Publish(events::AnnouncementEnded{3});
    m_written.clear();
    m_feed.Publish(events::AnnouncementStarted{4});
    m_feed.Publish(events::AnnouncementEnded{4});
    EXPECT_EQ(Written().announcement, 4U);
    EXPECT_EQ(Written().rooms, Ids{});
    EXPECT_EQ(Written().file, "");
    EXPECT_EQ(Written().outcome, "ended");
}

TEST_F(HistoryRecorderTest, WhatHappensWhileNothingPlaysIsNotWritten) {
    m_feed.Publish(events::PopupShown{7, 12, "Test", "", std::chrono::milliseconds(6000), true});
    m_feed.Publish(events::PopupHidden{7, 12, events::PopupEnd::Dismissed});
    m_feed.Publish(events::RoomSetUp{1, 40});
    m_feed.Publish(events::SoundEnded{"x", "y"});
    m_feed.Publish(events::AnnouncementEnded{3});
    EXPECT_TRUE(m_written.empty());
}

} // namespace

} // namespace controller
