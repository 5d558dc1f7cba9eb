#include "controller/api/json/Meaning.h"

#include "controller/api/json/HouseViews.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <regex>

namespace controller {

namespace {

using nlohmann::json;

json AsJson(const Meaning& meaning) {
    return json::parse(fields::ToText(meaning));
}

json ProblemOf(const std::string& detail, const std::string& right = "", const std::string& code = "") {
    auto body =
        json::parse(std::get<std::string>(Problem({400, detail, right}, {}, {code, std::nullopt}).body));
    return {{"code", body["code"]}, {"params", body.value("params", json())}};
}

std::string Filled(const MeantText& row) {
    return std::regex_replace(std::string(row.text), std::regex("\\{[a-z]+\\}"), "7");
}

TEST(MeaningTest, EachTextOfTheTableIsKnownAsItsOwn) {
    for (const MeantText& row : MeantTexts()) {
        const bool isByCodeAlone = row.text == std::string("{file}: {why}");
        EXPECT_EQ(MeaningOf(Filled(row), isByCodeAlone ? row.code : "").code.text, row.code) << row.text;
    }
}

TEST(MeaningTest, HasTheValuesThatStandInTheText) {
    EXPECT_EQ(AsJson(MeaningOf("the house has no variable 5 of device 9")),
              (json{{"code", "no_variable"}, {"params", {{"variable", "5"}, {"device", "9"}}}}));
    EXPECT_EQ(AsJson(MeaningOf("there is no variable {Outsid}; the house has {Outside}, {Door}")),
              (json{{"code", "unknown_variable"},
                    {"params", {{"name", "Outsid"}, {"others", "{Outside}, {Door}"}}}}));
}

TEST(MeaningTest, TellsAlsoTheReasonInsideOfAText) {
    EXPECT_EQ(AsJson(MeaningOf("no room can be heard: Kitchen: did not open within 3000 ms")),
              (json{{"code", "no_room_heard"},
                    {"params",
                     {{"why", "Kitchen: did not open within 3000 ms"},
                      {"why.code", "other"},
                      {"why.what", "Kitchen"},
                      {"why.why", "did not open within 3000 ms"},
                      {"why.why.code", "not_opened"},
                      {"why.why.time", "3000 ms"}}}}));
}

TEST(MeaningTest, TellsAZoneFromTheInterfaceThatLeadsThere) {
    const std::string place = "nothing can be sent to 239.255.10.1:5004";
    EXPECT_EQ(AsJson(MeaningOf(place + " through eth1: No such device")),
              (json{{"code", "zone_unreachable_through"},
                    {"params",
                     {{"place", "239.255.10.1:5004"}, {"interface", "eth1"}, {"why", "No such device"}}}}));
    EXPECT_EQ(AsJson(MeaningOf(place + ": Network is unreachable")),
              (json{{"code", "zone_unreachable"},
                    {"params", {{"place", "239.255.10.1:5004"}, {"why", "Network is unreachable"}}}}));
}

TEST(MeaningTest, KnowsNothingOfOtherTexts) {
    EXPECT_FALSE(KnownMeaningOf(""));
    EXPECT_FALSE(KnownMeaningOf("pipewire: "));
    EXPECT_FALSE(KnownMeaningOf("something else"));
    EXPECT_EQ(AsJson(MeaningOf("something else")), (json{{"code", "other"}, {"params", json::object()}}));
}

TEST(MeaningTest, AProblemHasItsCodeItsValuesAndWhatWouldBeRight) {
    EXPECT_EQ(ProblemOf("the house has no room 7", "an id that GET /api/rooms lists"),
              (json{{"code", "no_room"}, {"params", {{"room", "7"}, {"right.code", "id_of_rooms"}}}}));
    EXPECT_EQ(ProblemOf("nobody has foreseen this", "nor that"),
              (json{{"code", "other"}, {"params", nullptr}}));
}

TEST(MeaningTest, AProblemThatNamesItsCodeKeepsIt) {
    EXPECT_EQ(ProblemOf("gong.wav: truncated: its header promises 8 bytes of sound, only 4 are there", "",
                        "damaged"),
              (json{{"code", "damaged"},
                    {"params",
                     {{"file", "gong.wav"},
                      {"why", "truncated: its header promises 8 bytes of sound, only 4 are there"},
                      {"why.code", "truncated"},
                      {"why.promised", "8"},
                      {"why.there", "4"}}}}));
    EXPECT_EQ(ProblemOf("gong.wav: odd", "", "too_long"), (json{{"code", "too_long"}, {"params", nullptr}}));
}

TEST(MeaningTest, WhatStandsInTheStateHasItsMeaningBeside) {
    view::Room room;
    EXPECT_FALSE(json::parse(fields::ToText(room)).contains("trouble_means"));
    room.trouble = "took no sound for 2000 ms";
    EXPECT_EQ(json::parse(fields::ToText(room))["trouble_means"],
              (json{{"code", "took_no_sound"}, {"params", {{"time", "2000 ms"}}}}));
    room.trouble = "the device says no";
    EXPECT_FALSE(json::parse(fields::ToText(room)).contains("trouble_means"));
}

} // namespace

} // namespace controller
