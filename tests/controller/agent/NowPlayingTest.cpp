#include "controller/agent/NowPlaying.h"

#include "controller/ModuleFile.h"
#include "controller/agent/AgentHost.h"
#include "host/IDeviceManager.h"
#include "tests/controller/support/EventTexts.h"
#include "tests/controller/support/FakeScheduler.h"
#include "tests/controller/support/TestLog.h"

#include <gtest/gtest.h>

namespace controller {

namespace {

using namespace std::chrono_literals;
using Texts = std::vector<std::string>;

std::string Announcement(int id, int videoDelay) {
    // A screen that no host knows: what counts is the timers that the popup arms.
    return "<announcement><id>" + std::to_string(id) +
           "</id><name>A</name><video><file/><text>T</text><delay>" + std::to_string(videoDelay) +
           "</delay><timeout>3000</timeout></video><rooms/><navigators>" +
           (videoDelay < 0 ? "" : "<navigator><id>5</id></navigator>") + "</navigators></announcement>";
}

/// With the real agent on virtual time.
class NowPlayingTest : public testing::Test {
protected:
    NowPlayingTest() {
        m_services.RegisterInterface(ITimerManager::kGuid, static_cast<ITimerManager*>(&m_timers), 1);
        m_services.RegisterInterface(IDeviceManager::kGuid, static_cast<IDeviceManager*>(&m_devices), 1);
        DriverHost::Listeners listeners;
        listeners.eventFired = [this](std::uint32_t id) {
            m_playing.EventFired(id);
        };
        m_host.SetListeners(listeners);
        m_timers.SetDriverTimerListener([this] { m_playing.DriverTimerDone(); });
        m_agent.Start("<announcements>" + Announcement(1, 0) + Announcement(2, 500) + Announcement(3, -1) +
                      "</announcements>");
    }

    void Play(const std::string& id) { (void)m_agent.Command("execute_announcement", {{"id", id}}); }

    struct NoDevices final : IDeviceManager {
        std::int32_t SendCommandToDevice(std::uint32_t, ICmdMessage*, std::uint32_t, std::uint32_t) override {
            return -1;
        }
        void InvalidateDeviceState(std::uint32_t) override {}
        void GetDeviceInterface(std::uint32_t, const std::string&, void** out) override { *out = nullptr; }
    };

    FakeScheduler m_scheduler;
    TestLog m_log;
    EventFeed m_feed;
    EventTexts m_events{m_feed};
    Timers m_timers{m_scheduler, m_log.log};
    NoDevices m_devices;
    NowPlaying m_playing{m_timers, m_feed};
    DriverHost m_host{m_timers, m_log.log};
    InstanceRegistry m_services;
    AgentHost m_agent{FindModuleFile().string(), m_services, m_host, m_log.log};
};

TEST_F(NowPlayingTest, AnAnnouncementIsOverWhenThePollFindsIt) {
    Play("1");
    ASSERT_TRUE(m_playing.Current());
    EXPECT_EQ(m_playing.Current()->id, 1U);
    EXPECT_EQ(m_playing.Current()->show, 1U);
    m_scheduler.Advance(2999ms);
    EXPECT_EQ(m_events.Take(), Texts{"started 1"});
    m_scheduler.Advance(1000ms);
    EXPECT_EQ(m_events.Take(), Texts{"ended 1"});
    EXPECT_FALSE(m_playing.Current());
    EXPECT_EQ(m_scheduler.Waiting(), 0U);
}

TEST_F(NowPlayingTest, QueuedAnnouncementsFollowOneAnother) {
    Play("1");
    Play("2");
    Play("3");
    m_scheduler.Advance(20s);
    EXPECT_EQ(m_events.Take(),
              (Texts{"started 1", "ended 1", "started 2", "ended 2", "started 3", "ended 3"}));
}

TEST_F(NowPlayingTest, AnAnnouncementWithNothingToPlayIsOverAtTheNextPoll) {
    Play("3");
    m_scheduler.Advance(999ms);
    EXPECT_EQ(m_events.Take(), Texts{"started 3"});
    m_scheduler.Advance(1ms);
    EXPECT_EQ(m_events.Take(), Texts{"ended 3"});
}

TEST_F(NowPlayingTest, PlayedAgainWhileItPlaysItIsStillTheSamePlaying) {
    Play("1");
    m_scheduler.Advance(300ms);
    Play("0");
    EXPECT_EQ(m_events.Take(), Texts{"started 1"});
    EXPECT_EQ(m_playing.Current()->show, 1U);
    m_scheduler.Advance(10s);
    EXPECT_EQ(m_events.Take(), Texts{"ended 1"});
    // The surplus poll goes on; what is played beside it is seen as ever.
    Play("2");
    m_scheduler.Advance(10s);
    EXPECT_EQ(m_events.Take(), (Texts{"started 2", "ended 2"}));
}

TEST_F(NowPlayingTest, AnUnknownIdPlaysNothing) {
    Play("77");
    m_scheduler.Advance(5s);
    EXPECT_TRUE(m_events.Take().empty());
}

TEST_F(NowPlayingTest, WithoutTheAgentNothingPlays) {
    Play("1");
    m_agent.Stop();
    m_playing.AgentStopped();
    EXPECT_EQ(m_events.Take(), (Texts{"started 1", "ended 1"}));
    m_playing.AgentStopped();
    EXPECT_TRUE(m_events.Take().empty());
}

} // namespace

} // namespace controller
