#include "controller/api/json/AnnouncementJson.h"

#include "controller/api/ApiError.h"
#include "controller/api/json/ParseJson.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace controller {

namespace {

constexpr const char* kJson =
    R"({"id":1,"name":"Dinner","audio":{"file":"chime","delay_ms":500},"video":{"image":"d.png","text":"a <b>",)"
    R"("delay_ms":10,"timeout_ms":5000,"ok_button":false,"variable":{"device":9,"variable":4,"name":"x"}},)"
    R"("rooms":[{"id":12,"volume":40}],"navigators":[{"id":5,"room":12,"onscreen":true}],"tags":["a","b"],)"
    R"("urgent":true})";

std::string Again(const std::string& text, std::uint32_t id) {
    return announcement_json::ToText(announcement_json::Read(ParseJson(text), id));
}

/// "what | what would be right" of a refused announcement.
std::string Refusal(const std::string& text, std::uint32_t id = 0) {
    try {
        (void)announcement_json::Read(ParseJson(text), id);
        return "taken";
    } catch (const ApiError& error) {
        EXPECT_EQ(error.Status(), 400U);
        return std::string(error.what()) + " | " + error.Right();
    }
}

std::string RoomRefusal(const std::string& text) {
    try {
        (void)announcement_json::ReadRoom(ParseJson(text), 12);
        return "taken";
    } catch (const ApiError& error) {
        return std::string(error.what()) + " | " + error.Right();
    }
}

} // namespace

TEST(AnnouncementJsonTest, EveryValueIsReadAndWritten) {
    EXPECT_EQ(Again(kJson, 1), kJson);
}

TEST(AnnouncementJsonTest, WhatIsLeftOutHasItsDefaults) {
    constexpr const char* kDefaults =
        R"({"id":0,"name":"n","audio":{"file":"","delay_ms":0},"video":{"image":"","text":"",)"
        R"("delay_ms":0,"timeout_ms":0,"ok_button":true,"variable":null},"rooms":[],)"
        R"("navigators":[]})";

    EXPECT_EQ(Again(R"({"name":"n"})", 0), kDefaults);
    EXPECT_EQ(Again(R"({"id":null,"name":"n","audio":null,"video":{"variable":null,"ok_button":null},)"
                    R"("rooms":null,"tags":null,"urgent":null})",
                    0),
              kDefaults);
    EXPECT_EQ(Again(R"({"name":"n","rooms":[{"id":1}],"navigators":[{"id":2}]})", 7),
              R"({"id":7,"name":"n","audio":{"file":"","delay_ms":0},"video":{"image":"","text":"",)"
              R"("delay_ms":0,"timeout_ms":0,"ok_button":true,"variable":null},)"
              R"("rooms":[{"id":1,"volume":-1}],"navigators":[{"id":2,"room":0,"onscreen":true}]})");
}

TEST(AnnouncementJsonTest, WhatIsNoAnnouncementIsRefusedWithItsPlace) {
    EXPECT_EQ(Refusal("[]"), "the body is no object | a JSON object");
    EXPECT_EQ(Refusal("{}"), "name is missing | ");
    EXPECT_EQ(Refusal(R"({"name":null})"), "name is missing | ");
    EXPECT_EQ(Refusal(R"({"name":5})"), "name: 5 is no text | a text");
    EXPECT_EQ(Refusal(R"({"name":"n","audio":[]})"), "audio is no object | a JSON object");
    EXPECT_EQ(Refusal(R"({"name":"n","audio":{"delay_ms":-5}})"),
              "audio.delay_ms: -5 is out of range | an integer from 0 to 4294967295");
    EXPECT_EQ(Refusal(R"({"name":"n","audio":{"delay_ms":18446744073709551615}})"),
              "audio.delay_ms: 18446744073709551615 is out of range | an integer from 0 to 4294967295");
    EXPECT_EQ(Refusal(R"({"name":"n","video":{"delay_ms":1.5}})"),
              "video.delay_ms: 1.5 is no integer | an integer from 0 to 4294967295");
    EXPECT_EQ(Refusal(R"({"name":"n","video":{"ok_button":"yes"}})"),
              "video.ok_button: \"yes\" is no truth value | true or false");
    EXPECT_EQ(Refusal(R"({"name":"n","video":{"variable":{"device":0,"variable":1}}})"),
              "video.variable.device: 0 is out of range | an integer from 1 to 4294967295");
    EXPECT_EQ(Refusal(R"({"name":"n","rooms":[{"id":1,"volume":101}]})"),
              "rooms[0].volume: 101 is out of range | an integer from -1 to 100");
    EXPECT_EQ(Refusal(R"({"name":"n","rooms":[{"id":1},{"id":2},7]})"),
              "rooms[2] is no object | a JSON object");
    EXPECT_EQ(Refusal(R"({"name":"n","navigators":{}})"), "navigators is no list | a list of objects");
    EXPECT_EQ(Refusal(R"({"name":"n","vidoe":{}})"),
              "unknown member vidoe | only audio, id, name, navigators, rooms, tags, urgent, video");
    EXPECT_EQ(Refusal(R"({"name":"n","rooms":[{"id":1,"level":5}]})"),
              "unknown member rooms[0].level | only id, volume");
}

