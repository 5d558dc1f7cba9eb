#include "controller/speech/SpeechText.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace controller {

namespace {

using Texts = std::vector<std::string>;
const std::map<std::string, std::string> kValues{{"Outside", "21 °C"}, {"Who is there", "{Outside}"}};

TEST(SpeechTextTest, ValuesStandWhereTheirNamesDo) {
    EXPECT_EQ(speech_text::Filled("{Outside}: it is {Outside}", kValues), "21 °C: it is 21 °C");
    EXPECT_EQ(speech_text::Filled("No name", kValues), "No name");
    EXPECT_EQ(speech_text::Filled("", kValues), "");
}

TEST(SpeechTextTest, AValueIsNotReadAgain) {
    EXPECT_EQ(speech_text::Filled("{Who is there}!", kValues), "{Outside}!");
}

TEST(SpeechTextTest, ABraceWithoutItsOtherOneIsABrace) {
    EXPECT_EQ(speech_text::Filled("a } b { c", kValues), "a } b { c");
}

TEST(SpeechTextTest, ANameWithoutAValueIsToldWithThoseThereAre) {
    try {
        (void)speech_text::Filled("It is {Inside}", kValues);
        FAIL();
    } catch (const std::invalid_argument& error) {
        EXPECT_STREQ(error.what(), "there is no variable {Inside}; the house has {Outside}, {Who is there}");
    }
    EXPECT_THROW((void)speech_text::Filled("{}", {}), std::invalid_argument);
}

TEST(SpeechTextTest, TheNamesInATextAreFoundEachOnce) {
    EXPECT_EQ(speech_text::VariablesIn("{b} and {a} and {b} {"), (Texts{"b", "a"}));
    EXPECT_EQ(speech_text::VariablesIn("none"), Texts());
}

} // namespace

} // namespace controller
