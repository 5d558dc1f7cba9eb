#include "controller/state/StateDatabase.h"
#include "controller/state/StateText.h"
#include "tests/controller/state/KilledInMidWrite.h"
#include "tests/controller/support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace controller {

namespace {

/// An element as the agent writes it.
std::string Element(int id, const std::string& name, const std::string& text) {
    return "<announcement><id>" + std::to_string(id) + "</id><name>" + name +
           "</name><audio><file>doorbell</file><delay>0</delay></audio><video><file/><text>" + text +
           "</text><delay>0</delay><timeout>500</timeout><displayID>0</displayID><variableID>0</variableID>"
           "<variableName/><OKButton>true</OKButton></video><rooms><room><id>1</id><volume>60</volume></room>"
           "</rooms><navigators><navigator><id>11</id><room_id>1</room_id><onscreen>true</onscreen></"
           "navigator>"
           "</navigators></announcement>";
}

/// A database that the former version of this program has left when it was killed while it played: its second
/// announcement carries another id than it was kept under, and its text is long, with changes behind it.
class FormerDatabaseTest : public testing::Test {
protected:
    FormerDatabaseTest() { Write(); }

    void Write() const {
        std::filesystem::remove(File());
        Sqlite(File().string()).Execute(TemporaryFolder::Read(FORMER_DATABASE));
    }

    [[nodiscard]] std::filesystem::path File() const { return m_folder.Path() / StateDatabase::kFileName; }
    [[nodiscard]] std::filesystem::path Copy(int version) const {
        return File().string() + ".schema-" + std::to_string(version);
    }
    [[nodiscard]] static std::int64_t Number(const std::filesystem::path& file, const std::string& query) {
        Sqlite database(file.string());
        SqliteStatement statement(database, query);
        return statement.Step() ? statement.Number(0) : -1;
    }

    /// What the former version's agent gave as its state.
    static std::string State() {
        return "<announcements>" + Element(1, "Supper", "Supper is ready") +
               Element(9, "Carries another id", "Hello") + Element(3, "Long", std::string(34000, 'z')) +
               Element(4, "Doorbell", std::string(34000, 'x')) + "</announcements>";
    }

    void ExpectAll() const {
        StateDatabase database(m_folder.Path());
        const StoredState state = database.Read();
        EXPECT_TRUE(state_text::ForAgent(state.announcements) == State());
        EXPECT_TRUE(state.areAnnouncementsKept);
        ASSERT_EQ(state.journal.size(), 1U);
        EXPECT_EQ(state.journal[0].volumeBefore, 40U);
        EXPECT_EQ(state.journal[0].volumeSet, 60U);
        EXPECT_EQ(state.volumes, (std::map<std::uint32_t, unsigned>{{1, 60}, {2, 55}}));
        EXPECT_EQ(state.variables.at({9, 4}), "21 °C");
        const auto history = database.ReadHistory(5);
        ASSERT_EQ(history.size(), 1U);
        EXPECT_EQ(history[0].name, "Supper");
        EXPECT_EQ(Number(File(), "PRAGMA user_version"), 4);
        EXPECT_EQ(Number(File(), "SELECT count(*) FROM sound"), 0);
        EXPECT_EQ(Number(File(), "SELECT count(*) FROM sqlite_master WHERE name LIKE 'agent_state%'"), 0);
    }

