#include "controller/driver/DriverOnly.h"

#include "controller/agent/Timers.h"
#include "controller/events/EventFeed.h"
#include "controller/rooms/Popups.h"
#include "controller/rooms/RoomVolumes.h"
#include "tests/controller/support/FakeScheduler.h"
#include "tests/controller/support/NoStore.h"
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
};

TEST_F(DriverOnlyTest, TheThreadThatMadeItMayAsk) {
    DriverOnly().Assert();
}

TEST_F(DriverOnlyTest, TheFeedIsOfTheDriverThread) {
    ExpectAsserted([this] { m_feed.Publish(events::StateSaved{}); });
}

TEST_F(DriverOnlyTest, RoomVolumesAreOfTheDriverThread) {
    RoomVolumes volumes(
        {{1, "Kitchen", 100, 40}}, [](std::uint32_t, unsigned) {}, m_store, m_feed, m_log.log);
    ExpectAsserted([&] { volumes.Take(1); });
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

} // namespace

} // namespace controller
