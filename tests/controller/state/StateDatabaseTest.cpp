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
        database.ReplaceAnnouncements({{1, Xml(1, "One"), ""}, {2, Xml(9, "Two"), kHouse}});
        database.WriteJournal({1, 40, 60});
        database.WriteJournal({2, 30, std::nullopt});
        database.WriteBorrowed({"pulse", "7 music", "volume", "65536", "36855"});
        database.WriteVolume(1, 60);
        database.WriteVariable(9, 4, "21 °C");
        database.WriteSpokenSound({"supper.wav", "Supper, {Outside} degrees", "Anna", 90, "gong"});
        database.AddHistory(
            {0, "2025-01-31T18:30:05Z", "2025-01-31T18:30:15Z", 7, "Dinner", {1, 2}, {5}, "g.wav", "ended"});
    }

    static std::string Xml(int id, const std::string& name) {
        return "<announcement><id>" + std::to_string(id) + "</id><name>" + name + "</name></announcement>";
    }

    void Execute(const std::string& statements) const { Sqlite(File().string()).Execute(statements); }

    [[nodiscard]] std::int64_t Number(const std::string& query) const { return NumberIn(File(), query); }
    [[nodiscard]] static std::int64_t NumberIn(const std::filesystem::path& file, const std::string& query) {
        Sqlite database(file.string());
        SqliteStatement statement(database, query);
        return statement.Step() ? statement.Number(0) : -1;
    }

    /// What the announcements are, as "key xml house".
    [[nodiscard]] Texts Announcements() const {
        Texts texts;
        for (const AnnouncementRow& row : StateDatabase(m_folder.Path()).Read().announcements)
            texts.push_back(std::to_string(row.key) + " " + row.xml + row.house);
        return texts;
    }

    /// Why the database cannot be used.
    template <class Error>
    [[nodiscard]] std::string Refusal() const {
        try {
            (void)StateDatabase(m_folder.Path()).Read();
        } catch (const Error& error) {
            return error.what();
        }
        return "";
    }

    static bool Has(const std::string& text, const std::string& part) {
        return text.find(part) != std::string::npos;
    }

    static constexpr const char* kHouse = "<house><tag>kitchen</tag></house>";

    TemporaryFolder m_folder;
};

TEST_F(StateDatabaseTest, AFreshOneHoldsNothing) {
    StateDatabase database(m_folder.Path());
    const StoredState state = database.Read();
    EXPECT_TRUE(state.announcements.empty());
    EXPECT_FALSE(state.areAnnouncementsKept);
    EXPECT_TRUE(state.journal.empty());
    EXPECT_TRUE(state.borrowed.empty());
    EXPECT_TRUE(state.volumes.empty());
    EXPECT_TRUE(state.variables.empty());
    EXPECT_TRUE(state.spokenSounds.empty());
    EXPECT_TRUE(database.ReadHistory(10).empty());
}

