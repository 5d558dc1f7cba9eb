#include "controller/state/StateDatabase.h"
#include "controller/state/StateText.h"
#include "tests/controller/state/KilledInMidWrite.h"
#include "tests/controller/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

namespace controller {

namespace {

using Texts = std::vector<std::string>;

constexpr int kCount = 60;

class RecoverDatabaseTest : public testing::Test {
protected:
    [[nodiscard]] std::filesystem::path File() const { return m_folder.Path() / StateDatabase::kFileName; }
    [[nodiscard]] std::filesystem::path Recovered() const {
        return m_folder.Path() / StateDatabase::kRecoveredName;
    }

    static AnnouncementRow Row(int id) {
        return {id,
                "<announcement><id>" + std::to_string(id) + "</id><name>Number " + std::to_string(id) +
                    "</name><text>" + std::string(600, 'x') + "</text></announcement>",
                id == 1 ? "<house><tag>kitchen</tag></house>" : ""};
    }

    void Fill() const {
        std::filesystem::remove(File());
        std::filesystem::remove(m_folder.Path() / StateDatabase::kMadeName);
        StateDatabase database(m_folder.Path());
        database.Together([](StateDatabase& together) {
            for (int id = 1; id <= kCount; ++id)
                together.WriteAnnouncement(Row(id));
            together.KeepAnnouncements();
        });
        database.WriteJournal({1, 40, 60});
        database.WriteVolume(1, 60);
        database.WriteVariable(9, 4, "21 °C");
        database.WriteBorrowed({"pulse", "7 music", "volume", "65536", "36855"});
        database.WriteSpokenSound({"supper.wav", "Supper", "Anna", 90, "gong"});
        database.WriteSoundLevel({"supper.wav", "", 0, 0, true});
        database.WriteSoundLevel({"gong.wav", "100-5", -1830, -250, true});
        database.WritePassingSound("recording.wav", true);
        database.AddHistory({0, "", "", 7, "Dinner", {1, 2}, {5}, "g.wav", "ended"});
    }

    void Execute(const std::string& statements) const { Sqlite(File().string()).Execute(statements); }

    /// Overwrites the page of the file in which this text stands.
    void DamagePageWith(const std::string& text) const {
        std::string content = TemporaryFolder::Read(File());
        const std::size_t page = content.find(text) / 4096 * 4096;
        std::fill_n(content.begin() + static_cast<std::ptrdiff_t>(page), 4096, 'x');
        std::ofstream(File(), std::ios::binary) << content;
    }

    [[nodiscard]] std::vector<int> Ids() const {
        std::vector<int> ids;
        for (const AnnouncementRow& row : StateDatabase(m_folder.Path()).Read().announcements) {
            EXPECT_EQ(row.xml, Row(static_cast<int>(row.key)).xml);
            EXPECT_EQ(row.house, Row(static_cast<int>(row.key)).house);
            ids.push_back(static_cast<int>(row.key));
        }
        return ids;
    }

    static std::vector<int> AllBut(const std::vector<int>& lost) {
        std::vector<int> ids;
        for (int id = 1; id <= kCount; ++id)
            if (std::find(lost.begin(), lost.end(), id) == lost.end())
                ids.push_back(id);
        return ids;
    }

    void ExpectTheRest() const {
        StateDatabase database(m_folder.Path());
        const StoredState state = database.Read();
        EXPECT_TRUE(state.areAnnouncementsKept);
        EXPECT_EQ(state.journal.size(), 1U);
        EXPECT_EQ(state.volumes.at(1), 60U);
        EXPECT_EQ(state.variables.at({9, 4}), "21 °C");
        EXPECT_EQ(state.borrowed, (BorrowedRows{{"pulse", "7 music", "volume", "65536", "36855"}}));
        EXPECT_EQ(state.spokenSounds,
                  (std::vector<SpokenSoundRow>{{"supper.wav", "Supper", "Anna", 90, "gong"}}));
        EXPECT_EQ(state.soundLevels, (std::vector<SoundLevelRow>{{"gong.wav", "100-5", -1830, -250, true},
                                                                 {"supper.wav", "", 0, 0, true}}));
        EXPECT_EQ(state.passingSounds, Texts{"recording.wav"});
        EXPECT_EQ(database.ReadHistory(5).size(), 1U);
    }