TEST(AnnouncementJsonTest, LimitIsTakenAndOneMoreRefused) {
    const auto named = [](std::size_t bytes) {
        return R"({"name":")" + std::string(bytes, 'x') + "\"}";
    };
    EXPECT_EQ(Refusal(named(16384)), "taken");
    EXPECT_EQ(Refusal(named(16385)), "name is too long: 16385 bytes | at most 16384 bytes");
    const auto list = [](const std::string& name, std::size_t entries, const auto& entry) {
        std::string text = R"({"name":"n",")" + name + "\":[";
        for (std::size_t index = 1; index <= entries; ++index)
            text += (index != 1 ? "," : "") + entry(std::to_string(index));
        return text + "]}";
    };
    const auto target = [](const std::string& id) {
        return "{\"id\":" + id + "}";
    };
    const auto tag = [](const std::string& number) {
        return '"' + number + '"';
    };
    for (const char* name : {"rooms", "navigators"}) {
        EXPECT_EQ(Refusal(list(name, 1000, target)), "taken");
        EXPECT_EQ(Refusal(list(name, 1001, target)),
                  std::string(name) + " is too long | at most 1000 entries");
    }
    EXPECT_EQ(Refusal(list("tags", 20, tag)), "taken");
    EXPECT_EQ(Refusal(list("tags", 21, tag)), "tags is too long | at most 20 entries");
}

TEST(AnnouncementJsonTest, NothingStandsInAListTwice) {
    EXPECT_EQ(Refusal(R"({"name":"n","rooms":[{"id":1},{"id":1}]})"),
              "rooms[1].id stands in the list already | each id once");
    EXPECT_EQ(Refusal(R"({"name":"n","navigators":[{"id":1},{"id":2},{"id":1,"room":3}]})"),
              "navigators[2].id stands in the list already | each id once");
    EXPECT_EQ(Refusal(R"({"name":"n","tags":["a","b","a"]})"),
              "tags[2] stands in the list already | each text once");
}

TEST(AnnouncementJsonTest, TagsAreShortTexts) {
    EXPECT_EQ(Refusal(R"({"name":"n","tags":"a"})"), "tags is no list | a list of texts");
    EXPECT_EQ(Refusal(R"({"name":"n","tags":["a",5]})"), "tags[1]: 5 is no text | a text");
    EXPECT_EQ(Refusal(R"({"name":"n","tags":[")" + std::string(50, 't') + "\"]}"), "taken");
    EXPECT_EQ(Refusal(R"({"name":"n","tags":[")" + std::string(51, 't') + "\"]}"),
              "tags[0] is too long: 51 bytes | at most 50 bytes");
}

TEST(AnnouncementJsonTest, IdIsThatOfTheAddressOrLeftOut) {
    EXPECT_EQ(Refusal(R"({"name":"n","id":2})", 1), "id is not the announcement's | 1, or nothing");
    EXPECT_EQ(Refusal(R"({"name":"n","id":0})", 1), "id is not the announcement's | 1, or nothing");
    EXPECT_EQ(Refusal(R"({"name":"n","id":2})"),
              "id is not the announcement's | no id: the agent chooses it");
    EXPECT_EQ(Refusal(R"({"name":"n","id":1})", 1), "taken");
    EXPECT_EQ(announcement_json::Read(ParseJson(R"({"name":"n"})"), 9).id, 9U);
}

