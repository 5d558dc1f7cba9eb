#include "controller/console/Console.h"

#include "tests/controller/announcements/AnnouncementsFixture.h"

namespace controller {

namespace {

/// The console of a house whose first announcement is called "One".
class ConsoleTest : public AnnouncementsTest {
protected:
    /// What the console prints for a line; it must have answered as often as `answers` says.
    Texts Type(const std::string& line, int answers = 1) {
        m_lines.clear();
        m_answered = 0;
        ConsoleInput::Line typed;
        try {
            typed.command = ParseConsoleLine(line);
        } catch (const ConsoleError& error) {
            typed.error = error.what();
        }
        m_console.Take(typed, [this] { ++m_answered; });
        EXPECT_EQ(m_answered, answers) << line;
        return m_lines;
    }

    Texts m_lines;
    int m_answered = 0;
    int m_quits = 0;
    bool m_isPlaying = false;
    Console m_console{{m_announcements, [this](const std::string& line) { m_lines.push_back(line); },
                       [this] { ++m_quits; }, [this] { return m_isPlaying; },
                       [this](std::uint32_t id, const Announcements::Done& done) {
                           m_announcements.Play(id, done);
                       }}};
};

TEST_F(ConsoleTest, AnAnnouncementIsPlayedByItsId) {
    EXPECT_EQ(Type("play 1"), Texts{"ok"});
    EXPECT_EQ(m_events.Take(), Texts{"asked for 1"});
}

TEST_F(ConsoleTest, AnAnnouncementIsPlayedByItsNameInSmallOrCapitalLetters) {
    (void)Add("Frühstück ist fertig");
    (void)m_events.Take();
    for (const std::string line : {"play one", "play \"ONE\""}) {
        EXPECT_EQ(Type(line), Texts{"ok"});
        EXPECT_EQ(m_events.Take(), Texts{"asked for 1"}) << line;
    }
    EXPECT_EQ(Type("play FRÜHSTÜCK ist fertig"), Texts{"ok"});
    EXPECT_EQ(m_events.Take(), Texts{"asked for 2"});
}

TEST_F(ConsoleTest, AnIdGoesBeforeANameOfTheSameDigits) {
    (void)Add("1");
    (void)Add("77");
    (void)m_events.Take();
    EXPECT_EQ(Type("play 1"), Texts{"ok"});
    EXPECT_EQ(Type("play 77"), Texts{"ok"});
    EXPECT_EQ(m_events.Take(), (Texts{"asked for 1", "asked for 3"}));
}

TEST_F(ConsoleTest, OfNamesThatDifferInTheirLettersTheExactOneIsMeant) {
    (void)Add("one");
    (void)Add("Two");
    (void)Add("two");
    (void)m_events.Take();
    EXPECT_EQ(Type("play one"), Texts{"ok"});
    EXPECT_EQ(Type("play One"), Texts{"ok"});
    EXPECT_EQ(m_events.Take(), (Texts{"asked for 2", "asked for 1"}));
    EXPECT_EQ(
        Type("play TWO"),
        Texts{
            "error: several announcements are called \"TWO\"; one of these ids is right: 3 (Two), 4 (two)"});
    EXPECT_EQ(m_events.Take(), Texts{});
}

TEST_F(ConsoleTest, OneThatIsNotThereIsToldWithThoseThatAre) {
    for (const std::string text : {"77", "0", "-1", "4294967297", "Supper"})
        EXPECT_EQ(Type("play " + text), Texts{"error: there is no announcement \"" + text +
                                              "\"; an id or a name is right: 1 (One)"});
    for (int number = 2; number <= 12; ++number)
        (void)Add("Test " + std::to_string(number));
    const Texts told = Type("play Supper");
    ASSERT_EQ(told.size(), 1U);
    EXPECT_NE(told[0].find("9 (Test 9), 10 (Test 10), …"), std::string::npos) << told[0];
    (void)Request("clear_announcements", {});
    for (std::uint32_t id = 1; id <= 12; ++id)
        m_announcements.Remove(id, Note());
    EXPECT_EQ(Type("play 1"),
              Texts{"error: there is no announcement \"1\"; an id or a name is right: there is none yet"});
}

TEST_F(ConsoleTest, RequestsAndCommandsGoToTheAgentAndItsReplyIsPrinted) {
    EXPECT_EQ(Type("request get_announcement id=77"), Texts{"<announcement/>"});
    EXPECT_EQ(Type("request remove_announcement id=1"), Texts{"<success/>"});
    EXPECT_EQ(Names(), Texts{});
    EXPECT_EQ(Type("command ANNOUNCEMENT_DISMISSED"), Texts{"ok"});
    EXPECT_EQ(Type("dismiss"), Texts{"ok"});
    EXPECT_EQ(Type("request no_such"), Texts{"error: the agent has no no_such"});
}

TEST_F(ConsoleTest, AReplyComesWhenTheDiskHasTheChangeAndSaysSoWhenItHasNot) {
    m_store.isAnswering = false;
    EXPECT_EQ(Type("request remove_announcement id=1", 0), Texts{});
    m_store.Answer();
    EXPECT_EQ(m_answered, 1);
    EXPECT_EQ(m_lines, Texts{"<success/>"});

    m_store.isAnswering = true;
    const std::string id = std::to_string(Add("Two"));
    m_store.failing = m_store.writes + 1;
    const Texts told = Type("request remove_announcement id=" + id);
    ASSERT_EQ(told.size(), 2U);
    EXPECT_EQ(told[0], "<success/>");
    EXPECT_EQ(told[1], "warning: this is not on the disk yet: full");
}

TEST_F(ConsoleTest, WhatTheConsolePrintsOfAReplySteersNoTerminal) {
    m_announcements.Replace(WithId(Made("A\xC2\x9B"
                                        "2J\x7F"),
                                   1),
                            Note());
    Texts printed;
    const Console console({m_announcements, [&](const std::string& text) { printed.push_back(text); },
                           [] {
                           }});
    ConsoleInput::Line line;
    line.command.verb = "request";
    line.command.words = {"get_announcement"};
    line.command.parameters = {{"id", "1"}};

    console.Take(line, [] {});

    ASSERT_EQ(printed.size(), 1U);
    EXPECT_NE(printed[0].find("<name>A 2J </name>"), std::string::npos) << printed[0];
}

TEST_F(ConsoleTest, StopSaysWhetherThereWasSomethingToStop) {
    EXPECT_EQ(Type("stop"), Texts{"nothing plays"});
    m_isPlaying = true;
    EXPECT_EQ(Type("stop"), Texts{"ok"});
}

TEST_F(ConsoleTest, SavedIsSaidWhenItIs) {
    EXPECT_EQ(Type("save"), Texts{"saved"});
}

TEST_F(ConsoleTest, QuitEndsTheController) {
    EXPECT_EQ(Type("quit"), Texts{});
    EXPECT_EQ(m_quits, 1);
}

TEST_F(ConsoleTest, HelpHasALineForEachCommand) {
    const Texts help = Type("help");
    ASSERT_EQ(help.size(), 9U);
    const Texts verbs{"play ID|NAME ", "dismiss ", "stop ", "request NAME ",
                      "command NAME ", "save ",    "help ", "quit "};
    for (std::size_t index = 0; index < verbs.size(); ++index)
        EXPECT_EQ(help[index].substr(0, verbs[index].size()), verbs[index]);
}

TEST_F(ConsoleTest, WhatCannotBeUnderstoodIsAnsweredWithWhatWouldBeRight) {
    EXPECT_EQ(Type("play"), Texts{"error: it is written `play ID|NAME`"});
    EXPECT_EQ(Type("request"), Texts{"error: it is written `request NAME [PARAMETER=VALUE]...`"});
    EXPECT_EQ(Type("nonsense 1"), Texts{"error: there is no command nonsense; `help` lists them"});
    EXPECT_EQ(Type("play \"1"), Texts{"error: a \" is opened and not closed"});
    EXPECT_EQ(m_quits, 0);
}

} // namespace

} // namespace controller
