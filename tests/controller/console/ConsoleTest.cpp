#include "controller/console/Console.h"

#include "tests/controller/announcements/AnnouncementsFixture.h"

namespace controller {

namespace {

/// With announcements that a console may ask for.
using ConsoleTest = AnnouncementsTest;

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

} // namespace

} // namespace controller
