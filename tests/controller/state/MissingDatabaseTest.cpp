#include "controller/state/DataFolder.h"
#include "controller/state/StateDatabase.h"
#include "tests/controller/state/KilledInMidWrite.h"
#include "tests/controller/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace controller {

namespace {

namespace fs = std::filesystem;

using Texts = std::vector<std::string>;

/// A database that is not there, holds nothing, lacks a part, or is new.
class MissingDatabaseTest : public testing::Test {
protected:
    [[nodiscard]] fs::path File(const std::string& companion = "") const {
        return m_folder.Path() / (StateDatabase::kFileName + companion);
    }

    static AnnouncementRow Row(int id) {
        return {id, "<announcement><id>" + std::to_string(id) + "</id></announcement>", ""};
    }

    void Fill() const {
        StateDatabase database(m_folder.Path());
        database.ReplaceAnnouncements({Row(1), Row(2)});
        database.WriteVolume(1, 60);
    }

    /// Leaves database and write-ahead log as a loss of power does.
    void LeaveWithLog() const {
        fs::path kept = m_folder.Path() / "kept";
        StateDatabase database(m_folder.Path());
        database.ReplaceAnnouncements({Row(1), Row(2), Row(3)});
        fs::copy_file(File("-wal"), kept);
        m_log = kept;
    }
    void PutLogBack() const { fs::rename(m_log, File("-wal")); }

    [[nodiscard]] std::string Refusal() const {
        try {
            (void)StateDatabase(m_folder.Path()).Read();
        } catch (const DamagedDatabase& error) {
            return error.what();
        }
        return "";
    }

    [[nodiscard]] std::size_t Count() const {
        return StateDatabase(m_folder.Path()).Read().announcements.size();
    }

    static unsigned ModeOf(const fs::path& file) {
        struct stat status {};
        EXPECT_EQ(::stat(file.c_str(), &status), 0) << file;
        return status.st_mode & 07777U;
    }

    /// As a start without an end before it leaves them.
    void LeaveWithEveryPageInTheLog() const {
        const TemporaryFolder folder;
        StateDatabase database(folder.Path());
        Sqlite other((folder.Path() / StateDatabase::kFileName).string());
        database.Together([](StateDatabase& together) { together.ReplaceAnnouncements({Row(1), Row(2)}); });
        other.Execute("PRAGMA wal_checkpoint(FULL); PRAGMA wal_autocheckpoint=0; VACUUM");
        fs::copy(folder.Path(), m_folder.Path(),
                 fs::copy_options::overwrite_existing | fs::copy_options::recursive);
    }

