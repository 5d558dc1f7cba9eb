#include "controller/api/RehearsalTimeline.h"

#include "controller/ModuleFile.h"

#include <gtest/gtest.h>

namespace controller {

namespace {

using Texts = std::vector<std::string>;

template <class Value>
std::string Shown(const char* name, const std::optional<Value>& value) {
    if (!value)
        return "";
    if constexpr (std::is_same_v<Value, std::string>)
        return std::string(" ") + name + " '" + *value + "'";
    else
        return std::string(" ") + name + " " + std::to_string(*value);
}

/// What happens, one text each; without what the agent says beside it, unless that is an error.
Texts Told(const view::Rehearsal& rehearsed) {
    Texts told;
    for (const view::Moment& one : rehearsed.timeline) {
        if (one.what == "log" && one.level != "error")
            continue;
        std::string text = std::to_string(one.atMs) + " " + one.what;
        text += Shown("announcement", one.announcement) + Shown("room", one.room) +
                Shown("volume", one.volume) + Shown("file", one.file) + Shown("navigator", one.navigator);
        if (one.variable)
            text += " variable " + std::to_string(one.variable->device) + "/" +
                    std::to_string(one.variable->variable);
        told.push_back(text + Shown("message", one.message) + Shown("image", one.image) +
                       Shown("for", one.durationMs) + Shown("ok", one.hasOkButton) + Shown("text", one.text));
    }
    return told;
}

rehearsal_timeline::Order OrderOf(const Announcement& announcement) {
    rehearsal_timeline::Order order;
    order.announcement = announcement;
    order.announcement.id = 7;
    order.streamReadyMs = 200;
    order.soundMs = 900;
    order.rooms = {1};
    order.navigators = {11};
    return order;
}

view::Rehearsal Rehearsed(const rehearsal_timeline::Order& order) {
    return rehearsal_timeline::Run(FindModuleFile().string(), order);
}

Announcement Supper() {
    Announcement announcement;
    announcement.name = "Supper";
    announcement.audio.file = "gong";
    announcement.video.text = "Supper & more";
    announcement.video.timeoutMs = 6000;
    announcement.rooms = {{1, 40}};
    announcement.navigators = {{11, 1, true}};
    return announcement;
}

} // namespace

TEST(RehearsalTimelineTest, SoundAndPopupRunSideBySideAndTheEndIsThatOfTheLaterOne) {
    const auto rehearsed = Rehearsed(OrderOf(Supper()));
    EXPECT_EQ(rehearsed.announcement, 7U);
    EXPECT_TRUE(rehearsed.isComplete);
    EXPECT_EQ(rehearsed.lengthMs, 6000U);
    EXPECT_EQ(Told(rehearsed),
              (Texts{
                  "0 started announcement 7",
                  "0 stream_opened",
                  "0 screens_woken room 1",
                  "0 popup_shown navigator 11 message 'Supper & more' image '' for 6000 ok 1",
                  "200 stream_ready",
                  "200 room_set_up room 1",
                  "1200 volume_set room 1 volume 40",
                  "1200 sound_started file 'gong'",
                  "2100 sound_ended",
                  "4100 room_restored room 1",
                  "4100 stream_closed",
                  "6000 screens_rested room 1",
                  "6000 popup_hidden navigator 11",
                  "6000 ended announcement 7",
              }));
}

TEST(RehearsalTimelineTest, WhatIsNotThereIsNeitherHeardNorSeenAndIsSaid) {
    Announcement announcement = Supper();
    announcement.rooms.push_back({99, 20});
    announcement.navigators.push_back({98, 1, true});
    auto order = OrderOf(announcement);
    order.soundMs = 0;
    order.soundTrouble = "it is gone";
    EXPECT_EQ(Told(Rehearsed(order)),
              (Texts{
                  "0 started announcement 7",
                  "0 room_missing room 99",
                  "0 stream_opened",
                  "0 screens_woken room 1",
                  "0 popup_shown navigator 11 message 'Supper & more' image '' for 6000 ok 1",
                  "0 screen_missing navigator 98",
                  "200 stream_ready",
                  "200 room_set_up room 1",
                  "1200 volume_set room 1 volume 40",
                  "1200 sound_missing file 'gong' text 'it is gone'",
                  "3200 room_restored room 1",
                  "3200 stream_closed",
                  "6000 screens_rested room 1",
                  "6000 popup_hidden navigator 11",
                  "6000 ended announcement 7",
              }));
}

TEST(RehearsalTimelineTest, DelaysMoveWhatTheyAreOfAndNothingElse) {
    Announcement announcement = Supper();
    announcement.audio.delayMs = 3000;
    announcement.video.delayMs = 500;
    const Texts told = Told(Rehearsed(OrderOf(announcement)));
    const auto has = [&told](const std::string& text) {
        return std::find(told.begin(), told.end(), text) != told.end();
    };
    EXPECT_TRUE(has("0 screens_woken room 1"));
    EXPECT_TRUE(has("500 popup_shown navigator 11 message 'Supper & more' image '' for 6000 ok 1"));
    EXPECT_TRUE(has("200 room_set_up room 1"));
    EXPECT_TRUE(has("3200 sound_started file 'gong'"));
    EXPECT_TRUE(has("4100 sound_ended"));
    EXPECT_TRUE(has("6100 stream_closed"));
    EXPECT_TRUE(has("6500 popup_hidden navigator 11"));
}

TEST(RehearsalTimelineTest, AMessageThatFollowsAVariableNamesIt) {
    Announcement announcement = Supper();
    announcement.audio = {};
    announcement.rooms = {};
    announcement.video.variable = Announcement::Binding{5, 9, "Outside"};
    announcement.video.timeoutMs = 2500;
    EXPECT_EQ(Told(Rehearsed(OrderOf(announcement))),
              (Texts{
                  "0 started announcement 7",
                  "0 popup_shown navigator 11 variable 5/9 image '' for 2500 ok 1",
                  "2500 popup_hidden navigator 11",
                  "3000 ended announcement 7",
              }));
}

TEST(RehearsalTimelineTest, AnAnnouncementWithNothingInItEndsWithTheNextPoll) {
    Announcement announcement;
    announcement.name = "Nothing";
    const auto rehearsed = Rehearsed(OrderOf(announcement));
    EXPECT_TRUE(rehearsed.isComplete);
    EXPECT_EQ(rehearsed.lengthMs, 1000U);
    EXPECT_EQ(Told(rehearsed), (Texts{"0 started announcement 7", "1000 ended announcement 7"}));
}

TEST(RehearsalTimelineTest, WhatIsNotOverInTimeIsToldAsFarAsItWent) {
    Announcement announcement = Supper();
    announcement.audio = {};
    announcement.rooms = {};
    announcement.video.timeoutMs = 900000;
    const auto rehearsed = Rehearsed(OrderOf(announcement));
    EXPECT_FALSE(rehearsed.isComplete);
    EXPECT_EQ(Told(rehearsed),
              (Texts{
                  "0 started announcement 7",
                  "0 popup_shown navigator 11 message 'Supper & more' image '' for 900000 ok 1",
                  "900000 popup_hidden navigator 11",
              }));
}

TEST(RehearsalTimelineTest, AModuleThatIsNotThereIsAnError) {
    EXPECT_THROW((void)rehearsal_timeline::Run("no/such/module.so", OrderOf(Supper())), std::runtime_error);
}

} // namespace controller
