#include "controller/api/json/EventJson.h"

#include <gtest/gtest.h>

namespace controller {

namespace {
Event At(EventData data) {
    return {7, std::chrono::system_clock::time_point(std::chrono::milliseconds(1500)), std::move(data)};
}
} // namespace

TEST(EventJsonTest, MessageHasNumberTimeTypeAndData) {
    const Event event = At(events::RoomRestored{12, 35, true});

    EXPECT_EQ(
        event_json::Message(event, event_json::TypeOf(event), event_json::DataOf(event)),
        R"({"seq":7,"time":"1970-01-01T00:00:01.500Z","type":"room_restored","data":{"room":12,"volume":35,)"
        R"("changed_meanwhile":true}})");
}

TEST(EventJsonTest, PageIsToldThePopupWithoutItsNavigator) {
    const auto message = event_json::ForPage(
        At(events::PopupShown{3, 5, "<b>", "d.png", std::chrono::milliseconds(5000), true}));

    EXPECT_STREQ(message.type, "popup_shown");
    EXPECT_EQ(message.data,
              R"({"popup":{"number":3,"message":"<b>","image":"/api/media/d.png","ok_button":true,)"
              R"("remaining_ms":5000,"ends":"1970-01-01T00:00:06.500Z"}})");
}

TEST(EventJsonTest, ImagesComeFromTheMediaFolderOrTheWebAndFromNowhereElse) {
    const auto imageOf = [](const std::string& image) {
        const std::string data = event_json::DataOf(At(events::PopupShown{1, 5, "", image, {}, false}));
        const std::size_t start = data.find(R"("image":")") + 9;
        return data.substr(start, data.find('"', start) - start);
    };

    EXPECT_EQ(imageOf("d.png"), "/api/media/d.png");
    EXPECT_EQ(imageOf("https://example.org/x.png"), "https://example.org/x.png");
    for (const char* image : {"../d.png", "javascript:alert(1)", "data:image/png;base64,x", "/etc/passwd",
                              "d.svg", "file:///d.png", "d.wav", "//example.org/x.png"})
        EXPECT_EQ(imageOf(image), "") << image;
}

TEST(EventJsonTest, SoundsAreToldByTheNameThatAnnouncementsHave) {
    EXPECT_EQ(event_json::DataOf(At(events::SoundStarted{"/media/announcements/chime.wav"})),
              R"({"file":"chime"})");
    EXPECT_EQ(event_json::DataOf(At(events::SoundEnded{"/media/announcements/bells/big.wav", "gone"})),
              R"({"file":"bells/big","error":"gone"})");
}

TEST(EventJsonTest, WhatIsNoBusinessOfAPageIsNotTold) {
    EXPECT_EQ(event_json::ForPage(At(events::LogLine{Severity::Error, "x"})).type, nullptr);
    EXPECT_EQ(event_json::ForPage(At(events::VariableChanged{1, 2, "x"})).type, nullptr);
}

TEST(EventJsonTest, WatchersAreToldOfPagesThatComeAndGo) {
    const Event event = At(events::PagesChanged{11, 2});

    EXPECT_STREQ(event_json::TypeOf(event), "pages_changed");
    EXPECT_EQ(event_json::DataOf(event), R"({"navigator":11,"pages":2})");
    EXPECT_EQ(event_json::ForPage(event).type, nullptr);
}

TEST(EventJsonTest, BytesThatAreNoTextAreReplaced) {
    EXPECT_EQ(event_json::DataOf(At(events::StateNotSaved{"a\xff"})), "{\"reason\":\"a\xEF\xBF\xBD\"}");
}

} // namespace controller