    TemporaryFolder m_folder;
    mutable fs::path m_log;
};

TEST_F(MissingDatabaseTest, WhereThereWasOneItIsNoFreshStart) {
    Fill();
    fs::remove(File());
    EXPECT_NE(Refusal().find("it is missing, and controller.db.made says that there was one"),
              std::string::npos);
    EXPECT_NE(Refusal().find("--recover"), std::string::npos);
    EXPECT_FALSE(fs::exists(File()));
    EXPECT_EQ(StateDatabase::Recover(m_folder.Path()).front(), "There was no database any more.");
    EXPECT_EQ(Count(), 0U);
}

TEST_F(MissingDatabaseTest, BesideAWriteAheadLogItIsNoFreshStartAndTheLogIsKept) {
    LeaveWithLog();
    fs::remove(File());
    fs::remove(m_folder.Path() / StateDatabase::kMadeName);
    PutLogBack();
    const std::string log = TemporaryFolder::Read(File("-wal"));
    EXPECT_NE(Refusal().find("it is missing, and its write-ahead log is there"), std::string::npos);
    EXPECT_TRUE(TemporaryFolder::Read(File("-wal")) == log);
}

TEST_F(MissingDatabaseTest, AnEmptyOneIsDamagedAndTheLogBesideItIsKept) {
    LeaveWithLog();
    fs::resize_file(File(), 0);
    fs::remove(m_folder.Path() / StateDatabase::kMadeName);
    EXPECT_NE(Refusal().find("(it is empty)"), std::string::npos);
    PutLogBack();
    const std::string log = TemporaryFolder::Read(File("-wal"));
    EXPECT_NE(Refusal().find("(it is empty)"), std::string::npos);
    EXPECT_TRUE(TemporaryFolder::Read(File("-wal")) == log);
}

TEST_F(MissingDatabaseTest, WhatTheLogHoldsIsReadWithoutTheDatabase) {
    for (const bool isEmpty : {false, true}) {
        LeaveWithEveryPageInTheLog();
        if (isEmpty)
            fs::resize_file(File(), 0);
        else
            fs::remove(File());
        const Texts lines = StateDatabase::Recover(m_folder.Path());
        ASSERT_EQ(lines.size(), 3U);
        EXPECT_EQ(lines[1], "Read: 2 announcements.");
        EXPECT_EQ(Count(), 2U);
    }
}

TEST_F(MissingDatabaseTest, AMissingTableIsDamageOfWhichTheRestIsTakenOver) {
    const std::pair<const char*, std::size_t> tables[] = {
        {"kept", 2},    {"room_journal", 2}, {"room_volume", 2}, {"variable_value", 2},
        {"history", 2}, {"borrowed", 2},     {"announcement", 0}};
    for (const auto& [table, left] : tables) {
        const TemporaryFolder folder;
        {
            StateDatabase database(folder.Path());
            database.ReplaceAnnouncements({Row(1), Row(2)});
        }
        Sqlite((folder.Path() / StateDatabase::kFileName).string())
            .Execute("DROP TABLE " + std::string(table));
        try {
            (void)StateDatabase(folder.Path());
            ADD_FAILURE() << table;
        } catch (const DamagedDatabase& error) {
            EXPECT_NE(std::string(error.what()).find("the table " + std::string(table) + " is missing"),
                      std::string::npos);
        }
        EXPECT_FALSE(StateDatabase::Recover(folder.Path()).empty());
        EXPECT_EQ(StateDatabase(folder.Path()).Read().announcements.size(), left) << table;
    }
}

TEST_F(MissingDatabaseTest, ATableOfOtherColumnsIsDamage) {
    Fill();
    Sqlite(File().string()).Execute("ALTER TABLE announcement RENAME COLUMN house TO home");
    EXPECT_NE(Refusal().find("is damaged"), std::string::npos);
}

TEST_F(MissingDatabaseTest, OneWithoutAnyTableIsDamage) {
    Sqlite(File().string()).Execute("CREATE TABLE any(x); DROP TABLE any");
    EXPECT_NE(Refusal().find("(it holds nothing)"), std::string::npos);
}

TEST_F(MissingDatabaseTest, KilledAtAnyWriteOfTheFirstStartTheNextIsAFreshOne) {
    unsigned kills = 0;
    for (std::size_t bytes = 0; KilledInMidWrite(bytes, [this] { (void)StateDatabase(m_folder.Path()); });
         bytes += 2048) {
        ++kills;
        EXPECT_FALSE(StateDatabase(m_folder.Path()).Read().areAnnouncementsKept) << bytes;
        for (const auto& entry : fs::directory_iterator(m_folder.Path()))
            fs::remove(entry);
    }
    EXPECT_GT(kills, 5U);
    EXPECT_EQ(Count(), 0U);
}

TEST_F(MissingDatabaseTest, NobodyElseMayReadItWhateverTheUmask) {
    const mode_t before = ::umask(0);
    const fs::path data = m_folder.Path() / "house" / "data" / "";
    {
        const DataFolder folder(data);
        StateDatabase database(folder.Path());
        database.WriteVolume(1, 60);
        EXPECT_EQ(ModeOf(data), 0700U);
        for (const auto& entry : fs::directory_iterator(data))
            EXPECT_EQ(ModeOf(entry), 0600U) << entry;
    }
    (void)::umask(before);
    ASSERT_EQ(::chmod((data / StateDatabase::kFileName).c_str(), 0644), 0);
    (void)StateDatabase(data);
    EXPECT_EQ(ModeOf(data / StateDatabase::kFileName), 0600U);
}

} // namespace

} // namespace controller
