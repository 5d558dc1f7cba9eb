#include "announce/announcements/Form.h"

#include "announce/announcements/Fields.h"
#include "tests/announce/SmallHouse.h"

#include <gtest/gtest.h>

namespace {

class FormTest : public testing::Test {
protected:
    FormTest() {
        m_original = fields::Nothing();
        m_original["id"] = 5;
        m_original["name"] = "Dinner";
        m_original["audio"]["file"] = "gone";
        m_original["rooms"] = Json::array({{{"id", 1}, {"volume", 40}}, {{"id", 77}, {"volume", -1}}});
        m_original["navigators"] = Json::array({{{"id", 11}, {"room", 1}, {"onscreen", false}}});
    }

    Json Read(const std::string& form) {
        m_mistakes.clear();
        return announcement_form::Read(form, m_original, m_small.house, m_mistakes);
    }

    /// Every mistake in the form, a line each.
    std::string MistakesIn(const std::string& form) {
        (void)Read(form);
        std::string all;
        for (const auto& mistake : m_mistakes)
            all += mistake.Told() + "\n";
        return all;
    }

    SmallHouse m_small;
    Json m_original;
    announcement_form::Mistakes m_mistakes;
};

} // namespace

TEST_F(FormTest, WhatIsLeftAloneStaysAlsoWhereTheHouseNoLongerHasIt) {
    EXPECT_EQ(Read(announcement_form::Write(m_original, m_small.house)), m_original);
    EXPECT_TRUE(m_mistakes.empty());
}

TEST_F(FormTest, EveryFieldStandsInItWithItsValueAndAComment) {
    const std::string form = announcement_form::Write(m_original, m_small.house);
    EXPECT_EQ(form.rfind("# Announcement 5. ", 0), 0U);
    for (const fields::Field& field : fields::All())
        EXPECT_NE(form.find(std::string("# ") + field.comment + "\n"), std::string::npos) << field.key;
    for (const char* line :
         {"\nname: Dinner  ", "\nsound: gone  ", "\nvariable: none  ", "\ntext: \"\"  ",
          "\n  - {room: Kitchen, volume: 40}\n", "\n  - 77\n", "\n  - Tablet\n", "\nok_button: yes  "})
        EXPECT_NE(form.find(line), std::string::npos) << line << form;
}

TEST_F(FormTest, ItemsAreReadByNameOrAsAMapAndTheirAbsenceTakesThemAway) {
    const Json read = Read("rooms: [Kitchen, {room: GARDEN, volume: 5}]\nscreens:\n");
    EXPECT_EQ(m_mistakes.size(), 1U); // two rooms are called so
    EXPECT_EQ(read.at("rooms"), Json::array({{{"id", 1}, {"volume", -1}}}));
    EXPECT_EQ(read.at("navigators"), Json::array());
    EXPECT_EQ(Read("ok_button: off\n").at("video").at("ok_button"), false);
}

TEST_F(FormTest, EveryMistakeIsToldWithItsLineAndWhatWouldBeRight) {
    EXPECT_EQ(
        MistakesIn(
            "name: \"\"\nnme: x\nsound: [a]\nrooms: Kitchen\nscreens:\n  - Tablt\n  - {room: 1}\n  - [a]\n"
            "  - Tablet\n  - 11\n  - {screen: [a]}\npopup_time: 5\npopup_time: 5s\n"),
        "line 2: there is no key \"nme\"; right: name?\n"
        "line 3: sound is no text; right: one value behind the colon\n"
        "line 4: rooms is no list; right: lines that begin with \"  - \"\n"
        "line 6: there is no screen \"Tablt\"; right: the nearest: Tablet (11)\n"
        "line 7: there is no key \"room\" here; right: screen\n"
        "line 8: this is neither a name nor {screen: NAME, ...}\n"
        "line 10: it stands twice in screens\n"
        "line 11: a value in { } is no text\n"
        "line 12: popup_time: \"5\" is no length of time; right: a number with its unit: 500ms, 1.5s, 2min; "
        "at "
        "most 4294967295ms\n"
        "line 13: popup_time stands twice\n"
        "name: an announcement needs a name\n");
}

TEST_F(FormTest, WhatIsNoFormIsOneMistake) {
    EXPECT_EQ(MistakesIn("name: ["), "line 1: this is no YAML: end of sequence flow not found\n");
    EXPECT_EQ(MistakesIn("- Dinner\n"), "this is no form: it has no lines such as \"name: Dinner\"\n");
}

TEST_F(FormTest, AControllerThatIsGoneIsNoMistakeOfTheForm) {
    House gone([](const std::string&) -> Json { throw Failure(ExitStatus::NoConnection, "gone"); });
    const Failure failure = FailureOf(
        [&] { (void)announcement_form::Read("variable: Outside\n", m_original, gone, m_mistakes); });
    EXPECT_EQ(failure.Status(), ExitStatus::NoConnection);
}

TEST_F(FormTest, MistakesStandOnTopOfAFormAndGoAgain) {
    const std::string form = "# Announcement 5\nname: Dinner\n";
    const std::string once = announcement_form::WithMistakes(form, announcement_form::Mistakes{{2, "no"}});
    EXPECT_EQ(once, "#! line 3: no\n" + form);
    EXPECT_EQ(announcement_form::WithMistakes(once, announcement_form::Mistakes{{1, "a"}, {0, "b"}}),
              "#! line 3: a\n#! b\n" + form);
    EXPECT_EQ(announcement_form::WithoutMistakes(once), form);
}

TEST_F(FormTest, AFormOfCommentsAloneIsEmpty) {
    EXPECT_TRUE(announcement_form::IsEmpty(""));
    EXPECT_TRUE(announcement_form::IsEmpty("\n  # comment\n\t\r\n"));
    EXPECT_FALSE(announcement_form::IsEmpty("# comment\nname: x\n"));
}
