#include "controller/state/StateStore.h"

#include "tests/controller/support/FakeScheduler.h"
#include "tests/controller/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <mutex>

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

    /// From now on, writes of volumes, announcements and what was played fail; or no longer.
    void SetFull(bool isFull) const {
        Sqlite database((m_folder.Path() / StateDatabase::kFileName).string());
        for (const char* table : {"room_volume", "announcement", "history"}) {
            const std::string trigger = std::string("full_") + table;
            database.Execute(isFull ? "CREATE TRIGGER " + trigger + " BEFORE INSERT ON " + table +
                                          " BEGIN SELECT RAISE(FAIL, 'full'); END"
                                    : "DROP TRIGGER " + trigger);
        }
    }

    /// What the announcements on the disk are, as "key xml".
    [[nodiscard]] Texts Announcements() const {
        Texts texts;
        for (const AnnouncementRow& row : OnDisk().announcements)
            texts.push_back(std::to_string(row.key) + " " + row.xml);
        return texts;
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
    std::mutex asking; // what whoever asks holds meanwhile does not count
    scheduler.onDropped = [&] {
        const std::lock_guard<std::mutex> lock(asking);
        left.push_back({write.use_count(), read.use_count(), tried.use_count()});
    };
    {
        StateStore store(std::make_unique<StateDatabase>(m_folder.Path()), scheduler);
        const std::lock_guard<std::mutex> lock(asking);
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
    m_store.WriteAnnouncements({{1, "<a/>", ""}}, Note("announcement"));
    m_store.WriteRooms({{1, 60, JournalEntry{1, 40, 60}}}, Note("taken"));
    m_store.WriteVariable(9, 4, "21", Note("variable"));
    EXPECT_TRUE(m_told.empty());
    TakeAnswers(3);
    EXPECT_EQ(m_told, (Texts{"announcement", "taken", "variable"}));
    EXPECT_EQ(Announcements(), Texts{"1 <a/>"});
    EXPECT_EQ(OnDisk().journal.size(), 1U);
    EXPECT_EQ(OnDisk().volumes.at(1), 60U);
    EXPECT_EQ(OnDisk().variables.at({9, 4}), "21");
    m_store.WriteRooms({{1, 40, std::nullopt}}, Note("free"));
    TakeAnswers(1);
    EXPECT_TRUE(OnDisk().journal.empty());
    EXPECT_EQ(OnDisk().volumes.at(1), 40U);
}

TEST_F(StateStoreTest, AFailedWriteIsToldOnceAndTriedAgainUntilItSucceeds) {
    SetFull(true);
    m_store.WriteRooms({{1, 60, JournalEntry{1, 40, 60}}}, Note("taken"));
    TakeAnswers(1);
    EXPECT_EQ(m_told, Texts{"taken failed"});
    EXPECT_TRUE(OnDisk().journal.empty());
    m_scheduler.Advance(StateStore::kRetry);
    TakeAnswers(1);
    SetFull(false);
    m_scheduler.Advance(StateStore::kRetry);
    TakeAnswers(1);
    EXPECT_EQ(m_told, Texts{"taken failed"});
    EXPECT_EQ(OnDisk().volumes.at(1), 60U);
    EXPECT_EQ(m_scheduler.Waiting(), 0U);
}

TEST_F(StateStoreTest, WhateverWriteFailsEveryoneIsToldOnceAndTheLastOfEachStandsOnTheDisk) {
    constexpr int kWrites = 8;
    for (int failing = 0; failing < kWrites; ++failing) {
        m_told.clear();
        for (int write = 0; write < kWrites; ++write) {
            if (write == failing)
                SetFull(true);
            const std::string number = std::to_string(write);
            m_store.WriteAnnouncements({{1 + write % 3, number, ""}, {7, number, ""}}, Note(number));
            TakeAnswers(1);
            if (write == failing)
                SetFull(false);
            // The next one finds the disk as it was, and what has failed is tried at once.
            if (write == failing + 1)
                TakeAnswers(1);
        }
        m_store.WriteAll(Note("all"));
        TakeAnswers(1);
        ASSERT_EQ(m_told.size(), kWrites + 1U);
        for (int write = 0; write < kWrites; ++write)
            EXPECT_EQ(m_told[static_cast<std::size_t>(write)],
                      std::to_string(write) + (write == failing ? " failed" : ""));
        EXPECT_EQ(m_told.back(), "all");
        EXPECT_EQ(Announcements(), (Texts{"1 6", "2 7", "3 5", "7 7"})) << failing;
        EXPECT_EQ(m_scheduler.Waiting(), 0U);
    }
}

TEST_F(StateStoreTest, TheListenerHearsTheFirstFailureAndWhenAllAnnouncementsStandOnTheDisk) {
    m_store.ListenToAnnouncements([this](const std::string& error) {
        m_told.push_back(error.empty() ? "all saved" : "not saved: " + error);
    });
    m_store.WriteVariable(9, 4, "21", Note("variable"));
    m_store.WriteAnnouncements({{1, "a", ""}}, Note("one"));
    m_store.WriteAnnouncements({{2, "a", ""}}, Note("two"));
    TakeAnswers(3);
    EXPECT_EQ(m_told, (Texts{"variable", "one", "all saved", "two"}));
    m_told.clear();
    SetFull(true);
    m_store.WriteAnnouncements({{1, "b", ""}}, Note("one"));
    TakeAnswers(1);
    m_scheduler.Advance(StateStore::kRetry);
    TakeAnswers(1);
    EXPECT_EQ(m_told, (Texts{"not saved: full", "one failed"}));
    m_store.WriteAnnouncements({{2, "", ""}}, Note("two")); // taken away, which can be done
    TakeAnswers(2);
    m_store.WriteAll(Note("everything"));
    TakeAnswers(1);
    EXPECT_EQ(m_told,
              (Texts{"not saved: full", "one failed", "two", "not saved: full", "everything failed"}));
    m_told.clear();
    SetFull(false);
    m_scheduler.Advance(StateStore::kRetry);
    TakeAnswers(1);
    EXPECT_EQ(m_told, Texts{"all saved"});
    EXPECT_EQ(Announcements(), Texts{"1 b"});
}

TEST_F(StateStoreTest, WhatWasWrittenAsOneIsTriedAgainAsOne) {
    SetFull(true);
    m_store.WriteAnnouncements({{5, "", ""}, {9, "a", ""}}, Note("moved"));
    TakeAnswers(1);
    EXPECT_TRUE(Announcements().empty());
    m_store.WriteAnnouncements({{5, "b", ""}}, Note("again"));
    TakeAnswers(1);
    SetFull(false);
    m_scheduler.Advance(StateStore::kRetry);
    TakeAnswers(1);
    EXPECT_EQ(m_told, (Texts{"moved failed", "again failed"}));
    EXPECT_EQ(Announcements(), (Texts{"5 b", "9 a"}));
}

TEST_F(StateStoreTest, OfWhatWasPlayedOnlySoMuchWaitsForTheDisk) {
    SetFull(true);
    for (std::size_t count = 0; count < StateStore::kMaxFailed + 5; ++count) {
        m_store.AddHistory({0, "s", "e", 7, "Dinner", {1}, {5}, "f", "ended"});
        TakeAnswers(1);
    }
    SetFull(false);
    m_store.WriteAll(Note("all"));
    TakeAnswers(1);
    EXPECT_EQ(m_told, Texts{"all"});
    EXPECT_EQ(StateDatabase(m_folder.Path()).ReadHistory(5000).size(), StateStore::kMaxFailed);
}

TEST_F(StateStoreTest, RoomsThatAreWrittenTogetherAreOneWriteAndOneAnswer) {
    SetFull(true);
    m_store.WriteRooms({{1, 60, JournalEntry{1, 40, 60}}, {2, 30, JournalEntry{2, 30, std::nullopt}}},
                       Note("taken"));
    TakeAnswers(1);
    EXPECT_EQ(m_told, Texts{"taken failed"});
    EXPECT_TRUE(OnDisk().journal.empty()) << "all or none";
    SetFull(false);
    m_scheduler.Advance(StateStore::kRetry);
    TakeAnswers(1);
    EXPECT_FALSE(m_scheduler.HasPosted());
    EXPECT_EQ(OnDisk().journal.size(), 2U);
    EXPECT_EQ(OnDisk().volumes, (std::map<std::uint32_t, unsigned>{{1, 60}, {2, 30}}));
}

TEST_F(StateStoreTest, ANewerWriteOfTheSameThingTakesTheFailedOnesPlace) {
    SetFull(true);
    m_store.WriteRooms({{1, 60, JournalEntry{1, 40, 60}}}, Note("taken"));
    TakeAnswers(1);
    SetFull(false);
    m_store.WriteRooms({{1, 35, std::nullopt}}, Note("free"));
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
