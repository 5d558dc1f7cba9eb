#include "announce/announcements/Fields.h"

#include "tests/announce/SmallHouse.h"

#include <gtest/gtest.h>

namespace {

class FieldsTest : public testing::Test {
protected:
    Json Read(const char* key, const std::string& text) {
        return fields::Read(fields::Named(key), key, text, m_small.house);
    }

    /// What is shown of a field that has this value.
    std::string Phrase(const char* key, const Json& value) {
        Json announcement = fields::Nothing();
        announcement[fields::Named(key).member] = value;
        return fields::Phrase(fields::Named(key), announcement, m_small.house);
    }

    SmallHouse m_small;
};

} // namespace

TEST_F(FieldsTest, WithoutAWordAnAnnouncementIsEmptyAndItsPopupHasAButton) {
    EXPECT_EQ(nlohmann::json(fields::Nothing()), nlohmann::json::parse(R"({
        "name": "", "audio": {"file": "", "delay_ms": 0}, "rooms": [], "navigators": [],
        "video": {"image": "", "text": "", "delay_ms": 0, "timeout_ms": 0, "ok_button": true, "variable": null},
        "urgent": false})"));
}

TEST_F(FieldsTest, NamesBecomeWhatTheApiHasForThem) {
    EXPECT_EQ(Read("sound", "chime.wav"), "chime");
    EXPECT_EQ(Read("image", "door.png"), "door.png");
    EXPECT_EQ(Read("image", "https://house/x.png"), "https://house/x.png");
    EXPECT_EQ(Read("variable", "outside"), (Json{{"device", 9}, {"variable", 4}, {"name", "Outside"}}));
    EXPECT_EQ(Read("sound_delay", "1.5s"), 1500);
    EXPECT_EQ(Read("text", "none"), "none");
}

TEST_F(FieldsTest, NoneAndNothingTakeAway) {
    for (const char* text : {"", "none"}) {
        EXPECT_EQ(Read("sound", text), "");
        EXPECT_EQ(Read("image", text), "");
        EXPECT_EQ(Read("variable", text), nullptr);
    }
    EXPECT_EQ(m_small.asked, std::vector<std::string>{});
}

TEST_F(FieldsTest, YesAndNoHaveTheirOtherWordsToo) {
    for (const char* text : {"yes", "YES", "true", "on"})
        EXPECT_EQ(Read("ok_button", text), true) << text;
    for (const char* text : {"no", "False", "off"})
        EXPECT_EQ(Read("ok_button", text), false) << text;
    const Failure failure = FailureOf([&] { (void)Read("ok_button", "maybe"); });
    EXPECT_EQ(failure.Status(), ExitStatus::Usage);
    EXPECT_EQ(failure.Reason(), "ok_button: \"maybe\" is neither; right: yes or no");
}

TEST_F(FieldsTest, WhatIsWrittenIsReadAsTheSame) {
    Json announcement = fields::Nothing();
    announcement["name"] = "Dinner";
    announcement["audio"] = {{"file", "chime"}, {"delay_ms", 90000}};
    announcement["video"] = {
        {"image", "door.png"}, {"text", "none"},
        {"delay_ms", 1},       {"timeout_ms", 5000},
        {"ok_button", false},  {"variable", {{"device", 9}, {"variable", 5}, {"name", ""}}}};
    for (const Json& one : {announcement, fields::Nothing()}) {
        for (const fields::Field& field : fields::All()) {
            if (field.IsList())
                continue;
            EXPECT_EQ(Read(field.key.c_str(), fields::Write(field, one)), one.at(field.member)) << field.key;
        }
    }
}

TEST_F(FieldsTest, AViewSaysAValueInWordsAndNothingOfWhatIsNotThere) {
    EXPECT_EQ(Phrase("sound", "chime"), "chime.wav");
    EXPECT_EQ(Phrase("sound_delay", 1500), "1.5 s later");
    EXPECT_EQ(Phrase("popup_time", 5000), "for 5 s");
    EXPECT_EQ(Phrase("popup_time", 0), "for 30 s");
    EXPECT_EQ(Phrase("ok_button", true), "with an OK button");
    EXPECT_EQ(Phrase("ok_button", false), "without an OK button");
    EXPECT_EQ(Phrase("urgent", true), "urgent");
    EXPECT_EQ(Phrase("urgent", false), "");
    EXPECT_EQ(Phrase("variable", {{"device", 9}, {"variable", 4}, {"name", "Outside"}}),
              "the value of Outside");
    EXPECT_EQ(Phrase("variable", {{"device", 9}, {"variable", 5}, {"name", ""}}),
              "the value of variable 9/5");
    for (const char* key :
         {"name", "sound", "sound_delay", "rooms", "text", "variable", "image", "screens", "popup_delay"})
        EXPECT_EQ(Phrase(key, fields::Named(key).otherwise), "") << key;
}
