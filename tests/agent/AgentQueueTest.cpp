#include "tests/support/AgentTest.h"

#include <deque>

namespace {

using AgentQueueTest = AgentTest;

/// Reaches the queue, which no sequence of calls leaves filled while nothing plays: access is not checked for
/// the arguments of an explicit instantiation.
template <std::deque<std::uint32_t> AnnouncementAgent::*Member>
struct QueueAccess {
    friend std::deque<std::uint32_t>& QueueOf(AnnouncementAgent& agent) { return agent.*Member; }
};
template struct QueueAccess<&AnnouncementAgent::m_queue>;
std::deque<std::uint32_t>& QueueOf(AnnouncementAgent& agent);

Lines Started(const std::string& id, const std::string& poll) {
    return {"VqBaseDriver.AddTimer(1000, 1) = " + poll, "VqBaseDriver.FireEvent(" + id + ")",
            "ILogger.Log(6, Executing announcement )", "ILogger.Log(6, " + id + ")"};
}

TEST_F(AgentQueueTest, LooksUpByMapKeyAndNeverFindsZero) {
    Start(Stored(Silent("0") + Silent("3")));
    EXPECT_EQ(m_agent->GetAnnouncementFromID(0), nullptr);
    EXPECT_EQ(m_agent->GetAnnouncementFromID(4), nullptr);
    ASSERT_NE(m_agent->GetAnnouncementFromID(3), nullptr);
    EXPECT_EQ(m_agent->GetAnnouncementFromID(3)->GetID(), 3U);
    EXPECT_EQ(m_agent->GetAnnouncementFromID(3), m_agent->GetAnnouncementFromID(3));
}

TEST_F(AgentQueueTest, TheQueueHoldsEachIdOnceWhetherKnownOrNot) {
    Start(Stored(Popup("1")));
    m_agent->ExecuteAnnouncement(1);
    EXPECT_EQ(CallsOf([&] {
                  for (const std::uint32_t id : {7U, 8U, 7U, 8U, 1U})
                      m_agent->ExecuteAnnouncement(id);
              }),
              Lines{});
    EXPECT_EQ(QueueOf(*m_agent), (std::deque<std::uint32_t>{7, 8}));
    EXPECT_TRUE(m_agent->IsAnnouncementInQueue(7));
    EXPECT_TRUE(m_agent->IsAnnouncementInQueue(8));
    EXPECT_FALSE(m_agent->IsAnnouncementInQueue(1));
    EXPECT_FALSE(m_agent->IsAnnouncementInQueue(0));
}

TEST_F(AgentQueueTest, UnknownIdsAreTriedInOrderUntilTheQueueIsEmpty) {
    Start(Stored(Silent("1")));
    Execute("1");
    Execute("7");
    Execute("8");
    EXPECT_EQ(CallsOf([&] { m_host.Advance(5000); }), Lines{"poll 1"});
    EXPECT_FALSE(m_agent->IsAnnouncementInQueue(7));
    EXPECT_FALSE(m_agent->IsAnnouncementInQueue(8));
    EXPECT_EQ(CallsOf([&] { Execute("1"); }), Started("1", "2"));
}

TEST_F(AgentQueueTest, AnUnknownIdWithNothingPlayingIsForgotten) {
    EXPECT_EQ(CallsOf([&] { Execute("9"); }), Lines{});
    EXPECT_FALSE(m_agent->IsAnnouncementInQueue(9));
}

TEST_F(AgentQueueTest, IdZeroWhileIdleStartsTheFrontOfTheQueue) {
    Start(Stored(Silent("1") + Silent("2")));
    QueueOf(*m_agent) = {7, 2, 1};
    EXPECT_EQ(CallsOf([&] { Execute("0"); }), Started("2", "1"));
    EXPECT_EQ(QueueOf(*m_agent), std::deque<std::uint32_t>{1});
}

TEST_F(AgentQueueTest, AnUnknownIdWhileIdleStartsTheFrontOfTheQueue) {
    Start(Stored(Silent("1")));
    QueueOf(*m_agent) = {1};
    EXPECT_EQ(CallsOf([&] { Execute("9"); }), Started("1", "1"));
    EXPECT_TRUE(QueueOf(*m_agent).empty());
}

TEST_F(AgentQueueTest, ThePollLooksAtNoTimerId) {
    Start(Stored(Popup("1")));
    Execute("1");
    EXPECT_EQ(CallsOf([&] { m_agent->OnTimerExpired(4711, -1); }),
              Lines{"VqBaseDriver.AddTimer(1000, 1) = 3"});
}

TEST_F(AgentQueueTest, APollWithNothingPlayingArmsTheNext) {
    EXPECT_EQ(CallsOf([&] { m_agent->OnTimerExpired(1, 0); }), Lines{"VqBaseDriver.AddTimer(1000, 1) = 1"});
}

TEST_F(AgentQueueTest, ASurplusPollKeepsArmingItself) {
    Start(Stored(Popup("1")));
    Execute("1");
    Execute("0"); // plays it again, with a poll of its own
    for (int second = 1; second <= 3; ++second) {
        const Lines lines = CallsOf([&] { m_host.Advance(1000); });
        const auto polls = std::count_if(lines.begin(), lines.end(), [](const std::string& line) {
            return line.rfind("VqBaseDriver.AddTimer(1000, 1)", 0) == 0;
        });
        EXPECT_EQ(polls, 2) << "in second " << second;
    }
}

TEST_F(AgentQueueTest, NoRoomIsInTheCurrentAnnouncementWhileNothingPlays) {
    Start(Stored("<a><id>1</id><rooms><room><id>12</id></room></rooms><navigators/></a>"));
    EXPECT_FALSE(m_agent->IsRoomInCurrentAnnouncement(12));
    EXPECT_FALSE(m_agent->IsRoomInCurrentAnnouncement(0));
}

TEST_F(AgentQueueTest, TheCallbacksBehaveTheSameThroughBothFaces) {
    Start("<s><a><id>1</id><name>1</name><rooms><room><id>12</id></room></rooms><navigators/></a></s>");
    VqBaseDriver& driver = *m_agent;
    IAnnouncementAgent& face = *m_host.Face();
    EXPECT_FALSE(face.IsRoomInCurrentAnnouncement(12));
    EXPECT_FALSE(m_agent->IsRoomInCurrentAnnouncement(12));
    EXPECT_EQ(CallsOf([&] {
                  face.AudioStreamCreated();
                  m_agent->AudioStreamCreated();
                  face.AudioAnnouncementComplete();
                  m_agent->AudioAnnouncementComplete();
              }),
              Lines{});

    driver.ExecuteCommand(TestMessage("execute_announcement", Parameters{{"id", "1"}}), nullptr, 0);
    EXPECT_TRUE(face.IsRoomInCurrentAnnouncement(12));
    EXPECT_TRUE(m_agent->IsRoomInCurrentAnnouncement(12));
    EXPECT_FALSE(face.IsRoomInCurrentAnnouncement(13));
    EXPECT_FALSE(m_agent->IsRoomInCurrentAnnouncement(13));
    EXPECT_EQ(CallsOf([&] { face.AudioStreamCreated(); }),
              (Lines{"ITimerManager.KillTimer(0)", "IRoomProxy.SetUpAudio(12)",
                     "ITimerManager.AddTimer(1, 2) = 2"}));
    EXPECT_EQ(CallsOf([&] { m_agent->AudioStreamCreated(); }),
              (Lines{"ITimerManager.KillTimer(0)", "IRoomProxy.SetUpAudio(12)",
                     "ITimerManager.AddTimer(1, 2) = 3"}));
    const std::string complete =
        "ILogger.Log(6, Announcement audio complete - Delaying to ensure that the client has finished.)";
    EXPECT_EQ(CallsOf([&] { face.AudioAnnouncementComplete(); }),
              (Lines{complete, "ITimerManager.KillTimer(0)", "ITimerManager.AddTimer(2, 2) = 4"}));
    EXPECT_EQ(CallsOf([&] { m_agent->AudioAnnouncementComplete(); }),
              (Lines{complete, "ITimerManager.KillTimer(4)", "ITimerManager.AddTimer(2, 2) = 5"}));
}

TEST_F(AgentQueueTest, ACallbackMadeDuringTheEventReachesTheAnnouncementThatStarts) {
    Start("<s><a><id>1</id><name>1</name><rooms><room><id>12</id></room></rooms><navigators/></a></s>");
    m_host.log.WhenCalled("VqBaseDriver.FireEvent", [this] {
        EXPECT_TRUE(m_host.Face()->IsRoomInCurrentAnnouncement(12));
        m_host.Face()->AudioStreamCreated();
    });
    EXPECT_EQ(
        CallsOf([&] { Execute("1"); }),
        (Lines{"VqBaseDriver.AddTimer(1000, 1) = 1", "VqBaseDriver.FireEvent(1)",
               "ITimerManager.KillTimer(0)", "IRoomProxy.SetUpAudio(12)", "ITimerManager.AddTimer(1, 2) = 2",
               "ILogger.Log(6, Executing announcement )", "ILogger.Log(6, 1)"}));
}

TEST_F(AgentQueueTest, ACommandSentDuringTheEventFindsTheAnnouncementPlaying) {
    Start(Stored(Silent("1") + Silent("2")));
    m_host.log.WhenCalled("VqBaseDriver.FireEvent", [this] {
        Execute("1");
        Execute("2");
    });
    EXPECT_EQ(CallsOf([&] { Execute("1"); }), Started("1", "1"));
    EXPECT_TRUE(m_agent->IsAnnouncementInQueue(2));
    EXPECT_FALSE(m_agent->IsAnnouncementInQueue(1));
}

TEST_F(AgentQueueTest, AnAnnouncementRemovedWhilePlayingIsDestroyedByThePollThatFindsItComplete) {
    Start(Stored(Silent("1") + Silent("2")));
    Execute("1");
    Execute("2");
    EXPECT_EQ(CallsOf([&] { Request("remove_announcement", {{"id", "1"}}); }), Lines{});
    EXPECT_EQ(CallsOf([&] { m_host.Advance(1000); }), Join({{"poll 1", kTimersKilled}, Started("2", "2")}));
}

TEST_F(AgentQueueTest, AnAnnouncementWithoutATimerManagerIsCompleteAtTheFirstPoll) {
    m_host.hasTimerManager = false;
    Start(Stored(Popup("1") + Silent("2")));
    Execute("1");
    Execute("2");
    EXPECT_EQ(CallsOf([&] { m_host.Advance(1000); }), Join({{"poll 1"}, Started("2", "2")}));
}

TEST_F(AgentQueueTest, DismissedWithNothingPlayingDoesNothing) {
    EXPECT_EQ(CallsOf([&] { Command("ANNOUNCEMENT_DISMISSED"); }), Lines{});
}

} // namespace
