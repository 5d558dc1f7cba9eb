#include "controller/agent/Timers.h"

#include "controller/agent/DriverHost.h"
#include "framework/InstanceRegistry.h"
#include "host/VqBaseDriver.h"
#include "tests/controller/support/FakeScheduler.h"
#include "tests/controller/support/TestLog.h"

#include <gtest/gtest.h>

namespace controller {

namespace {

using namespace std::chrono_literals;
using Ids = std::vector<std::uint32_t>;

struct Owner final : ITimerManagerCallback {
    void OnTimerExpired(std::uint32_t timerId, std::int32_t /*context*/) override {
        fired.push_back(timerId);
        if (then)
            then();
    }

    Ids fired;
    std::function<void()> then;
};

class TestDriver final : public VqBaseDriver {
public:
    explicit TestDriver(IInstanceManager& instances) : VqBaseDriver(instances, DriverMultiplicity::Single) {}

    void OnTimerExpired(std::uint32_t timerId, std::int32_t /*context*/) override {
        fired.push_back(timerId);
        if (then)
            then();
    }
    using VqBaseDriver::AddTimer;

    Ids fired;
    std::function<void()> then;
};

class TimersTest : public testing::Test {
protected:
    TimersTest() { m_instances.RegisterInterface(IDriverHost::kGuid, static_cast<IDriverHost*>(&m_host), 1); }

    FakeScheduler m_scheduler;
    TestLog m_log;
    Timers m_timers{m_scheduler, m_log.log};
    DriverHost m_host{m_timers, m_log.log};
    InstanceRegistry m_instances;
    Owner m_owner;
};

TEST_F(TimersTest, ATimerFiresOnceAfterItsInterval) {
    const std::uint32_t id = m_timers.AddTimer(500, TimerUnit::Milliseconds, &m_owner);
    EXPECT_NE(id, 0U);
    m_scheduler.Advance(499ms);
    EXPECT_TRUE(m_owner.fired.empty());
    EXPECT_EQ(m_timers.AnnouncementTimers(), 1U);
    m_scheduler.Advance(1ms);
    EXPECT_EQ(m_owner.fired, Ids{id});
    EXPECT_EQ(m_timers.AnnouncementTimers(), 0U);
    m_scheduler.Advance(10s);
    EXPECT_EQ(m_owner.fired, Ids{id});
}

TEST_F(TimersTest, UnitCode2IsSecondsAndTheLongestIntervalIsKept) {
    m_timers.AddTimer(3, TimerUnit::Seconds, &m_owner);
    m_timers.AddTimer(4294967295U, TimerUnit::Seconds, &m_owner);
    m_scheduler.Advance(2999ms);
    EXPECT_TRUE(m_owner.fired.empty());
    m_scheduler.Advance(1ms);
    EXPECT_EQ(m_owner.fired.size(), 1U);
    m_scheduler.Advance(4294967291s);
    EXPECT_EQ(m_owner.fired.size(), 1U);
    m_scheduler.Advance(1s);
    EXPECT_EQ(m_owner.fired.size(), 2U);
}

TEST_F(TimersTest, OneCounterNumbersBothKinds) {
    TestDriver driver(m_instances);
    const std::uint32_t first = m_timers.AddTimer(1, TimerUnit::Milliseconds, &m_owner);
    const std::uint32_t second = driver.AddTimer(1, TimerUnit::Milliseconds);
    EXPECT_EQ(second, first + 1);
}

TEST_F(TimersTest, KilledATimerDoesNotFireAndItsIdIs0) {
    std::uint32_t id = m_timers.AddTimer(5, TimerUnit::Milliseconds, &m_owner);
    const std::uint32_t other = m_timers.AddTimer(5, TimerUnit::Milliseconds, &m_owner);
    m_timers.KillTimer(id);
    EXPECT_EQ(id, 0U);
    m_timers.KillTimer(id);
    std::uint32_t unknown = 77;
    m_timers.KillTimer(unknown);
    EXPECT_EQ(unknown, 0U);
    m_scheduler.Advance(5ms);
    EXPECT_EQ(m_owner.fired, Ids{other});
}

TEST_F(TimersTest, KillAllTimersCancelsThoseOfOneOwner) {
    Owner other;
    m_timers.AddTimer(5, TimerUnit::Milliseconds, &m_owner);
    m_timers.AddTimer(6, TimerUnit::Milliseconds, &m_owner);
    const std::uint32_t id = m_timers.AddTimer(7, TimerUnit::Milliseconds, &other);
    m_timers.KillAllTimers(&m_owner);
    m_scheduler.Advance(1s);
    EXPECT_TRUE(m_owner.fired.empty());
    EXPECT_EQ(other.fired, Ids{id});
}

TEST_F(TimersTest, AnOwnerMayBeDestroyedByItsOwnTimer) {
    auto owner = std::make_unique<Owner>();
    owner->then = [&] {
        m_timers.KillAllTimers(owner.get());
        owner.reset();
    };
    m_timers.AddTimer(5, TimerUnit::Milliseconds, owner.get());
    m_timers.AddTimer(6, TimerUnit::Milliseconds, owner.get());
    m_scheduler.Advance(1s);
    EXPECT_EQ(owner, nullptr);
    EXPECT_EQ(m_timers.AnnouncementTimers(), 0U);
}

TEST_F(TimersTest, WhatAnOwnerThrowsIsLoggedAndTheNextTimerFires) {
    m_owner.then = [] {
        throw "no";
    };
    m_timers.AddTimer(5, TimerUnit::Milliseconds, &m_owner);
    m_timers.AddTimer(6, TimerUnit::Milliseconds, &m_owner);
    m_scheduler.Advance(1s);
    EXPECT_EQ(m_owner.fired.size(), 2U);
    EXPECT_EQ(m_log.lines, (std::vector<std::string>(2, "error: The agent failed in a timer: no")));
}

TEST_F(TimersTest, ADestroyedDriversTimersFireNoMore) {
    auto driver = std::make_unique<TestDriver>(m_instances);
    driver->AddTimer(5, TimerUnit::Milliseconds);
    driver.reset();
    m_scheduler.Advance(1s);
    EXPECT_EQ(m_scheduler.Waiting(), 0U);
}

TEST_F(TimersTest, WhoeverListensIsToldWhenTheDriverHasDealtWithATimer) {
    TestDriver driver(m_instances);
    std::vector<std::string> order;
    driver.then = [&] {
        order.push_back(m_timers.IsInDriverTimer() ? "driver" : "?");
    };
    m_timers.SetDriverTimerListener([&] { order.push_back(m_timers.IsInDriverTimer() ? "?" : "listener"); });
    driver.AddTimer(5, TimerUnit::Milliseconds);
    m_timers.AddTimer(6, TimerUnit::Milliseconds, &m_owner);
    m_scheduler.Advance(1s);
    EXPECT_EQ(order, (std::vector<std::string>{"driver", "listener"}));
}

} // namespace

} // namespace controller
