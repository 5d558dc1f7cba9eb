#include "controller/driver/Text.h"

#include "tests/controller/support/TestLog.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace controller {

namespace {

TEST(TextTest, ANumberIsTheWholeTextAndInItsRange) {
    EXPECT_EQ(ReadNumber<std::uint32_t>("4294967295", 1, 0xffffffff), 4294967295U);
    EXPECT_EQ(ReadNumber<std::uint32_t>("007", 0, 100), 7U);
    for (const char* text :
         {"", "0", "-1", "+1", "4294967296", "99999999999999999999", "1x", " 1", "1.0", "1 "})
        EXPECT_EQ(ReadNumber<std::uint32_t>(text, 1, 0xffffffff), std::nullopt) << text;
    EXPECT_EQ(ReadNumber<unsigned>("101", 0, 100), std::nullopt);
}

TEST(TextTest, LettersBecomeSmallAndEverythingElseStays) {
    EXPECT_EQ(Lower("Content-TYPE: AZaz [@`{] \xC3\x84"), "content-type: azaz [@`{] \xC3\x84");
}

TEST(TextTest, NothingIsLeftThatATerminalWouldObey) {
    for (unsigned code = 0; code < 0xA0; ++code) {
        if (code >= 0x20 && code < 0x7F)
            continue;
        std::string text = code < 0x80 ? "a" : "a\xC2";
        text += static_cast<char>(code);
        text += "2Jb";
        EXPECT_EQ(OneLine(text), "a 2Jb") << code;
        EXPECT_EQ(PlainLines(text), code == '\n' ? text : "a 2Jb") << code;
    }
    EXPECT_EQ(OneLine("Küche, \xE6\x97\xA5 \xF0\x9F\x94\x94 \xC2\xA0."),
              "Küche, \xE6\x97\xA5 \xF0\x9F\x94\x94 \xC2\xA0.");
    EXPECT_EQ(PlainLines("one\r\n\ttwo\n"), "one \n two\n");
    EXPECT_EQ(OneLine(""), "");
}

TEST(TextTest, NorDoesTheLogWriteIt) {
    TestLog log;
    log.log.Warning("Popup \x1B[2J\x7F\xC2\x9B"
                    "2J is \xC3\xBC");
    EXPECT_EQ(log.lines, std::vector<std::string>{"warning: Popup  [2J  2J is \xC3\xBC"});
}

TEST(TextTest, WhatIsNoUtf8HidesNothing) {
    EXPECT_EQ(OneLine("a\x9B"
                      "2J"),
              "a?2J");
    EXPECT_EQ(OneLine("\xC1\x9B"), "??");
    EXPECT_EQ(OneLine("\xE0\x82\x9B."), "???.");
    EXPECT_EQ(OneLine("\xF0\x80\x82\x9B."), "????.");
    EXPECT_EQ(OneLine("cut \xE6\x97"), "cut ??");
    EXPECT_EQ(OneLine("\xFF\xF5\xC3"), "???");
    EXPECT_EQ(OneLine("\xC3\x1B["), "? [");
}

TEST(TextTest, OneIsNotMany) {
    EXPECT_EQ(CountOf(0, "variable"), "0 variables");
    EXPECT_EQ(CountOf(1, "variable"), "1 variable");
    EXPECT_EQ(CountOf(2, "variable"), "2 variables");
}

} // namespace

} // namespace controller