    TemporaryFolder m_folder;
};

TEST_F(FormerDatabaseTest, IsTakenOverAndACopyStaysBesideIt) {
    ExpectAll();
    EXPECT_EQ(Number(Copy(2), "PRAGMA user_version"), 2);
    EXPECT_EQ(Number(Copy(2), "SELECT count(*) FROM agent_state_edit"), 2);
    EXPECT_EQ(Number(Copy(2), "SELECT count(*) FROM agent_state"), 2);
    EXPECT_EQ(Number(Copy(2), "SELECT count(*) FROM history"), 1);
    EXPECT_FALSE(std::filesystem::exists(Copy(2).string() + ".part"));
    ExpectAll();
}

TEST_F(FormerDatabaseTest, OfVersionOneIsTakenOverAsWell) {
    Sqlite(File().string())
        .Execute("UPDATE agent_state SET xml = '<announcements><a/></announcements>'; "
                 "DROP TABLE agent_state_edit; PRAGMA user_version=1");
    const StoredState state = StateDatabase(m_folder.Path()).Read();
    EXPECT_EQ(state_text::ForAgent(state.announcements), "<announcements><a/></announcements>");
    EXPECT_EQ(state.volumes.size(), 2U);
    EXPECT_EQ(Number(Copy(1), "PRAGMA user_version"), 1);
}

TEST_F(FormerDatabaseTest, OfVersionThreeIsTakenOverAsWell) {
    (void)StateDatabase(m_folder.Path());
    Sqlite(File().string())
        .Execute("DROP TABLE sound; DROP TABLE queued; DROP TABLE borrowed; PRAGMA user_version=3");
    ExpectAll();
    EXPECT_EQ(Number(Copy(3), "PRAGMA user_version"), 3);
    EXPECT_EQ(Number(Copy(3), "SELECT count(*) FROM announcement"), 4);
    EXPECT_EQ(Number(Copy(3), "SELECT count(*) FROM sqlite_master WHERE name = 'sound'"), 0);
    StateDatabase(m_folder.Path()).WriteQueue({{4, 1, "Supper", 1500}});
    const StoredState state = StateDatabase(m_folder.Path()).Read();
    ASSERT_EQ(state.queue.size(), 1U);
    EXPECT_EQ(state.queue[0].askedAtMs, 1500);
}

TEST_F(FormerDatabaseTest, WithoutAnnouncementsItHasNeverHeldAny) {
    Sqlite(File().string()).Execute("DELETE FROM agent_state; DELETE FROM agent_state_edit");
    EXPECT_FALSE(StateDatabase(m_folder.Path()).Read().areAnnouncementsKept);
}

TEST_F(FormerDatabaseTest, KilledAtAnyWriteOfTheTakeoverNothingIsLost) {
    unsigned kills = 0;
    for (std::size_t bytes = 0; KilledInMidWrite(bytes, [this] { (void)StateDatabase(m_folder.Path()); });
         bytes += 8192) {
        ++kills;
        if (kills % 2 == 0)
            continue; // killed once more, behind what the first kill has left
        ExpectAll();
        std::filesystem::remove(Copy(2));
        Write();
    }
    EXPECT_GT(kills, 10U);
    ExpectAll();
    EXPECT_EQ(Number(Copy(2), "SELECT count(*) FROM agent_state_edit"), 2);
}

TEST_F(FormerDatabaseTest, WhoseTextIsNotWholeIsDamagedAndRecoveredAsFarAsItIs) {
    for (const char* damage :
         {"UPDATE agent_state_edit SET added='<' WHERE id=2", "DELETE FROM agent_state_edit WHERE id=1",
          "UPDATE agent_state_edit SET place=999999 WHERE id=1"}) {
        Write();
        Sqlite(File().string()).Execute(damage);
        EXPECT_THROW((void)StateDatabase(m_folder.Path()), DamagedDatabase) << damage;
        EXPECT_EQ(Number(File(), "PRAGMA user_version"), 2);
        EXPECT_FALSE(StateDatabase::Recover(m_folder.Path()).empty());
        const auto rows = StateDatabase(m_folder.Path()).Read().announcements;
        ASSERT_EQ(rows.size(), 4U) << damage;
        EXPECT_TRUE(rows[0].xml.find("<name>Dinner &amp; more</name>") != std::string::npos);
    }
}

TEST_F(FormerDatabaseTest, WhoseNewestTextIsTornIsRecoveredWithTheOneBefore) {
    Sqlite(File().string()).Execute("UPDATE agent_state SET xml='<announcements><a>' WHERE id=4");
    (void)StateDatabase::Recover(m_folder.Path());
    EXPECT_EQ(StateDatabase(m_folder.Path()).Read().announcements.size(), 3U);
    Write();
    Sqlite(File().string()).Execute("UPDATE agent_state SET xml='<other/>'; DELETE FROM agent_state_edit");
    EXPECT_THROW((void)StateDatabase(m_folder.Path()), DamagedDatabase);
    (void)StateDatabase::Recover(m_folder.Path());
    const StoredState state = StateDatabase(m_folder.Path()).Read();
    EXPECT_TRUE(state.announcements.empty());
    EXPECT_EQ(state.volumes.size(), 2U);
}

} // namespace

} // namespace controller
