#include "controller/state/StateKeeper.h"

#include "tests/controller/support/EventTexts.h"
#include "tests/controller/support/FakeScheduler.h"
#include "tests/controller/support/TestLog.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

using namespace std::chrono_literals;
using Texts = std::vector<std::string>;

class FakeAgentStore final : public IAgentStateStore {
public:
    void WriteAgentState(const std::string& xml, WriteDone done) override {
        writes.push_back(xml);
        waiting.push_back(std::move(done));
    }

    Texts writes;
    std::vector<WriteDone> waiting;
};

class StateKeeperTest : public testing::Test {
protected:
    void Save(const std::string& name) {
        m_keeper.Save([this, name](const std::string& error) { m_told.push_back(name + ": " + error); });
    }

    std::string m_state = "old";
    FakeAgentStore m_store;
    FakeScheduler m_scheduler;
    EventFeed m_feed;
    EventTexts m_events{m_feed};
    TestLog m_log;
    Texts m_told;
    StateKeeper m_keeper{{[this] { return m_state; }, m_store, m_scheduler, m_feed, m_log.log}, "old"};
};

TEST_F(StateKeeperTest, WhatStandsOnTheDiskIsNotWrittenAgain) {
    Save("a");
    EXPECT_EQ(m_told, Texts{"a: "});
    EXPECT_TRUE(m_store.writes.empty());
}

TEST_F(StateKeeperTest, AReplyWaitsUntilTheChangeStandsOnTheDisk) {
    m_state = "new";
    Save("a");
    EXPECT_TRUE(m_told.empty());
    Save("b"); // the same state, on its way
    EXPECT_EQ(m_store.writes, Texts{"new"});
    m_store.waiting[0]("");
    EXPECT_EQ(m_told, (Texts{"a: ", "b: "}));
    EXPECT_EQ(m_events.Take(), Texts{"saved"});
    Save("c");
    EXPECT_EQ(m_store.writes.size(), 1U);
}

TEST_F(StateKeeperTest, AReplyDoesNotWaitForLaterChanges) {
    m_state = "one";
    Save("a");
    m_state = "two";
    Save("b");
    m_store.waiting[0]("");
    EXPECT_EQ(m_told, Texts{"a: "});
    m_store.waiting[1]("");
    EXPECT_EQ(m_told, (Texts{"a: ", "b: "}));
}

TEST_F(StateKeeperTest, AFullDiskIsToldAndTheLaterSuccessIsNoticed) {
    m_state = "new";
    Save("a");
    m_store.waiting[0]("disk full");
    EXPECT_EQ(m_told, Texts{"a: disk full"});
    EXPECT_EQ(m_events.Take(), Texts{"not saved: disk full"});
    m_store.waiting[0](""); // the store has tried again
    EXPECT_EQ(m_events.Take(), Texts{"saved"});
    Save("b");
    EXPECT_EQ(m_told.back(), "b: ");
    EXPECT_EQ(m_store.writes, Texts{"new"});
}

TEST_F(StateKeeperTest, WhoeverSavesAfterAFailureHasItTriedAgain) {
    m_state = "new";
    Save("a");
    m_store.waiting[0]("disk full");
    Save("b");
    EXPECT_EQ(m_store.writes, (Texts{"new", "new"}));
    m_store.waiting[1]("disk still full");
    EXPECT_EQ(m_told, (Texts{"a: disk full", "b: disk still full"}));
    Save("c");
    m_store.waiting[2]("");
    EXPECT_EQ(m_told.back(), "c: ");
}

TEST_F(StateKeeperTest, WhoWaitsForAFailedWriteLearnsWhatBecameOfTheNewerOne) {
    m_state = "one";
    Save("a");
    m_state = "two";
    Save("b");
    m_store.waiting[0]("disk full");
    EXPECT_TRUE(m_told.empty());
    m_store.waiting[1]("");
    EXPECT_EQ(m_told, (Texts{"a: ", "b: "}));
}

TEST_F(StateKeeperTest, BackAtTheOldStateItIsWrittenAgain) {
    m_state = "new";
    Save("a");
    m_state = "old";
    Save("b");
    EXPECT_EQ(m_store.writes, (Texts{"new", "old"}));
}

TEST_F(StateKeeperTest, AChangeThatNobodyWaitsForIsNoticedSoonAndOnce) {
    m_state = "new";
    m_keeper.SaveSoon();
    m_keeper.SaveSoon();
    m_scheduler.Advance(1999ms);
    EXPECT_TRUE(m_store.writes.empty());
    m_scheduler.Advance(1ms);
    EXPECT_EQ(m_store.writes, Texts{"new"});
    EXPECT_EQ(m_scheduler.Waiting(), 0U);
}

TEST(StateKeeperFailureTest, AnAgentThatCannotGiveItsStateIsTold) {
    FakeAgentStore store;
    FakeScheduler scheduler;
    EventFeed feed;
    TestLog log;
    StateKeeper keeper(
        {[]() -> std::string { throw std::runtime_error("broken"); }, store, scheduler, feed, log.log}, "");
    std::string told;
    keeper.Save([&](const std::string& error) { told = error; });
    EXPECT_EQ(told, "broken");
    EXPECT_TRUE(store.writes.empty());
}

} // namespace
