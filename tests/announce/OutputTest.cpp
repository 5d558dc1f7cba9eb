#include "announce/output/Output.h"

#include <gtest/gtest.h>

TEST(OutputTest, JsonHoldsNothingThatATerminalWouldObeyAndSaysTheSame) {
    for (unsigned code = 0; code < 0x100; ++code) {
        const std::string letter = code < 0x80 ? std::string(1, static_cast<char>(code))
                                               : std::string{static_cast<char>(0xC0 | code >> 6U),
                                                             static_cast<char>(0x80 | (code & 0x3FU))};
        const Json json{{"name", "a" + letter + "2J \xC2"}};
        const bool isControl = code < 0x20 || (code >= 0x7F && code < 0xA0);
        const std::string text = JsonText(json, true);
        EXPECT_EQ(text.find(letter) == std::string::npos || letter == "\n", isControl) << code;
        EXPECT_EQ(Json::parse(text).at("name"), "a" + letter + "2J \xEF\xBF\xBD") << code;
    }
    EXPECT_EQ(JsonText({{"a", 1}}), "{\n  \"a\": 1\n}\n");
}