TEST_F(StateDatabaseTest, EverythingIsThereAgainWhenItIsOpenedAgain) {
    Fill();
    StateDatabase database(m_folder.Path());
    const StoredState state = database.Read();
    EXPECT_TRUE(state.areAnnouncementsKept);
    EXPECT_EQ(Announcements(), (Texts{"1 " + Xml(1, "One"), "2 " + Xml(9, "Two") + kHouse}));
    ASSERT_EQ(state.journal.size(), 2U);
    EXPECT_EQ(state.journal[0].room, 1U);
    EXPECT_EQ(state.journal[0].volumeBefore, 40U);
    EXPECT_EQ(state.journal[0].volumeSet, 60U);
    EXPECT_EQ(state.journal[1].volumeSet, std::nullopt);
    EXPECT_EQ(state.borrowed, (BorrowedRows{{"pulse", "7 music", "volume", "65536", "36855"}}));
    EXPECT_EQ(state.volumes, (std::map<std::uint32_t, unsigned>{{1, 60}}));
    EXPECT_EQ(state.variables.at({9, 4}), "21 °C");
    EXPECT_EQ(state.spokenSounds,
              (std::vector<SpokenSoundRow>{{"supper.wav", "Supper, {Outside} degrees", "Anna", 90, "gong"}}));
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

TEST_F(StateDatabaseTest, WhatIsBorrowedIsReplacedAndTakenAwayByItsThingAndProperty) {
    Fill();
    StateDatabase database(m_folder.Path());
    database.WriteBorrowed({"pulse", "7 music", "volume", "60000", "33742"});
    database.WriteBorrowed({"pulse", "7 music", "state", "Playing", "Paused"});
    const BorrowedRows both{{"pulse", "7 music", "state", "Playing", "Paused"},
                            {"pulse", "7 music", "volume", "60000", "33742"}};
    EXPECT_EQ(database.Read().borrowed, both);
    database.WriteBorrowed({"pulse", "7 music", "state", "", ""});
    EXPECT_EQ(database.Read().borrowed, (BorrowedRows{both[1]}));
}

TEST_F(StateDatabaseTest, AnAnnouncementIsWrittenAndTakenAwayAlone) {
    Fill();
    {
        StateDatabase database(m_folder.Path());
        database.WriteAnnouncement({1, Xml(1, "Other"), ""});
        database.WriteAnnouncement({2, "", ""});
        database.WriteAnnouncement({4294967296, Xml(7, "Behind all ids"), ""});
    }
    EXPECT_EQ(Announcements(), (Texts{"1 " + Xml(1, "Other"), "4294967296 " + Xml(7, "Behind all ids")}));
    StateDatabase(m_folder.Path()).ReplaceAnnouncements({});
    EXPECT_TRUE(Announcements().empty());
    EXPECT_TRUE(StateDatabase(m_folder.Path()).Read().areAnnouncementsKept);
}

TEST_F(StateDatabaseTest, HowLoudASoundIsStandsBesideWhatItIsMadeOf) {
    Fill();
    {
        StateDatabase database(m_folder.Path());
        database.WriteSoundLevel({"supper.wav", "100-5", -1830, -250, false});
        database.WriteSoundLevel({"supper.wav", "200-7", -2000, -300, true});
        database.WriteSpokenSound({"supper.wav", "", "", 0, ""});
    }
    const StoredState state = StateDatabase(m_folder.Path()).Read();
    EXPECT_TRUE(state.spokenSounds.empty());
    ASSERT_EQ(state.soundLevels.size(), 1U);
    EXPECT_EQ(state.soundLevels[0].name, "supper.wav");
    EXPECT_EQ(state.soundLevels[0].file, "200-7");
    EXPECT_EQ(state.soundLevels[0].lufs, -2000);
    EXPECT_EQ(state.soundLevels[0].truePeak, -300);
    EXPECT_TRUE(state.soundLevels[0].isAsItIs);
}

TEST_F(StateDatabaseTest, ASoundIsToBeHeardOnceUntilSomebodySaysOtherwise) {
    StateDatabase database(m_folder.Path());
    database.WritePassingSound("recording.wav", true);
    database.WriteSoundLevel({"recording.wav", "100-5", -1830, -250, false});
    EXPECT_EQ(database.Read().passingSounds, std::vector<std::string>{"recording.wav"});
    EXPECT_EQ(database.Read().soundLevels.size(), 1U);
    database.WritePassingSound("recording.wav", false);
    EXPECT_TRUE(database.Read().passingSounds.empty());
    EXPECT_EQ(database.Read().soundLevels.size(), 1U);
}

TEST_F(StateDatabaseTest, OfASoundThatIsRemovedNothingIsLeft) {
    StateDatabase database(m_folder.Path());
    for (const char* name : {"gong.wav", "supper.wav"}) {
        database.WriteSoundLevel({name, "100-5", -1830, -250, true});
        database.WriteSpokenSound({name, "Supper", "", 100, ""});
    }
    database.RemoveSound("supper.wav");
    const StoredState state = database.Read();
    EXPECT_EQ(state.soundLevels, (std::vector<SoundLevelRow>{{"gong.wav", "100-5", -1830, -250, true}}));
    EXPECT_EQ(state.spokenSounds, (std::vector<SpokenSoundRow>{{"gong.wav", "Supper", "", 100, ""}}));
}

TEST_F(StateDatabaseTest, ASpokenSoundIsChangedAndTakenAwayAlone) {
    Fill();
    StateDatabase database(m_folder.Path());
    database.WriteSpokenSound({"post.wav", "The post", "", 100, ""});
    database.WriteSpokenSound({"supper.wav", "Later", "", 100, ""});
    EXPECT_EQ(database.Read().spokenSounds,
              (std::vector<SpokenSoundRow>{{"post.wav", "The post", "", 100, ""},
                                           {"supper.wav", "Later", "", 100, ""}}));
    database.WriteSpokenSound({"post.wav", "", "", 0, ""});
    EXPECT_EQ(database.Read().spokenSounds,
              (std::vector<SpokenSoundRow>{{"supper.wav", "Later", "", 100, ""}}));
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
        together.WriteRoom({1, 50, JournalEntry{1, 40, std::nullopt}});
    });
    database.Together([](StateDatabase& together) { together.WriteRoom({1, 40, std::nullopt}); });
    EXPECT_TRUE(database.Read().journal.empty());
    EXPECT_EQ(database.Read().volumes.at(1), 40U);
}