    TemporaryFolder m_folder;
};

TEST_F(RecoverDatabaseTest, ASoundOneOrNoneIsLeftAsItIs) {
    EXPECT_TRUE(StateDatabase::Recover(m_folder.Path()).empty());
    EXPECT_FALSE(std::filesystem::exists(File()));
    Fill();
    EXPECT_TRUE(StateDatabase::Recover(m_folder.Path()).empty());
    EXPECT_EQ(Ids(), AllBut({}));
}

TEST_F(RecoverDatabaseTest, OneDamagedRowLosesOneAnnouncementAndSaysWhich) {
    Fill();
    Execute("UPDATE announcement SET xml = replace(xml, 'xxx</text>', 'xyx</text>') WHERE key = 30; "
            "UPDATE announcement SET house = '<house/>' WHERE key = 40");
    const std::string before = TemporaryFolder::Read(File());
    const Texts lines = StateDatabase::Recover(m_folder.Path());
    ASSERT_EQ(lines.size(), 5U);
    const std::string aside = lines[0].substr(lines[0].find('/'), lines[0].size() - 1 - lines[0].find('/'));
    EXPECT_EQ(lines[0], "The damaged database has been set aside as " + aside + ".");
    EXPECT_TRUE(TemporaryFolder::Read(aside) == before);
    EXPECT_EQ(lines[1], "Lost: announcement 30 (\"Number 30\"), which is damaged.");
    EXPECT_EQ(lines[2], "Lost: announcement 40 (\"Number 40\"), which is damaged.");
    EXPECT_EQ(lines[3], "Read: 58 announcements.");
    EXPECT_EQ(Ids(), AllBut({30, 40}));
    ExpectTheRest();
}

TEST_F(RecoverDatabaseTest, WhatWasWrittenAsNoAnnouncementIsLostAsWell) {
    Fill();
    {
        StateDatabase database(m_folder.Path());
        database.WriteAnnouncement({7, "<announcement><id>7", ""});
        database.WriteAnnouncement({8, "<other/>", ""});
    }
    Execute("UPDATE announcement SET checksum = 0 WHERE key = 9");
    const Texts lines = StateDatabase::Recover(m_folder.Path());
    ASSERT_EQ(lines.size(), 6U);
    EXPECT_EQ(lines[1], "Lost: announcement 7, which is damaged.");
    EXPECT_EQ(lines[2], "Lost: announcement 8, which is damaged.");
    EXPECT_EQ(Ids(), AllBut({7, 8, 9}));
}

TEST_F(RecoverDatabaseTest, WhereAPageCannotBeReadOnlyWhatStoodThereIsLost) {
    Fill();
    DamagePageWith("<name>Number 30</name>");
    const Texts lines = StateDatabase::Recover(m_folder.Path());
    ASSERT_EQ(lines.size(), 4U);
    EXPECT_EQ(lines[1].find("Lost: what stood behind announcement "), 0U) << lines[1];
    EXPECT_NE(lines[1].find(" and before announcement "), std::string::npos) << lines[1];
    const std::vector<int> ids = Ids();
    EXPECT_GE(ids.size(), 50U);
    EXPECT_EQ(std::count(ids.begin(), ids.end(), 30), 0);
    EXPECT_EQ(ids.front(), 1);
    EXPECT_EQ(ids.back(), kCount);
    ExpectTheRest();
}

TEST_F(RecoverDatabaseTest, CutShortInTheMiddleOfAPageItGivesEachAnnouncementOnce) {
    // Where a page begins its list of rows is there, and the rows are not.
    Fill();
    const auto size = std::filesystem::file_size(File());
    for (const std::uintmax_t back : {4096U, 3U * 4096U, 8U * 4096U}) {
        Fill();
        std::filesystem::resize_file(File(), size - back + 229);
        const Texts lines = StateDatabase::Recover(m_folder.Path());
        EXPECT_LT(lines.size(), 20U);
        std::vector<int> ids = Ids();
        EXPECT_TRUE(std::is_sorted(ids.begin(), ids.end()));
        EXPECT_EQ(std::unique(ids.begin(), ids.end()), ids.end());
    }
}

TEST_F(RecoverDatabaseTest, FromNothingReadableItStartsEmpty) {
    m_folder.Write(StateDatabase::kFileName, std::string(8192, 'x'));
    const Texts lines = StateDatabase::Recover(m_folder.Path());
    ASSERT_EQ(lines.size(), 4U);
    EXPECT_EQ(lines[1].find("Lost: all announcements: "), 0U) << lines[1];
    EXPECT_FALSE(StateDatabase(m_folder.Path()).Read().areAnnouncementsKept);
}

TEST_F(RecoverDatabaseTest, InterruptedItStopsTheStartAndIsEndedTheNextTime) {
    Fill();
    std::filesystem::copy_file(File(), Recovered());
    Execute("DELETE FROM announcement");
    try {
        (void)StateDatabase(m_folder.Path());
        ADD_FAILURE();
    } catch (const DamagedDatabase& error) {
        EXPECT_NE(std::string(error.what()).find("--recover again"), std::string::npos);
    }
    EXPECT_EQ(StateDatabase::Recover(m_folder.Path()),
              Texts{"The recovery that was interrupted has been ended."});
    EXPECT_FALSE(std::filesystem::exists(Recovered()));
    EXPECT_EQ(Ids(), AllBut({}));
}

TEST_F(RecoverDatabaseTest, KilledAtAnyWriteItCanBeDoneAgain) {
    unsigned kills = 0;
    const auto damage = [this] {
        Fill();
        Execute("UPDATE announcement SET checksum = 0 WHERE key = 30");
    };
    damage();
    for (std::size_t bytes = 0;
         KilledInMidWrite(bytes, [this] { (void)StateDatabase::Recover(m_folder.Path()); }); bytes += 8192) {
        ++kills;
        (void)StateDatabase::Recover(m_folder.Path());
        EXPECT_EQ(Ids(), AllBut({30}));
        damage();
    }
    EXPECT_GT(kills, 5U);
    EXPECT_EQ(Ids(), AllBut({30}));
    ExpectTheRest();
}

} // namespace

} // namespace controller
