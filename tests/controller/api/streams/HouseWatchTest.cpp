#include "controller/api/streams/HouseWatch.h"

#include <gtest/gtest.h>

namespace controller {

using Ids = std::vector<std::uint32_t>;

class HouseWatchTest : public testing::Test {
protected:
    void Ask(std::uint32_t id) { m_feed.Publish(events::PlayAsked{id}); }
    void Start(std::uint32_t id) { m_feed.Publish(events::AnnouncementStarted{id}); }
    void End(std::uint32_t id) { m_feed.Publish(events::AnnouncementEnded{id}); }

    EventFeed m_feed;
    HouseWatch m_watch{m_feed};
};

TEST_F(HouseWatchTest, WhatIsAskedForWhileSomethingPlaysWaitsInItsOrder) {
    Ask(1);
    Start(1);
    for (const std::uint32_t id : {2U, 3U, 2U, 1U, 0U})
        Ask(id);

    EXPECT_EQ(m_watch.Current()->announcement, 1U);
    EXPECT_EQ(m_watch.Waiting(), (Ids{2, 3}));
}

TEST_F(HouseWatchTest, WhatWaitsInFrontOfTheAgentIsPlayedBehindWhatTheAgentHas) {
    Ask(1);
    Start(1);
    m_feed.Publish(events::PlayAsked{5, 17});
    m_feed.Publish(events::QueueChanged{{{17, 5, "Five", {}}, {18, 4, "Four", {}}}});
    Ask(2);
    EXPECT_EQ(m_watch.Waiting(), (Ids{2, 5, 4}));
    End(1);
    EXPECT_EQ(m_watch.Waiting(), (Ids{5, 4}));
    m_feed.Publish(events::QueueChanged{});
    EXPECT_EQ(m_watch.Waiting(), Ids{});
}

TEST_F(HouseWatchTest, NextOneStartsAndThoseThatWereSkippedWaitNoMore) {
    Ask(1);
    Start(1);
    for (const std::uint32_t id : {2U, 3U, 4U})
        Ask(id);

    End(1);
    Start(3);

    EXPECT_EQ(m_watch.Waiting(), Ids{4});
}

TEST_F(HouseWatchTest, WhatIsRemovedNoLongerWaits) {
    Ask(1);
    Start(1);
    for (const std::uint32_t id : {2U, 3U, 4U})
        Ask(id);

    for (const std::uint32_t id : {3U, 1U, 9U})
        m_feed.Publish(events::AnnouncementRemoved{id});

    EXPECT_EQ(m_watch.Waiting(), (Ids{2, 4}));
    EXPECT_EQ(m_watch.Current()->announcement, 1U);
}

TEST_F(HouseWatchTest, NothingWaitsWhenNothingPlays) {
    Ask(1);
    Start(1);
    Ask(2);
    End(1);
    EXPECT_EQ(m_watch.Waiting(), Ids{});

    Ask(5);
    Start(5);

    EXPECT_EQ(m_watch.Waiting(), Ids{});
}

TEST_F(HouseWatchTest, TroubleOfARoomLastsUntilTheNextAnnouncement) {
    Start(1);
    m_feed.Publish(events::RoomOutputFailed{12, "gone"});
    EXPECT_EQ(m_watch.Trouble(12), "gone");

    End(1);
    EXPECT_EQ(m_watch.Trouble(12), "gone");
    Start(2);

    EXPECT_EQ(m_watch.Trouble(12), "");
    EXPECT_EQ(m_watch.Totals().outputFailures, 1U);
}

TEST_F(HouseWatchTest, ARoomThatWouldNotBeHeardIsInTroubleWhateverIsPlayedElsewhere) {
    EXPECT_EQ(m_watch.Health(12), events::RoomHealth::Unknown);
    m_feed.Publish(events::RoomHealthChanged{12, events::RoomHealth::Silent, "no device"});
    Start(1);
    EXPECT_EQ(m_watch.Health(12), events::RoomHealth::Silent);
    EXPECT_EQ(m_watch.Trouble(12), "no device");

    m_feed.Publish(events::RoomOutputFailed{12, "gone"});
    EXPECT_EQ(m_watch.Trouble(12), "gone");
    m_feed.Publish(events::RoomHealthChanged{12, events::RoomHealth::Healthy, ""});

    EXPECT_EQ(m_watch.Health(12), events::RoomHealth::Healthy);
    EXPECT_EQ(m_watch.Trouble(12), "");
}

TEST_F(HouseWatchTest, StateThatIsNotOnTheDiskIsKnownUntilItIs) {
    m_feed.Publish(events::StateNotSaved{"full"});
    EXPECT_EQ(m_watch.StateError(), "full");

    m_feed.Publish(events::StateSaved{});

    EXPECT_FALSE(m_watch.StateError().has_value());
}

TEST_F(HouseWatchTest, ScreensAreAwakeUntilTheyRest) {
    m_feed.Publish(events::ScreensWoken{12});
    EXPECT_TRUE(m_watch.IsAwake(12));
    EXPECT_FALSE(m_watch.IsAwake(13));

    m_feed.Publish(events::ScreensRested{12});

    EXPECT_FALSE(m_watch.IsAwake(12));
}

} // namespace controller