TEST_F(StateDatabaseTest, VolumesAndRoomsThatCannotBeAreBroughtWithinBounds) {
    StateDatabase database(m_folder.Path());
    Sqlite((m_folder.Path() / StateDatabase::kFileName).string())
        .Execute("INSERT INTO room_journal VALUES(1, 5000, 90), (2, -5, 4294967376), (3, 40, -1), "
                 "(4294967297, 100, 100), (-1, 100, 100);"
                 "INSERT INTO room_volume VALUES(1, 5000), (2, -1), (4294967298, 100);");
    const StoredState state = database.Read();
    ASSERT_EQ(state.journal.size(), 3U);
    EXPECT_EQ(state.journal[0].volumeBefore, 100U);
    EXPECT_EQ(state.journal[0].volumeSet, 90U);
    EXPECT_EQ(state.journal[1].volumeBefore, 0U);
    EXPECT_EQ(state.journal[1].volumeSet, 100U);
    EXPECT_EQ(state.journal[2].volumeSet, 0U);
    EXPECT_EQ(state.volumes, (std::map<std::uint32_t, unsigned>{{1, 100}, {2, 0}}));
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
    EXPECT_TRUE(Has(Refusal<DamagedDatabase>(), File().string()));
    EXPECT_TRUE(Has(Refusal<DamagedDatabase>(), "--recover"));
}

TEST_F(StateDatabaseTest, AnAnnouncementThatIsNotAsItWasWrittenStopsTheStartAndIsNamed) {
    for (const char* damage : {"UPDATE announcement SET xml = replace(xml, 'name>O', 'name>N') WHERE key = 1",
                               "UPDATE announcement SET house = '<house/>' WHERE key = 1",
                               "UPDATE announcement SET checksum = checksum + 1 WHERE key = 1"}) {
        Fill();
        Execute(damage);
        EXPECT_TRUE(Has(Refusal<DamagedDatabase>(), "announcement 1 (\"")) << damage;
    }
    Fill();
    Execute("UPDATE announcement SET key = 3 WHERE key = 2");
    EXPECT_TRUE(Has(Refusal<DamagedDatabase>(), "announcement 3 (\"Two\")"));
}

TEST_F(StateDatabaseTest, AnotherProgramsDatabaseIsNotTouched) {
    Execute("CREATE TABLE mine(x)");
    EXPECT_TRUE(Has(Refusal<UnusableDatabase>(), "another program's"));
    EXPECT_THROW((void)StateDatabase::Recover(m_folder.Path()), UnusableDatabase);
    EXPECT_EQ(Number("SELECT count(*) FROM mine"), 0);
}

TEST_F(StateDatabaseTest, ALaterVersionsDatabaseIsNotTouchedNorTakenForADamagedOne) {
    Fill();
    Execute("PRAGMA user_version=99; UPDATE announcement SET checksum = 0");
    EXPECT_TRUE(Has(Refusal<UnusableDatabase>(), "its format is 99, this program's is 4"));
    EXPECT_THROW((void)StateDatabase::Recover(m_folder.Path()), UnusableDatabase);
    EXPECT_EQ(Number("SELECT count(*) FROM announcement"), 2);
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
