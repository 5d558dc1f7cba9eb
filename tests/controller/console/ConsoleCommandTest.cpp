#include "controller/console/ConsoleCommand.h"

#include "tests/controller/support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace controller {

namespace {

using Words = std::vector<std::string>;

TEST(ConsoleCommandTest, AVerbItsWordsAndItsParameters) {
    const ConsoleCommand command = ParseConsoleLine("  request add_room id=5\troom=<room/>  twice ");
    EXPECT_EQ(command.verb, "request");
    EXPECT_EQ(command.words, (Words{"add_room", "twice"}));
    EXPECT_EQ(command.parameters, (Parameters{{"id", "5"}, {"room", "<room/>"}}));
}

TEST(ConsoleCommandTest, QuotedStretchesKeepTheirBlanksAndSigns) {
    const ConsoleCommand command = ParseConsoleLine(R"(set 1 2 "a = \"b\" \\ \n" x="1 2" "y=3" z"=4")");
    EXPECT_EQ(command.words, (Words{"1", "2", R"(a = "b" \ \n)", "y=3", "z=4"}));
    EXPECT_EQ(command.parameters, (Parameters{{"x", "1 2"}}));
}

TEST(ConsoleCommandTest, AValueMayHoldSignsAndMayBeEmpty) {
    EXPECT_EQ(ParseConsoleLine("r a==b c=").parameters, (Parameters{{"a", "=b"}, {"c", ""}}));
    EXPECT_EQ(ParseConsoleLine("r =b").words, Words{"=b"});
}

TEST(ConsoleCommandTest, BlankLinesAndCommentsSayNothing) {
    for (const std::string line : {"", "   ", "\t\r", "# play 1", "  #"})
        EXPECT_EQ(ParseConsoleLine(line).verb, "") << line;
}

TEST(ConsoleCommandTest, AFileStandsForItsContent) {
    const TemporaryFolder folder;
    const auto file = folder.Write("a b.xml", "<a>\n</a>");
    const ConsoleCommand command =
        ParseConsoleLine("request x announcement=@\"" + file.string() + "\" name=@@home");
    EXPECT_EQ(command.parameters, (Parameters{{"announcement", "<a>\n</a>"}, {"name", "@home"}}));
}

TEST(ConsoleCommandTest, AFileThatCannotBeTakenIsToldByName) {
    const TemporaryFolder folder;
    const std::string missing = (folder.Path() / "missing").string();
    const std::string large = folder.Write("large", std::string(1024 * 1024 + 1, 'x')).string();
    for (const std::string& file : {missing, large, folder.Path().string()}) {
        try {
            (void)ParseConsoleLine("request x a=@" + file);
            ADD_FAILURE() << file;
        } catch (const ConsoleError& error) {
            EXPECT_NE(std::string(error.what()).find(file), std::string::npos);
        }
    }
}

TEST(ConsoleCommandTest, WhatCannotBeUnderstoodIsRefused) {
    EXPECT_THROW((void)ParseConsoleLine("set \"open"), ConsoleError);
    EXPECT_THROW((void)ParseConsoleLine("id=5"), ConsoleError);
}

} // namespace

} // namespace controller
