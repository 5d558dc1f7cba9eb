#include "controller/state/StateKeeper.h"

#include "tests/controller/support/EventTexts.h"
#include "tests/controller/support/FakeScheduler.h"
#include "tests/controller/support/TestLog.h"

#include <gtest/gtest.h>

#include <map>
#include <stdexcept>

namespace controller {

namespace {

using namespace std::chrono_literals;
using Texts = std::vector<std::string>;

class FakeAgentStore final : public IAgentStateStore {
public:
    void WriteAgentState(std::shared_ptr<const std::string> xml, WriteDone done) override {
        writes.push_back(*xml);
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

    void Save(std::uint32_t announcement, const std::string& name) {
        m_keeper.Save(announcement,
                      [this, name](const std::string& error) { m_told.push_back(name + ": " + error); });
    }

    /// The text of announcements, by their ids and names.
    static std::string Element(std::uint32_t id, const std::string& name) {
        return "<announcement><id>" + std::to_string(id) + "</id><name>" + name + "</name></announcement>";
    }
    static std::string State(const std::string& elements) {
        return "<announcements>" + elements + "</announcements>";
    }

    std::string m_state = "old";
    int m_wholeAsked = 0;
    std::map<std::uint32_t, std::string> m_elements;
    FakeAgentStore m_store;
    FakeScheduler m_scheduler;
    EventFeed m_feed;
    EventTexts m_events{m_feed};
    TestLog m_log;
    Texts m_told;
    StateKeeper m_keeper{{[this] {
                              ++m_wholeAsked;
                              return m_state;
                          },
                          [this](std::uint32_t id) { return m_elements[id]; }, m_store, m_scheduler, m_feed,
                          m_log.log},
                         "old"};
};

TEST_F(StateKeeperTest, WhenOneAnnouncementHasChangedTheOthersAreNotAskedFor) {
    m_state = State(Element(1, "a") + Element(2, "b"));
    Save("whole");
    m_elements = {{1, Element(1, "new")}, {3, Element(3, "c")}};
    Save(1, "changed");
    Save(3, "added");
    Save(2, "removed");
    Save(1, "the same");
    EXPECT_EQ(m_store.writes, (Texts{m_state, State(Element(1, "new") + Element(2, "b")),
                                     State(Element(1, "new") + Element(2, "b") + Element(3, "c")),
                                     State(Element(1, "new") + Element(3, "c"))}));
    EXPECT_EQ(m_wholeAsked, 1);
    m_store.waiting[3]("");
    EXPECT_EQ(m_told, (Texts{"whole: ", "changed: ", "added: ", "removed: ", "the same: "}));
}

TEST_F(StateKeeperTest, OfATextThatSomebodyElseWroteTheWholeIsAskedForFirst) {
    m_state = State(Element(1, "a"));
    m_elements = {{1, Element(1, "a")}};
    Save(1, "a");
    EXPECT_EQ(m_wholeAsked, 1);
    Save(1, "b");
    EXPECT_EQ(m_wholeAsked, 1);
    EXPECT_EQ(m_store.writes, Texts{m_state});
}

TEST_F(StateKeeperTest, WhereOneAnnouncementHasNoCertainPlaceTheWholeIsAskedFor) {
    m_state = State(Element(2, "b"));
    Save("whole");
    m_state = State(Element(1, "a") + Element(2, "b"));
    m_elements = {{1, Element(1, "a")}};
    Save(1, "in front of others");
    EXPECT_EQ(m_wholeAsked, 2);
    EXPECT_EQ(m_store.writes.back(), m_state);
}

TEST_F(StateKeeperTest, OneThatCarriesTheIdOfAnotherIsNotTakenForIt) {
    // Kept under 3 and 7, they carry 7 and 9 until the next start.
    const std::string first = Element(7, "kept under 3");
    m_state = State(first);
    m_elements[3] = first;
    Save(3, "first");
    m_state = State(first + Element(9, "kept under 7"));
    m_elements[7] = Element(9, "kept under 7");
    Save(7, "second");
    m_state = State(first + Element(7, "changed"));
    m_elements[7] = Element(7, "changed");
    Save(7, "changed");
    EXPECT_EQ(m_store.writes.back(), m_state);
    m_state = State(first);
    m_elements[7] = "";
    Save(7, "removed");
    EXPECT_EQ(m_store.writes.back(), m_state);
}

TEST_F(StateKeeperTest, OneInDoubtIsLookedAtSoonAndAllWhenAllAre) {
    m_state = State(Element(1, "a"));
    Save("whole");
    m_elements = {{1, Element(1, "b")}};
    m_keeper.SaveSoon(1);
    m_scheduler.Advance(2s);
    EXPECT_EQ(m_store.writes.back(), State(Element(1, "b")));
    EXPECT_EQ(m_wholeAsked, 1);
    m_keeper.SaveSoon(1);
    m_keeper.SaveSoon();
    m_scheduler.Advance(2s);
    EXPECT_EQ(m_wholeAsked, 2);
}

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
    StateKeeper keeper({[]() -> std::string { throw std::runtime_error("broken"); },
                        [](std::uint32_t /*announcement*/) { return std::string(); }, store, scheduler, feed,
                        log.log},
                       "");
    std::string told;
    keeper.Save([&](const std::string& error) { told = error; });
    EXPECT_EQ(told, "broken");
    EXPECT_TRUE(store.writes.empty());
}

} // namespace

} // namespace controller
