#include "tests/controller/announcements/AnnouncementsFixture.h"

namespace controller {

namespace {

/// What becomes of the rows of a disk at a start.
class AnnouncementsStartTest : public AnnouncementsTest {
protected:
    AnnouncementsStartTest() {
        m_host.agent.Stop();
        m_store.rows.clear();
    }

    /// With announcements of its own, for those of the fixture are there already.
    void Begin(const AnnouncementRows& rows, bool areKept = true) {
        for (const AnnouncementRow& row : areKept ? rows : AnnouncementRows())
            m_store.rows[row.key] = row;
        m_fresh = std::make_unique<Announcements>(
            Announcements::Parts{m_host.agent, m_store, m_host.scheduler, m_feed, m_host.log.log});
        m_fresh->Begin(rows, areKept);
    }

    void TearDown() override {
        m_fresh->Check();
        EXPECT_EQ(state_text::ForAgent(m_store.Rows()), m_host.agent.State());
        EXPECT_TRUE(std::none_of(m_host.log.lines.begin(), m_host.log.lines.end(),
                                 [](const std::string& line) { return line.find("error") == 0; }));
    }

    static AnnouncementRow Row(std::int64_t key, std::uint32_t id, const std::string& tag) {
        return {key, announcement_xml::ToXml(WithId(Made("From " + std::to_string(key)), id)),
                tag.empty() ? "" : "<house><tag>" + tag + "</tag></house>"};
    }

    std::unique_ptr<Announcements> m_fresh;
};

TEST_F(AnnouncementsStartTest, RowsThatTheAgentTakesAsTheyAreAreLeft) {
    Begin({Row(1, 1, "a"), {2, Row(2, 2, "").xml, "<house><later>1</later></house>"}});
    EXPECT_EQ(m_store.writes, 0);
    EXPECT_EQ(m_store.rows.at(2).house, "<house><later>1</later></house>");
    EXPECT_EQ(m_fresh->Find(1)->house.tags, Texts{"a"});
}

TEST_F(AnnouncementsStartTest, OneThatCarriesAnotherIdGetsItsRow) {
    Begin({Row(2, 9, "nine"), Row(4, 4, "")});
    EXPECT_EQ(m_store.writes, 1);
    EXPECT_FALSE(m_fresh->Find(2));
    ASSERT_TRUE(m_fresh->Find(9));
    EXPECT_EQ(m_fresh->Find(9)->name, "From 2");
    EXPECT_EQ(m_store.rows.at(9).house, "<house><tag>nine</tag></house>");
    EXPECT_EQ(m_store.rows.count(2), 0U);
    EXPECT_EQ(m_store.rows.size(), 2U);
}

TEST_F(AnnouncementsStartTest, OfSeveralThatCarryOneIdNoneIsLost) {
    Begin({Row(1, 1, "a"), Row(2, 9, "nine"), Row(3, 1, "third"), Row(9, 9, "other"), Row(10, 9, "")});
    EXPECT_EQ(m_store.writes, 1);
    Texts names;
    for (const auto& one : *m_fresh->All())
        names.push_back(std::to_string(one->id) + " " + one->name);
    EXPECT_EQ(names, (Texts{"1 From 1", "2 From 2", "3 From 3", "9 From 9", "10 From 10"}));
    EXPECT_EQ(m_fresh->Find(3)->house.tags, Texts{"third"});
    EXPECT_EQ(m_store.rows.at(3).xml.find("<announcement><id>3</id>"), 0U);
    EXPECT_EQ(m_store.rows.at(3).house, "<house><tag>third</tag></house>");
    EXPECT_EQ(m_store.rows.size(), 5U);
}

TEST_F(AnnouncementsStartTest, WhatPeopleWroteIsWrittenAsTheAgentDoesAndWhatHasNoIdOfItsOwnGetsOne) {
    Begin(state_text::Split(
              "<announcements><announcement><name>Without an id</name></announcement>"
              "<announcement><id>3</id><house><tag>x</tag></house></announcement>"
              "<announcement><name>Also</name></announcement>"
              "<announcement><id>3</id><name>Three as well</name><house><tag>y</tag></house></announcement>"
              "</announcements>"),
          false);
    EXPECT_EQ(m_store.rows.at(3).xml, announcement_xml::ToXml(*m_fresh->Find(3)));
    EXPECT_EQ(m_fresh->Find(3)->house.tags, Texts{"x"});
    Texts names;
    for (const auto& one : *m_fresh->All())
        names.push_back(std::to_string(one->id) + " " + one->name);
    EXPECT_EQ(names, (Texts{"1 Without an id", "3 ", "4 Also", "5 Three as well"}));
    EXPECT_EQ(m_fresh->Find(5)->house.tags, Texts{"y"});
}

TEST_F(AnnouncementsStartTest, WhatTheDiskDoesNotHoldYetIsWritten) {
    Begin({Row(1, 1, "a"), Row(2, 2, "")}, false);
    EXPECT_EQ(m_store.writes, 1);
    EXPECT_EQ(m_store.rows.at(1).house, "<house><tag>a</tag></house>");
}

TEST_F(AnnouncementsStartTest, AlsoThatThereIsNoneIsKept) {
    Begin({}, false);
    EXPECT_EQ(m_store.writes, 1);
    EXPECT_TRUE(m_fresh->All()->empty());
}

} // namespace

} // namespace controller
