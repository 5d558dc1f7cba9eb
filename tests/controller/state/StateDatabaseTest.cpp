#include "controller/state/StateDatabase.h"

#include "controller/state/DataFolder.h"
#include "tests/controller/support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace controller {

namespace {

using Texts = std::vector<std::string>;

class StateDatabaseTest : public testing::Test {
protected:
    [[nodiscard]] std::filesystem::path File() const { return m_folder.Path() / StateDatabase::kFileName; }

    /// A database with something in every table.
    void Fill() const {
        StateDatabase database(m_folder.Path());
        database.WriteAgentState("<announcements/>");
        database.WriteAgentState("<announcements><a/></announcements>");
        database.WriteJournal({1, 40, 60});
        database.WriteJournal({2, 30, std::nullopt});
        database.WriteVolume(1, 60);
        database.WriteVariable(9, 4, "21 °C");
        database.AddHistory(
            {0, "2025-01-31T18:30:05Z", "2025-01-31T18:30:15Z", 7, "Dinner", {1, 2}, {5}, "g.wav", "ended"});
    }

    /// A state that is too long to be written whole each time.
    static std::string LongState(const std::string& middle) {
        return "<announcements><a>" + std::string(50000, 'x') + "</a><m>" + middle + "</m><b>" +
               std::string(50000, 'y') + "</b></announcements>";
    }

    [[nodiscard]] std::int64_t Number(const std::string& query) const {
        Sqlite database(File().string(), Sqlite::Mode::ReadWriteCreate);
        SqliteStatement statement(database, query);
        return statement.Step() ? statement.Number(0) : -1;
    }