TEST(AnnouncementJsonTest, PathNamesTheWholeWhereItIsPartOfABody) {
    try {
        (void)announcement_json::Read(ParseJson(R"({"name":"n","id":2})"), 0, "announcement");
        ADD_FAILURE() << "taken";
    } catch (const ApiError& error) {
        EXPECT_STREQ(error.what(), "announcement.id is not the announcement's");
    }
    try {
        (void)announcement_json::Read(ParseJson(R"({"audio":{"file":1},"name":"n"})"), 0, "announcement");
        ADD_FAILURE() << "taken";
    } catch (const ApiError& error) {
        EXPECT_STREQ(error.what(), "announcement.audio.file: 1 is no text");
    }
}

TEST(AnnouncementJsonTest, CharactersThatXmlCannotHoldAreRefusedInEveryText) {
    const std::string refusal = "a text of the announcement holds a character that cannot be kept | no "
                                "control characters but tab, line feed and carriage return, and no U+FFFE or "
                                "U+FFFF";
    for (const char* bad : {R"(a\u0001)", R"(\u0000b)", R"(\u001f)", R"(\ufffe)", R"(a\uffffb)"}) {
        const std::string text = '"' + std::string(bad) + '"';
        EXPECT_EQ(Refusal("{\"name\":" + text + "}"), refusal) << bad;
        EXPECT_EQ(Refusal(R"({"name":"n","audio":{"file":)" + text + "}}"), refusal) << bad;
        EXPECT_EQ(Refusal(R"({"name":"n","video":{"image":)" + text + "}}"), refusal) << bad;
        EXPECT_EQ(Refusal(R"({"name":"n","video":{"text":)" + text + "}}"), refusal) << bad;
        EXPECT_EQ(
            Refusal(R"({"name":"n","video":{"variable":{"device":1,"variable":1,"name":)" + text + "}}}"),
            refusal)
            << bad;
        EXPECT_EQ(Refusal(R"({"name":"n","tags":[)" + text + "]}"), refusal) << bad;
    }
    EXPECT_EQ(Refusal(R"({"name":"a\t\r\nb\u007f\ufffd\ud83d\udfff"})"), "taken");
}

TEST(AnnouncementJsonTest, RoomAndNavigatorAreReadWithoutTheirIds) {
    const auto room = announcement_json::ReadRoom(ParseJson(R"({"volume":40})"), 12);
    EXPECT_EQ(fields::ToText(room), R"({"id":12,"volume":40})");
    EXPECT_EQ(fields::ToText(announcement_json::ReadRoom(ParseJson("{}"), 3)), R"({"id":3,"volume":-1})");
    EXPECT_EQ(RoomRefusal(R"({"id":12,"volume":40})"), "unknown member id | only volume");
    EXPECT_EQ(RoomRefusal(R"({"volume":-2})"), "volume: -2 is out of range | an integer from -1 to 100");

    const auto navigator = announcement_json::ReadNavigator(ParseJson(R"({"room":12,"onscreen":false})"), 5);
    EXPECT_EQ(fields::ToText(navigator), R"({"id":5,"room":12,"onscreen":false})");
}

TEST(AnnouncementJsonTest, TextsAreEscapedAndBytesThatAreNoTextReplaced) {
    Announcement announcement;
    announcement.name = "\"\\/\b\f\n\r\t\x01\x1f\x7f<é€😀";
    announcement.audio.file = "a\xff\xe2\x82z\xf0\x9f";

    const std::string text = announcement_json::ToText(announcement);

    EXPECT_EQ(text.find(R"({"id":0,"name":"\"\\/\b\f\n\r\t\u0001\u001f)"
                        "\x7f<é€😀\",\"audio\":{\"file\":\"a\xEF\xBF\xBD\xEF\xBF\xBDz\xEF\xBF\xBD\","),
              0U)
        << text;
}

} // namespace controller
