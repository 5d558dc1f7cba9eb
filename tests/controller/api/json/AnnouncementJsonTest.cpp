#include "controller/api/json/AnnouncementJson.h"

#include "controller/api/ApiError.h"
#include "controller/api/json/JsonObject.h"
#include "host/VqXML.h"

#include <gtest/gtest.h>

namespace controller {

using nlohmann::json;

namespace {

constexpr const char* kXml =
    "<announcement><id>1</id><name>Dinner</name><audio><file>chime</file><delay>500</delay></audio>"
    "<video><file>d.png</file><text>a &lt;b&gt;</text><delay>10</delay><timeout>5000</timeout>"
    "<displayID>9</displayID><variableID>4</variableID><variableName>x</variableName><OKButton>false</"
    "OKButton>"
    "</video><rooms><room><id>12</id><volume>40</volume></room></rooms><navigators><navigator><id>5</id>"
    "<room_id>12</room_id><onscreen>true</onscreen></navigator></navigators></announcement>";

constexpr const char* kJson =
    R"({"id":1,"name":"Dinner","audio":{"file":"chime","delay_ms":500},"video":{"image":"d.png","text":"a <b>",)"
    R"("delay_ms":10,"timeout_ms":5000,"ok_button":false,"variable":{"device":9,"variable":4,"name":"x"}},)"
    R"("rooms":[{"id":12,"volume":40}],"navigators":[{"id":5,"room":12,"onscreen":true}]})";

std::string FromXml(const std::string& xml) {
    const auto document = VqXML::CreateXmlDocument(xml);
    return announcement_json::FromXml(*document->GetRootNode()).dump();
}

/// "what | what would be right" of a refused announcement.
std::string Refusal(const std::string& text, std::uint32_t id = 0) {
    try {
        (void)announcement_json::ToXml(ParseJson(text), id);
        return "taken";
    } catch (const ApiError& error) {
        EXPECT_EQ(error.Status(), 400U);
        return std::string(error.what()) + " | " + error.Right();
    }
}

} // namespace

TEST(AnnouncementJsonTest, EveryValueIsShown) {
    EXPECT_EQ(FromXml(kXml), kJson);
}

TEST(AnnouncementJsonTest, EveryValueIsWritten) {
    EXPECT_EQ(announcement_json::ToXml(json::parse(kJson), 1), kXml);
}

TEST(AnnouncementJsonTest, WhatIsLeftOutHasItsDefaults) {
    const std::string xml = announcement_json::ToXml(json::parse(R"({"name":"n"})"), 0);

    EXPECT_EQ(FromXml(xml),
              R"({"id":0,"name":"n","audio":{"file":"","delay_ms":0},"video":{"image":"","text":"",)"
              R"("delay_ms":0,"timeout_ms":0,"ok_button":true,"variable":null},"rooms":[],)"
              R"("navigators":[]})");
    EXPECT_EQ(xml.find("<id>"), std::string::npos);
}

TEST(AnnouncementJsonTest, WhatIsNoAnnouncementIsRefusedWithItsPlace) {
    EXPECT_EQ(Refusal("[]"), "the body is no object | a JSON object");
    EXPECT_EQ(Refusal("{}"), "name is missing | ");
    EXPECT_EQ(Refusal(R"({"name":5})"), "name: 5 is no text | a text");
    EXPECT_EQ(Refusal(R"({"name":"n","audio":{"delay_ms":-5}})"),
              "audio.delay_ms: -5 is out of range | an integer from 0 to 4294967295");
    EXPECT_EQ(Refusal(R"({"name":"n","audio":{"delay_ms":18446744073709551615}})"),
              "audio.delay_ms: 18446744073709551615 is out of range | an integer from 0 to 4294967295");
    EXPECT_EQ(Refusal(R"({"name":"n","video":{"delay_ms":1.5}})"),
              "video.delay_ms: 1.5 is no integer | an integer from 0 to 4294967295");
    EXPECT_EQ(Refusal(R"({"name":"n","video":{"variable":{"device":0,"variable":1}}})"),
              "video.variable.device: 0 is out of range | an integer from 1 to 4294967295");
    EXPECT_EQ(Refusal(R"({"name":"n","rooms":[{"id":1},{"id":1}]})"),
              "rooms[1].id stands in the list already | each id once");
    EXPECT_EQ(Refusal(R"({"name":"n","rooms":[{"id":1,"volume":101}]})"),
              "rooms[0].volume: 101 is out of range | an integer from -1 to 100");
    EXPECT_EQ(Refusal(R"({"name":"n","navigators":{}})"), "navigators is no list | a list of objects");
    EXPECT_EQ(Refusal(R"({"name":"n","vidoe":{}})"),
              "unknown member vidoe | only audio, id, name, navigators, rooms, video");
    EXPECT_EQ(Refusal(R"({"name":"n","id":2})", 1), "id is not the announcement's | 1, or nothing");
    EXPECT_EQ(Refusal(R"({"name":"n","id":2})"),
              "id is not the announcement's | no id: the agent chooses it");
}

TEST(AnnouncementJsonTest, CharactersThatXmlCannotHoldAreRefused) {
    EXPECT_EQ(Refusal(R"({"name":"a\u0001"})"), "a text of the announcement holds a character that cannot be "
                                                "kept | no control characters but tab, line "
                                                "feed and carriage return, and no U+FFFE or U+FFFF");
    EXPECT_EQ(Refusal(R"({"name":"a\t\r\nb"})"), "taken");
}

TEST(AnnouncementJsonTest, BodyThatIsNoJsonIsRefused) {
    EXPECT_EQ(Refusal("{"), "the body is no JSON, at byte 2 | a JSON object in UTF-8");
    EXPECT_EQ(Refusal(""), "the body is no JSON, at byte 1 | a JSON object in UTF-8");
    EXPECT_EQ(Refusal(std::string(100000, '[')), "the body nests too deep | at most 32 levels");
    EXPECT_EQ(Refusal("{\"name\":\"\xff\"}").find("the body is no JSON"), 0U);
}

TEST(AnnouncementJsonTest, NumberThatNothingCanHoldIsRefused) {
    EXPECT_EQ(Refusal(R"({"name":1e400})"),
              "the body holds a number that is too large: '1e400' | at most 1.7e308");
}

TEST(AnnouncementJsonTest, ListHoldsEveryAnnouncement) {
    const std::string list =
        announcement_json::ListFromXml(std::string("<announcements>") + kXml + kXml + "</announcements>");

    EXPECT_EQ(list, std::string(R"({"announcements":[)") + kJson + "," + kJson + "]}");
    EXPECT_EQ(announcement_json::ListFromXml("<announcements/>"), R"({"announcements":[]})");
}

} // namespace controller
