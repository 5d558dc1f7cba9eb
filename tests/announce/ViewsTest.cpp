#include "announce/announcements/Views.h"

#include "announce/announcements/Fields.h"
#include "announce/announcements/Options.h"
#include "announce/house/EventText.h"
#include "tests/announce/SmallHouse.h"

#include <gtest/gtest.h>

namespace {

Json Dinner(const Arguments::Values& options, House& house) {
    Json announcement = fields::Nothing();
    announcement["id"] = 1;
    announcement["name"] = "Dinner";
    announcement_options::Apply(Arguments(options), house, announcement);
    return announcement;
}

} // namespace

TEST(ViewsTest, AnAnnouncementIsShownALineForEachOfItsParts) {
    SmallHouse small;
    const Json dinner = Dinner({{"sound", {"chime"}},
                                {"sound-delay", {"1.5s"}},
                                {"urgent", {"yes"}},
                                {"room", {"Kitchen:40", "Hall: left"}},
                                {"text", {"Ready"}},
                                {"variable", {"Outside"}},
                                {"image", {"door.png"}},
                                {"screen", {"Tablet", "Television"}},
                                {"popup-delay", {"2s"}},
                                {"popup-time", {"1min"}},
                                {"ok-button", {"no"}}},
                               small.house);
    EXPECT_EQ(announcement_text::Whole(dinner, small.house).Text({}),
              "id       1\n"
              "name     Dinner\n"
              "sound    chime.wav, 1.5 s later, urgent\n"
              "rooms    Kitchen 40, Hall: left\n"
              "text     the value of Outside\n"
              "image    door.png\n"
              "screens  Tablet, Television\n"
              "popup    for 1 min, 2 s later, without an OK button\n");
}

TEST(ViewsTest, WhatAnAnnouncementLacksIsADash) {
    SmallHouse small;
    EXPECT_EQ(announcement_text::Whole(Dinner({{"sound-delay", {"1s"}}}, small.house), small.house).Text({}),
              "id       1\nname     Dinner\nsound    -\nrooms    -\ntext     -\nimage    -\nscreens  -\n"
              "popup    for 30 s, with an OK button\n");
}

TEST(OptionsTest, TheOptionsOfAnAnnouncementAreItsFieldsAndNothingElseIs) {
    EXPECT_FALSE(announcement_options::AreAny(
        Arguments(Arguments::Values{{"announcement", {"Dinner"}}, {"json", {}}})));
    for (const OptionDefinition& option : announcement_options::Changing({}))
        EXPECT_TRUE(announcement_options::AreAny(Arguments(Arguments::Values{{option.Key(), {"x"}}})))
            << option.names;
    EXPECT_EQ(announcement_options::Describing({}).size(), fields::All().size());
    EXPECT_EQ(announcement_options::Changing({}).size(), fields::All().size() + 2);
}

TEST(OptionsTest, WhatIsTakenOutGoesBeforeWhatIsPutIn) {
    SmallHouse small;
    Json dinner = Dinner({{"room", {"Kitchen:40", "Hall: left"}}, {"screen", {"Tablet"}}}, small.house);
    announcement_options::Apply(Arguments(Arguments::Values{{"remove-room", {"Kitchen"}},
                                                            {"room", {"Kitchen:5"}},
                                                            {"remove-screen", {"tablet"}}}),
                                small.house, dinner);
    EXPECT_EQ(announcement_text::Of("rooms", dinner, small.house), "Hall: left, Kitchen 5");
    EXPECT_EQ(announcement_text::Of("screens", dinner, small.house), "");
}

TEST(EventTextTest, AnEventIsASentenceWithTheNamesOfTheHouse) {
    SmallHouse small;
    const auto phrase = [&](const char* kind, const Json& members) {
        return event_text::Phrase(kind, members, small.house);
    };
    EXPECT_EQ(phrase("play_asked", {{"announcement", 2}}), "Bell is asked for");
    EXPECT_EQ(phrase("room_volume_changed", {{"room", 1}, {"volume", 40}}), "Kitchen is at volume 40");
    EXPECT_EQ(phrase("room_restored", {{"room", 9}, {"volume", nullptr}}), "room 9 is as it was");
    EXPECT_EQ(phrase("sound_ended", {{"error", nullptr}}), "the sound is over");
    EXPECT_EQ(phrase("sound_started", {{"file", "/media/chime"}}), "chime.wav plays");
    EXPECT_EQ(phrase("popup_hidden", {{"navigator", 11}, {"why", "time_is_up"}}),
              "the popup of Tablet is gone (time is up)");
    EXPECT_EQ(phrase("popup_shown", {{"navigator", 12},
                                     {"popup",
                                      {{"message", "Come"},
                                       {"variable", {{"device", 9}, {"variable", 4}}},
                                       {"image", nullptr},
                                       {"duration_ms", 0}}}}),
              "Television shows \"Come\" the value of 9/4 for 30 s");
    EXPECT_EQ(phrase("new_kind", {{"x", 1}}), "new kind {\"x\":1}");
    EXPECT_EQ(phrase("new_kind", Json::object()), "new kind");
}
