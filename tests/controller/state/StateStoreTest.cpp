#include "controller/state/StateStore.h"

#include "tests/controller/support/FakeScheduler.h"
#include "tests/controller/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <array>

namespace controller {

namespace {

using Texts = std::vector<std::string>;

/// Drops what is posted, at once.
class DroppingScheduler final : public IScheduler {
public:
    [[nodiscard]] Duration Now() const override { return {}; }
    void Post(const char* /*what*/, std::function<void()> work) override {
        work = nullptr;
        onDropped();
    }
    std::uint64_t After(Duration /*delay*/, const char* /*what*/, std::function<void()> /*work*/) override {
        return 1;
    }
    void Cancel(std::uint64_t /*id*/) noexcept override {}

    std::function<void()> onDropped;
};

/// The store's own thread writes; the test takes its answers when it waits for them.
class StateStoreTest : public testing::Test {
protected:
    void TakeAnswers(std::size_t count) {
        while (count-- > 0)
            m_scheduler.DoNextPosted();
    }

    WriteDone Note(const std::string& name) {
        return [this, name](const std::string& error) {
            m_told.push_back(name + (error.empty() ? "" : " failed"));
        };
    }

    /// From now on, writes of volumes fail; or no longer.
    void SetFull(bool isFull) const {
        Sqlite database((m_folder.Path() / StateDatabase::kFileName).string(), Sqlite::Mode::ReadWriteCreate);
        database.Execute(isFull ? "CREATE TRIGGER full BEFORE INSERT ON room_volume BEGIN SELECT "
                                  "RAISE(FAIL, 'full'); END"
                                : "DROP TRIGGER full");
    }

    [[nodiscard]] StoredState OnDisk() const { return StateDatabase(m_folder.Path()).Read(); }

    TemporaryFolder m_folder;
    FakeScheduler m_scheduler;
    Texts m_told;
    StateStore m_store{std::make_unique<StateDatabase>(m_folder.Path()), m_scheduler};
};

TEST_F(StateStoreTest, WhatAnAnswerHoldsIsGivenBackAsAWhole) {
    // An answer that is dropped as soon as it is posted leaves nothing behind on the store's own thread,
    // where what it holds (a request, and so a connection) must not end.
    const auto write = std::make_shared<int>(0);
    const auto read = std::make_shared<int>(0);
    const auto tried = std::make_shared<int>(0);
    std::vector<std::array<long, 3>> left;
    DroppingScheduler scheduler;
    scheduler.onDropped = [&] {
        left.push_back({write.use_count(), read.use_count(), tried.use_count()});
    };
    {
        StateStore store(std::make_unique<StateDatabase>(m_folder.Path()), scheduler);
        store.WriteVariable(9, 4, "21", [write](const std::string& /*error*/) {});
        store.ReadHistory(1, [read](const std::vector<HistoryEntry>&, const std::string&) {});
        store.WhenTried([tried] {});
    }
    ASSERT_EQ(left.size(), 3U);
    EXPECT_EQ(left[0][0], 1);
    EXPECT_EQ(left[1][1], 1);
    EXPECT_EQ(left[2][2], 1);
}

TEST_F(StateStoreTest, WhatIsToldAsWrittenStandsOnTheDisk) {
    m_store.WriteAgentState(std::make_shared<const std::string>("<announcements/>"), Note("state"));
    m_store.WriteTaken({1, 40, 60}, 60, Note("taken"));
    m_store.WriteVariable(9, 4, "21", Note("variable"));
    EXPECT_TRUE(m_told.empty());
    TakeAnswers(3);
    EXPECT_EQ(m_told, (Texts{"state", "taken", "variable"}));
    EXPECT_EQ(OnDisk().agentState, "<announcements/>");
    EXPECT_EQ(OnDisk().journal.size(), 1U);
    EXPECT_EQ(OnDisk().volumes.at(1), 60U);
    EXPECT_EQ(OnDisk().variables.at({9, 4}), "21");
    m_store.WriteFree(1, 40, Note("free"));
    TakeAnswers(1);
    EXPECT_TRUE(OnDisk().journal.empty());
    EXPECT_EQ(OnDisk().volumes.at(1), 40U);
}

TEST_F(StateStoreTest, AFailedWriteIsToldOnceAndTriedAgainUntilItSucceeds) {
    SetFull(true);
    m_store.WriteTaken({1, 40, 60}, 60, Note("taken"));
    TakeAnswers(1);
    EXPECT_EQ(m_told, Texts{"taken failed"});
    EXPECT_TRUE(OnDisk().journal.empty());
    m_scheduler.Advance(StateStore::kRetry);
    TakeAnswers(1);
    EXPECT_EQ(m_told, Texts{"taken failed"});
    SetFull(false);
    m_scheduler.Advance(StateStore::kRetry);
    TakeAnswers(1);
    EXPECT_EQ(m_told, (Texts{"taken failed", "taken"}));
    EXPECT_EQ(OnDisk().volumes.at(1), 60U);
    EXPECT_EQ(m_scheduler.Waiting(), 0U);
}

TEST_F(StateStoreTest, ANewerWriteOfTheSameThingTakesTheFailedOnesPlace) {
    SetFull(true);
    m_store.WriteTaken({1, 40, 60}, 60, Note("taken"));
    TakeAnswers(1);
    SetFull(false);
    m_store.WriteFree(1, 35, Note("free"));
    TakeAnswers(1);
    m_scheduler.Advance(StateStore::kRetry);
    m_store.WhenTried([this] { m_told.emplace_back("tried"); });
    TakeAnswers(1);
    EXPECT_EQ(m_told, (Texts{"taken failed", "free", "tried"}));
    EXPECT_TRUE(OnDisk().journal.empty());
    EXPECT_EQ(OnDisk().volumes.at(1), 35U);
}

TEST_F(StateStoreTest, TheHistoryIsWrittenAndRead) {
    m_store.AddHistory({0, "s", "e", 7, "Dinner", {1}, {5}, "f", "ended"});
    TakeAnswers(1);
    m_store.ReadHistory(10, [this](const std::vector<HistoryEntry>& entries, const std::string& error) {
        for (const HistoryEntry& entry : entries)
            m_told.push_back(entry.name + error);
    });
    TakeAnswers(1);
    EXPECT_EQ(m_told, Texts{"Dinner"});
}

} // namespace

} // namespace controller
