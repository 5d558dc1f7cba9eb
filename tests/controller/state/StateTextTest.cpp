#include "controller/state/StateText.h"

#include "controller/state/SoundText.h"
#include "tests/controller/support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace controller {

namespace {

using Texts = std::vector<std::string>;

Texts TextsOf(const AnnouncementRows& rows) {
    Texts texts;
    for (const AnnouncementRow& row : rows)
        texts.push_back(std::to_string(row.key) + " " + row.xml + " " + row.house);
    return texts;
}

TEST(StateTextTest, RowsAreGivenToTheAgentInTheirOrderAndWithoutWhatTheHouseAdds) {
    const AnnouncementRows rows{{1, "<announcement><id>7</id></announcement>", "<house><tag>a</tag></house>"},
                                {2, "<announcement><id>2</id></announcement>", ""}};
    EXPECT_EQ(state_text::ForAgent(rows), "<announcements><announcement><id>7</id></announcement>"
                                          "<announcement><id>2</id></announcement></announcements>");
    EXPECT_EQ(state_text::ForPeople(rows),
              "<announcements><announcement><id>7</id><house><tag>a</tag></house></announcement>"
              "<announcement><id>2</id></announcement></announcements>");
    EXPECT_EQ(state_text::ForAgent({}), "<announcements/>");
}

TEST(StateTextTest, WhatIsReadBackIsTheSame) {
    const std::string text =
        "<announcements><announcement><id>1</id><house><tag>a</tag></house></announcement>"
        "<announcement><id>9</id><name>a &lt; b</name></announcement>"
        "<announcement><id>9</id></announcement><announcement><id>3</id></announcement>"
        "</announcements>";
    const AnnouncementRows rows = state_text::Split(text);
    EXPECT_EQ(TextsOf(rows), (Texts{"1 <announcement><id>1</id></announcement> <house><tag>a</tag></house>",
                                    "9 <announcement><id>9</id><name>a &lt; b</name></announcement> ",
                                    "10 <announcement><id>9</id></announcement> ",
                                    "11 <announcement><id>3</id></announcement> "}));
    EXPECT_EQ(state_text::ForPeople(rows), text);
}

TEST(StateTextTest, SoundsStandBehindTheAnnouncementsAndAreNone) {
    const AnnouncementRows rows{{1, "<announcement><id>1</id></announcement>", ""}};
    const SoundText sounds{
        {{"post.wav", "{Outside} <& \"more\"", "Anna", 90, "gong"}, {"supper.wav", "Supper", "", 100, ""}},
        {"gong.wav", "post.wav"}};
    for (const AnnouncementRows& beside : {rows, AnnouncementRows()}) {
        const std::string text = state_text::ForPeople(beside, sounds);
        EXPECT_EQ(TextsOf(state_text::Split(text)), TextsOf(beside));
        const SoundText split = sound_text::Split(text);
        EXPECT_EQ(split.spoken, sounds.spoken);
        EXPECT_EQ(split.asItIs, sounds.asItIs);
    }
    EXPECT_TRUE(sound_text::Split(state_text::ForPeople(rows)).spoken.empty());
    for (const char* element : {"<spoken_sound><name>a</name></spoken_sound>", "<sound_as_it_is/>"})
        EXPECT_THROW((void)sound_text::Split("<announcements>" + std::string(element) + "</announcements>"),
                     std::runtime_error)
            << element;
}

TEST(StateTextTest, AnAnnouncementOfNothingButWhatTheHouseAddsHasAnId) {
    const auto rows =
        state_text::Split("<announcements><announcement><house/></announcement></announcements>");
    EXPECT_EQ(TextsOf(rows), Texts{"0 <announcement><id>0</id></announcement> <house/>"});
}

TEST(StateTextTest, KeysMayGoBeyondAllIds) {
    const auto rows = state_text::Split("<announcements><announcement><id>4294967295</id></announcement>"
                                        "<announcement><id>1</id></announcement></announcements>");
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[1].key, 4294967296);
}

TEST(StateTextTest, AFileThatHoldsNoAnnouncementsIsRefusedByName) {
    const TemporaryFolder folder;
    const auto refusal = [](const std::filesystem::path& file) {
        try {
            (void)state_text::Read(file);
        } catch (const std::runtime_error& error) {
            return std::string(error.what());
        }
        return std::string();
    };
    const auto file = folder.Write("a.xml", "<other/>");
    EXPECT_EQ(refusal(file), file.string() + " holds no announcements: its root element is \"other\" and not "
                                             "\"announcements\"");
    folder.Write("a.xml", "<announcements>");
    EXPECT_EQ(refusal(file), file.string() + " is not XML");
    EXPECT_EQ(refusal(folder.Path() / "none"), (folder.Path() / "none").string() + " cannot be read");
    folder.Write("a.xml", "<announcements/>");
    EXPECT_TRUE(state_text::Read(file).empty());
}

} // namespace

} // namespace controller
