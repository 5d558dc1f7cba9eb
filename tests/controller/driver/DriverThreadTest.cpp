#include "controller/driver/DriverThread.h"

#include "controller/driver/Alarm.h"
#include "tests/controller/support/TestLog.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <thread>

namespace controller {

namespace {

using namespace std::chrono_literals;
using Texts = std::vector<std::string>;

class DriverThreadTest : public testing::Test {
protected:
    TestLog m_log;
    DriverThread m_driver{m_log.log};
    Texts m_done;
};

TEST_F(DriverThreadTest, WorkFromOtherThreadsRunsOnTheDriverThreadInOrder) {
    std::thread other([this] {
        EXPECT_FALSE(m_driver.IsCurrent());
        for (int i = 0; i < 100; ++i)
            m_driver.Post("work", [this, i] {
                EXPECT_TRUE(m_driver.IsCurrent());
                m_done.push_back(std::to_string(i));
            });
        m_driver.Post("the end", [this] { m_driver.Stop(); });
    });
    m_driver.Run();
    other.join();
    ASSERT_EQ(m_done.size(), 100U);
    EXPECT_EQ(m_done.front(), "0");
    EXPECT_EQ(m_done.back(), "99");
}

TEST_F(DriverThreadTest, PostedWorkNeverRunsWithinTheCall) {
    m_driver.Post("outer", [this] {
        m_driver.Post("inner", [this] {
            m_done.push_back("inner");
            m_driver.Stop();
        });
        m_done.push_back("outer");
    });
    m_driver.Run();
    EXPECT_EQ(m_done, (Texts{"outer", "inner"}));
}

TEST_F(DriverThreadTest, WorkFromOutsideIsRefusedWhileTooMuchWaits) {
    for (std::size_t i = 0; i < DriverThread::kMaxWaiting; ++i)
        ASSERT_TRUE(m_driver.TryPost("work", [] {}));
    EXPECT_FALSE(m_driver.TryPost("too much", [] {}));
    m_driver.Post("the end", [this] { m_driver.Stop(); });
    m_driver.Run();
    EXPECT_TRUE(m_driver.TryPost("work", [] {}));
}

TEST_F(DriverThreadTest, WhatWorkThrowsIsLoggedAndTheThreadGoesOn) {
    m_driver.Post("first", [] { throw std::runtime_error("broken"); });
    m_driver.Post("second", [] { throw 7; });
    m_driver.Post("third", [this] { m_driver.Stop(); });
    m_driver.Run();
    EXPECT_EQ(m_log.lines,
              (Texts{"error: A failure in first: broken", "error: A failure of unknown kind in second"}));
}

TEST_F(DriverThreadTest, WorkThatTakesTooLongIsNamedInTheLog) {
    m_driver.Do("a long calculation", [] {
        const auto end = std::chrono::steady_clock::now() + DriverThread::kSlow + 10ms;
        while (std::chrono::steady_clock::now() < end) {
        }
    });
    ASSERT_EQ(m_log.lines.size(), 1U);
    EXPECT_EQ(m_log.lines[0].find("warning: The driver thread was busy for "), 0U);
    EXPECT_NE(m_log.lines[0].find("with a long calculation"), std::string::npos);
}

TEST_F(DriverThreadTest, LaterWorkIsDoneInTheOrderOfItsTimesAndCancelledWorkIsNot) {
    m_driver.After(6ms, "last", [this] {
        m_done.push_back("last");
        m_driver.Stop();
    });
    m_driver.After(2ms, "first", [this] { m_done.push_back("first"); });
    const std::uint64_t id = m_driver.After(3ms, "never", [this] { m_done.push_back("never"); });
    m_driver.After(0ms, "now", [this] { m_done.push_back("now"); });
    m_driver.Cancel(id);
    m_driver.Cancel(id);
    m_driver.Run();
    EXPECT_EQ(m_done, (Texts{"now", "first", "last"}));
}

TEST_F(DriverThreadTest, MuchThatIsDueTogetherLetsInBetweenWhatElseWaits) {
    m_driver.After(0ms, "long", [this] {
        m_driver.Post("between", [this] { m_done.push_back("between"); });
        m_done.push_back("long");
        const auto end = std::chrono::steady_clock::now() + DriverThread::kTurn + 1ms;
        while (std::chrono::steady_clock::now() < end) {
        }
    });
    m_driver.After(0ms, "second", [this] { m_done.push_back("second"); });
    m_driver.After(0ms, "third", [this] {
        m_done.push_back("third");
        m_driver.Stop();
    });
    m_driver.Run();
    EXPECT_EQ(m_done, (Texts{"long", "between", "second", "third"}));
}

TEST_F(DriverThreadTest, AnAlarmIsStoppedByItsDestruction) {
    auto alarm = std::make_unique<Alarm>(m_driver, "alarm");
    alarm->Start(1ms, [this] { m_done.push_back("alarm"); });
    EXPECT_TRUE(alarm->IsRunning());
    alarm.reset();
    m_driver.After(5ms, "end", [this] { m_driver.Stop(); });
    m_driver.Run();
    EXPECT_TRUE(m_done.empty());
}

TEST_F(DriverThreadTest, AnAlarmMayBeDestroyedByItsOwnWork) {
    auto alarm = std::make_unique<Alarm>(m_driver, "alarm");
    alarm->Start(1ms, [this, &alarm] {
        alarm.reset();
        m_driver.Stop();
    });
    m_driver.Run();
    EXPECT_EQ(alarm, nullptr);
}

} // namespace

} // namespace controller
