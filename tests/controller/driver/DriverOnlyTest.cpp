#include "controller/driver/DriverOnly.h"

#include "controller/agent/RoomProxy.h"
#include "controller/agent/Timers.h"
#include "controller/api/streams/EventStreams.h"
#include "controller/console/Console.h"
#include "controller/events/EventFeed.h"
#include "controller/rooms/Popups.h"
#include "controller/rooms/RoomVolumes.h"
#include "controller/state/StateStore.h"
#include "framework/InstanceRegistry.h"
#include "tests/controller/announcements/AnnouncementsFixture.h"
#include "tests/controller/support/FakeScheduler.h"
#include "tests/controller/support/NoEngine.h"
#include "tests/controller/support/NoStore.h"
#include "tests/controller/support/TemporaryFolder.h"
#include "tests/controller/support/TestLog.h"

#include <gtest/gtest.h>

#include <functional>

namespace controller {

namespace {

void OnAnotherThread(const std::function<void()>& work) {
    std::thread(work).join();
}

class DriverOnlyTest : public testing::Test {
protected:
    void SetUp() override {
        GTEST_FLAG_SET(death_test_style, "threadsafe");
#ifdef NDEBUG
        GTEST_SKIP() << "assertions are off in this build";
#endif
    }

    // NOLINTNEXTLINE(readability-function-size): the levels are the macro's
    static void ExpectAsserted(const std::function<void()>& call) {
        EXPECT_DEATH(OnAnotherThread(call), "get_id\\(\\) == m_thread");
    }

    NoStore m_store;
    EventFeed m_feed;
    FakeScheduler m_scheduler;
    TestLog m_log;
    RoomVolumes m_volumes{
        {{1, "Kitchen", 100, 40}},
        {[](std::uint32_t /*room*/, unsigned /*volume*/) {}, m_store, m_scheduler, m_feed, m_log.log}};
};

TEST_F(DriverOnlyTest, TheThreadThatMadeItMayAsk) {
    DriverOnly().Assert();
}

TEST_F(DriverOnlyTest, TheFeedIsOfTheDriverThread) {
    ExpectAsserted([this] { m_feed.Publish(events::StateSaved{}); });
}

TEST_F(DriverOnlyTest, RoomVolumesAreOfTheDriverThread) {
    ExpectAsserted([this] { m_volumes.Take(1); });
}

TEST_F(DriverOnlyTest, RoomsAsTheAgentReachesThemAreOfTheDriverThread) {
    NoEngine engine;
    const InstanceRegistry services;
    DigitalAudio audio({engine, m_volumes, services, m_feed, m_log.log, m_scheduler, {}});
    RoomProxy room(1, audio, m_volumes, m_feed);
    ExpectAsserted([&] { room.SetUpVideo(); });
    ExpectAsserted([&] { room.RestoreVideoState(); });
    ExpectAsserted([&] { room.SetUpAudio(); });
    ExpectAsserted([&] { room.SetAudioVolume(40); });
    ExpectAsserted([&] { room.RestoreAudioState(); });
    ExpectAsserted([&] { room.CancelRestoringState(); });
}

TEST_F(DriverOnlyTest, TheStoreIsOfTheDriverThread) {
    const TemporaryFolder folder;
    StateStore store(std::make_unique<StateDatabase>(folder.Path()), m_scheduler);
    const auto nobody = [](const std::string& /*error*/) {
    };
    ExpectAsserted([&] { store.WriteRooms({{1, 40, {}}}, nobody); });
    ExpectAsserted([&] { store.WriteAll(nobody); });
    ExpectAsserted([&] { store.ListenToAnnouncements(nobody); });
    ExpectAsserted([&] { store.AddHistory({}); });
    ExpectAsserted([&] { store.ReadHistory(1, {}); });
    ExpectAsserted([&] { store.WhenTried({}); });
}

TEST_F(DriverOnlyTest, PopupsAreOfTheDriverThread) {
    const Variables variables({}, m_store, m_feed);
    Popups popups(m_scheduler, variables, m_feed);
    ExpectAsserted([&] { popups.HideAll(); });
}

TEST_F(DriverOnlyTest, TheAgentsTimersAreOfTheDriverThread) {
    Timers timers(m_scheduler, m_log.log);
    ExpectAsserted([&] { timers.KillAllTimers(nullptr); });
}

TEST_F(DriverOnlyTest, SocketsAreOfTheDriverThread) {
    const EventStreams streams(m_feed, {});
    ExpectAsserted([&] { (void)streams.PagesOf(5); });
}

TEST_F(DriverOnlyTest, TheConsoleIsOfTheDriverThread) {
    TestAgent host;
    FakeStore store;
    Announcements announcements({host.agent, store, host.scheduler, m_feed, host.log.log});
    const Console console({announcements, [](const std::string& /*line*/) {},
                           [] {
                           }});
    ConsoleInput::Line line;
    line.error = "no command";
    ExpectAsserted([&] { console.Take(line, [] {}); });
}

} // namespace

} // namespace controller
