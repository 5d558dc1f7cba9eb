#include "announce/definitions/Candidates.h"

#include "announce/commands/Commands.h"

#include <gtest/gtest.h>

using Words = std::vector<std::string>;

namespace {

candidates::Place FindPlace(const Words& words) {
    return candidates::FindPlace(AllCommands(), words);
}

Words Offered(const Words& words) {
    const auto place = FindPlace(words);
    Words texts;
    for (const auto& one : candidates::Fitting(place.fixed, place))
        texts.push_back(one.text);
    return texts;
}

} // namespace

TEST(CandidatesTest, CommandsAreOfferedByTheirBeginning) {
    EXPECT_EQ(Offered({"re"}), (Words{"remove", "rehearse"}));
    EXPECT_EQ(Offered({"media", "a"}), Words{"add"});
    EXPECT_EQ(Offered({"complet"}), Words{"completion"});
}

TEST(CandidatesTest, OptionsAreThoseOfTheCommandAndOfAll) {
    EXPECT_EQ(Offered({"play", "Dinner", "--w"}), Words{"--wait"});
    EXPECT_EQ(Offered({"play", "--js"}), Words{"--json"});
    EXPECT_EQ(Offered({"list", "--w"}), Words{"--watch"});
    EXPECT_EQ(Offered({"play", "--", "--w"}), Words{});
}

TEST(CandidatesTest, ValuesAreOfTheKindThatTheDefinitionNames) {
    EXPECT_EQ(FindPlace({"play", ""}).completes, Completes::Announcement);
    EXPECT_EQ(FindPlace({"play", "Dinner", ""}).completes, Completes::Nothing);
    EXPECT_EQ(FindPlace({"remove", "Dinner", ""}).completes, Completes::Announcement);
    EXPECT_EQ(FindPlace({"add", "--room", ""}).completes, Completes::Room);
    EXPECT_EQ(FindPlace({"add", "--room", "Kitchen", "--screen", "H"}).completes, Completes::Screen);
    EXPECT_EQ(FindPlace({"-a", "house", "rooms", "volume", ""}).completes, Completes::Room);
    EXPECT_EQ(FindPlace({"media", "add", "x.wav", ""}).completes, Completes::File);
    EXPECT_EQ(FindPlace({"variables", "set", ""}).completes, Completes::Variable);
    EXPECT_EQ(FindPlace({"events", "--type", ""}).completes, Completes::EventType);
}

TEST(CandidatesTest, AValueBehindAnEqualsSignKeepsTheOption) {
    auto place = FindPlace({"add", "--room=Ki"});
    EXPECT_EQ(place.completes, Completes::Room);
    EXPECT_EQ(place.begun, "Ki");
    EXPECT_EQ(candidates::Fitting({{"Kitchen", "1"}}, place).front().text, "--room=Kitchen");
}

TEST(CandidatesTest, OptionsThatHaveTheirValueSayWhereTheControllerIs) {
    const auto place =
        FindPlace({"-a", "house", "--ca=root.pem", "--token-file", "-", "play", "--wait", "--token", "D"});
    EXPECT_EQ(place.given.Text("address"), "house");
    EXPECT_EQ(place.given.Text("ca"), "root.pem");
    EXPECT_FALSE(place.given.Has("wait"));
    EXPECT_FALSE(place.given.Has("token"));
    EXPECT_FALSE(place.given.Has("token-file")); // standard input, which the user needs
    EXPECT_EQ(place.begun, "D");
}