    TemporaryFolder m_folder;
};

TEST_F(StateDatabaseTest, AFreshOneHoldsNothing) {
    StateDatabase database(m_folder.Path());
    const StoredState state = database.Read();
    EXPECT_EQ(state.agentState, "");
    EXPECT_TRUE(state.journal.empty());
    EXPECT_TRUE(state.volumes.empty());
    EXPECT_TRUE(state.variables.empty());
    EXPECT_TRUE(database.ReadHistory(10).empty());
}

TEST_F(StateDatabaseTest, EverythingIsThereAgainWhenItIsOpenedAgain) {
    Fill();
    StateDatabase database(m_folder.Path());
    const StoredState state = database.Read();
    EXPECT_EQ(state.agentState, "<announcements><a/></announcements>");
    ASSERT_EQ(state.journal.size(), 2U);
    EXPECT_EQ(state.journal[0].room, 1U);
    EXPECT_EQ(state.journal[0].volumeBefore, 40U);
    EXPECT_EQ(state.journal[0].volumeSet, 60U);
    EXPECT_EQ(state.journal[1].volumeSet, std::nullopt);
    EXPECT_EQ(state.volumes, (std::map<std::uint32_t, unsigned>{{1, 60}}));
    EXPECT_EQ(state.variables.at({9, 4}), "21 °C");
    const auto history = database.ReadHistory(10);
    ASSERT_EQ(history.size(), 1U);
    EXPECT_EQ(history[0].id, 1);
    EXPECT_EQ(history[0].startedAt, "2025-01-31T18:30:05Z");
    EXPECT_EQ(history[0].endedAt, "2025-01-31T18:30:15Z");
    EXPECT_EQ(history[0].announcement, 7U);
    EXPECT_EQ(history[0].name, "Dinner");
    EXPECT_EQ(history[0].rooms, (std::vector<std::uint32_t>{1, 2}));
    EXPECT_EQ(history[0].navigators, std::vector<std::uint32_t>{5});
    EXPECT_EQ(history[0].file, "g.wav");
    EXPECT_EQ(history[0].outcome, "ended");
}

TEST_F(StateDatabaseTest, WritesStandTogetherOrNotAtAll) {
    StateDatabase database(m_folder.Path());
    EXPECT_THROW(database.Together([](StateDatabase& together) {
        together.WriteVolume(1, 50);
        throw std::runtime_error("in the middle");
    }),
                 std::runtime_error);
    EXPECT_TRUE(database.Read().volumes.empty());
    database.Together([](StateDatabase& together) {
        together.WriteJournal({1, 40, std::nullopt});
        together.WriteVolume(1, 50);
    });
    database.Together([](StateDatabase& together) {
        together.StrikeJournal(1);
        together.WriteVolume(1, 40);
    });
    EXPECT_TRUE(database.Read().journal.empty());
    EXPECT_EQ(database.Read().volumes.at(1), 40U);
}

TEST_F(StateDatabaseTest, OfALongStateOnlyWhatDiffersIsWritten) {
    {
        StateDatabase database(m_folder.Path());
        for (const char* middle : {"a", "ab", "", "ü", "ö"})
            database.WriteAgentState(LongState(middle));
    }
    EXPECT_EQ(Number("SELECT count(*) FROM agent_state"), 1);
    EXPECT_EQ(Number("SELECT sum(length(CAST(added AS BLOB))) FROM agent_state_edit"), 4);
    EXPECT_EQ(StateDatabase(m_folder.Path()).Read().agentState, LongState("ö"));
    {
        StateDatabase database(m_folder.Path());
        (void)database.Read();
        database.WriteAgentState(LongState("after a start"));
    }
    EXPECT_EQ(Number("SELECT count(*) FROM agent_state"), 1);
    EXPECT_EQ(StateDatabase(m_folder.Path()).Read().agentState, LongState("after a start"));
}

TEST_F(StateDatabaseTest, BehindManyEditsTheStateIsWrittenWholeAgain) {
    StateDatabase database(m_folder.Path());
    database.Together([](StateDatabase& together) {
        for (int count = 0; count < 300; ++count)
            together.WriteAgentState(LongState(std::to_string(count)));
    });
    EXPECT_EQ(Number("SELECT count(*) FROM agent_state"), 2);
    EXPECT_EQ(Number("SELECT count(*) FROM agent_state_edit"), 42);
    EXPECT_EQ(database.Read().agentState, LongState("299"));
    database.WriteAgentState("<announcements/>");
    EXPECT_EQ(database.Read().agentState, "<announcements/>");
    database.WriteAgentState("<announcements><a/></announcements>");
    EXPECT_EQ(database.Read().agentState, "<announcements><a/></announcements>");
}

TEST_F(StateDatabaseTest, AnEditThatWasTakenBackIsNotBuiltUpon) {
    StateDatabase database(m_folder.Path());
    database.WriteAgentState(LongState("a"));
    EXPECT_THROW(database.Together([](StateDatabase& together) {
        together.WriteAgentState(LongState("something longer"));
        throw std::runtime_error("the disk is full");
    }),
                 std::runtime_error);
    database.WriteAgentState(LongState("ab"));
    EXPECT_EQ(database.Read().agentState, LongState("ab"));
}

TEST_F(StateDatabaseTest, ADatabaseOfTheFormerVersionIsTakenOver) {
    Fill();
    {
        Sqlite former(File().string(), Sqlite::Mode::ReadWriteCreate);
        former.Execute("DROP TABLE agent_state_edit; PRAGMA user_version=1");
    }
    StateDatabase database(m_folder.Path());
    EXPECT_EQ(database.Read().agentState, "<announcements><a/></announcements>");
    database.WriteAgentState(LongState("a"));
    database.WriteAgentState(LongState("b"));
    EXPECT_EQ(database.Read().agentState, LongState("b"));
    EXPECT_EQ(Number("PRAGMA user_version"), 2);
}

TEST_F(StateDatabaseTest, RecoveredALongStateIsTheNewestThatIsWhole) {
    const auto recovered = [this](const std::string& damage) {
        {
            StateDatabase database(m_folder.Path());
            for (const char* middle : {"a", "b", "c"})
                database.WriteAgentState(LongState(middle));
        }
        {
            Sqlite damaged(File().string(), Sqlite::Mode::ReadWriteCreate);
            damaged.Execute(damage + "CREATE TABLE torn(x); PRAGMA writable_schema=ON; "
                                     "UPDATE sqlite_master SET rootpage=9999 WHERE name='torn';");
        }
        (void)StateDatabase::Recover(m_folder.Path());
        std::string state = StateDatabase(m_folder.Path()).Read().agentState;
        std::filesystem::remove(File());
        return state;
    };
    EXPECT_EQ(recovered(""), LongState("c"));
    EXPECT_EQ(recovered("UPDATE agent_state_edit SET added='<' WHERE id=2;"), LongState("a"));
    EXPECT_EQ(recovered("DELETE FROM agent_state_edit WHERE id=1;"), LongState("a"));
}

TEST_F(StateDatabaseTest, TheHistoryIsGivenNewestFirst) {
    StateDatabase database(m_folder.Path());
    for (const char* name : {"a", "b", "c"})
        database.AddHistory({0, "", "", 1, name, {}, {}, "", ""});
    const auto history = database.ReadHistory(2);
    ASSERT_EQ(history.size(), 2U);
    EXPECT_EQ(history[0].name + history[1].name, "cb");
}

TEST_F(StateDatabaseTest, TheHistoryGoesOnBeforeAnEntry) {
    StateDatabase database(m_folder.Path());
    for (const char* name : {"a", "b", "c", "d"})
        database.AddHistory({0, "", "", 1, name, {}, {}, "", ""});
    const auto before = database.ReadHistory(2, database.ReadHistory(1).at(0).id);
    ASSERT_EQ(before.size(), 2U);
    EXPECT_EQ(before[0].name + before[1].name, "cb");
    EXPECT_TRUE(database.ReadHistory(2, 0).empty());
}

TEST_F(StateDatabaseTest, ADamagedOneStopsTheStartAndSaysWhatToDo) {
    m_folder.Write(StateDatabase::kFileName, std::string(8192, 'x'));
    try {
        const StateDatabase database(m_folder.Path());
        FAIL();
    } catch (const UnusableDatabase& error) {
        EXPECT_NE(std::string(error.what()).find(File().string()), std::string::npos);
        EXPECT_NE(std::string(error.what()).find("--recover"), std::string::npos);
    }
}

TEST_F(StateDatabaseTest, AnotherProgramsDatabaseIsNotTouched) {
    {
        Sqlite other(File().string(), Sqlite::Mode::ReadWriteCreate);
        other.Execute("CREATE TABLE mine(x)");
    }
    EXPECT_THROW(const StateDatabase database(m_folder.Path()), UnusableDatabase);
}

TEST_F(StateDatabaseTest, ALaterVersionsDatabaseIsNotTouched) {
    Fill();
    {
        Sqlite later(File().string(), Sqlite::Mode::ReadWriteCreate);
        later.Execute("PRAGMA user_version=99");
    }
    EXPECT_THROW(const StateDatabase database(m_folder.Path()), UnusableDatabase);
}

TEST_F(StateDatabaseTest, RecoveredItKeepsWhatCanStillBeRead) {
    Fill();
    // The newest state is torn in its middle, the database itself is damaged where nothing of value stands.
    {
        Sqlite damaged(File().string(), Sqlite::Mode::ReadWriteCreate);
        damaged.Execute(
            "UPDATE agent_state SET xml='<announcements><a>' WHERE id=2; CREATE TABLE torn(x); "
            "PRAGMA writable_schema=ON; UPDATE sqlite_master SET rootpage=9999 WHERE name='torn';");
    }
    ASSERT_THROW(const StateDatabase database(m_folder.Path()), UnusableDatabase);
    const std::string before = TemporaryFolder::Read(File());
    const Texts lines = StateDatabase::Recover(m_folder.Path());
    ASSERT_FALSE(lines.empty());
    const std::string aside = lines[0].substr(lines[0].find('/'));
    EXPECT_EQ(TemporaryFolder::Read(aside.substr(0, aside.size() - 1)), before);
    const StoredState state = StateDatabase(m_folder.Path()).Read();
    EXPECT_EQ(state.agentState, "<announcements/>");
    EXPECT_EQ(state.journal.size(), 2U);
    EXPECT_EQ(state.volumes.at(1), 60U);
    EXPECT_EQ(state.variables.at({9, 4}), "21 °C");
    EXPECT_EQ(StateDatabase(m_folder.Path()).ReadHistory(5).size(), 1U);
}

TEST_F(StateDatabaseTest, RecoveredFromNothingReadableItStartsEmpty) {
    m_folder.Write(StateDatabase::kFileName, std::string(8192, 'x'));
    EXPECT_EQ(StateDatabase::Recover(m_folder.Path()).size(), 3U);
    EXPECT_EQ(StateDatabase(m_folder.Path()).Read().agentState, "");
}

TEST_F(StateDatabaseTest, ASoundOneIsNotRecovered) {
    EXPECT_TRUE(StateDatabase::Recover(m_folder.Path()).empty());
    Fill();
    EXPECT_TRUE(StateDatabase::Recover(m_folder.Path()).empty());
    EXPECT_EQ(StateDatabase(m_folder.Path()).Read().volumes.size(), 1U);
}

TEST(DataFolderTest, IsMadeAndBelongsToOneController) {
    const TemporaryFolder folder;
    const auto path = folder.Path() / "a" / "b";
    {
        const DataFolder first(path);
        EXPECT_EQ(first.Path(), path);
        EXPECT_TRUE(std::filesystem::is_directory(path));
        try {
            const DataFolder second(path);
            FAIL();
        } catch (const std::runtime_error& error) {
            EXPECT_NE(std::string(error.what()).find("in use by another controller (process "),
                      std::string::npos);
        }
    }
    EXPECT_NO_THROW(const DataFolder again(path));
}

TEST(DataFolderTest, AFolderThatCannotBeMadeIsToldByName) {
    const TemporaryFolder folder;
    const auto file = folder.Write("file", "");
    EXPECT_THROW(const DataFolder data(file / "data"), std::runtime_error);
    EXPECT_THROW(const DataFolder data(file), std::runtime_error);
}

} // namespace

} // namespace controller
