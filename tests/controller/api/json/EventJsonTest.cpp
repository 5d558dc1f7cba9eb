#include "controller/api/json/EventJson.h"

#include "controller/api/json/AnnouncementJson.h"

#include <gtest/gtest.h>

namespace controller {

namespace {

Event At(EventData data) {
    return {7, std::chrono::system_clock::time_point(std::chrono::milliseconds(1500)), std::move(data)};
}

std::string Framed(const std::string& type, const std::string& data) {
    return R"({"seq":7,"time":"1970-01-01T00:00:01.500Z","type":")" + type + R"(","data":)" + data + "}";
}

std::string DataOf(const Event& event) {
    const std::string message = event_json::Message(event);
    const std::string framed = Framed(event_json::TypeOf(event), "");
    const std::string start = framed.substr(0, framed.size() - 1);
    EXPECT_EQ(message.substr(0, start.size()), start);
    return message.substr(start.size(), message.size() - start.size() - 1);
}

} // namespace

TEST(EventJsonTest, MessageHasNumberTimeTypeAndData) {
    const Event event = At(events::RoomRestored{12, 35, true});

    EXPECT_EQ(
        event_json::Message(event),
        R"({"seq":7,"time":"1970-01-01T00:00:01.500Z","type":"room_restored","data":{"room":12,"volume":35,)"
        R"("changed_meanwhile":true}})");
}

TEST(EventJsonTest, PageIsToldThePopupWithoutItsNavigator) {
    const auto message = event_json::PageMessage(
        At(events::PopupShown{3, 5, "<b>", "d.png", std::chrono::milliseconds(5000), true}));

    EXPECT_EQ(message, Framed("popup_shown", R"({"popup":{"number":3,"message":"<b>",)"
                                             R"("image":"/api/media/d.png","ok_button":true,)"
                                             R"("remaining_ms":5000,"ends":"1970-01-01T00:00:06.500Z"}})"));
}

TEST(EventJsonTest, ImagesComeFromTheMediaFolderOrTheWebAndFromNowhereElse) {
    const auto imageOf = [](const std::string& image) {
        const std::string data = DataOf(At(events::PopupShown{1, 5, "", image, {}, false}));
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
    EXPECT_EQ(DataOf(At(events::SoundStarted{"/media/announcements/chime.wav"})), R"({"file":"chime"})");
    EXPECT_EQ(DataOf(At(events::SoundEnded{"/media/announcements/bells/big.wav", "gone"})),
              R"({"file":"bells/big","error":"gone"})");
}

TEST(EventJsonTest, WhatIsNoBusinessOfAPageIsNotTold) {
    EXPECT_EQ(event_json::PageMessage(At(events::LogLine{Severity::Error, "x"})), std::nullopt);
    EXPECT_EQ(event_json::PageMessage(At(events::VariableChanged{1, 2, "x"})), std::nullopt);
}

TEST(EventJsonTest, WatchersAreToldOfPagesThatComeAndGo) {
    const Event event = At(events::PagesChanged{11, 2});

    EXPECT_STREQ(event_json::TypeOf(event), "pages_changed");
    EXPECT_EQ(DataOf(event), R"({"navigator":11,"pages":2,"size":null,"armed":null})");
    EXPECT_EQ(event_json::PageMessage(event), std::nullopt);
}

TEST(EventJsonTest, BytesThatAreNoTextAreReplaced) {
    EXPECT_EQ(DataOf(At(events::StateNotSaved{"a\xff"})), "{\"reason\":\"a\xEF\xBF\xBD\"}");
}

TEST(EventJsonTest, EveryKindIsTold) {
    using namespace events;
    const std::vector<std::pair<EventData, std::string>> kinds{
        {PlayAsked{1, 4}, R"(play_asked {"announcement":1,"entry":4})"},
        {QueueChanged{{{4, 1, "Dinner", std::chrono::system_clock::time_point()}}},
         R"(queue_changed {"queue":[{"entry":4,"announcement":1,"name":"Dinner",)"
         R"("asked_at":"1970-01-01T00:00:00.000Z"}]})"},
        {AnnouncementStarted{1}, R"(announcement_started {"announcement":1})"},
        {PlayingChanged{}, R"(playing_changed {"playing":null})"},
        {AnnouncementStopped{1}, R"(announcement_stopped {"announcement":1})"},
        {AnnouncementEnded{1}, R"(announcement_ended {"announcement":1})"},
        {AnnouncementStored{1}, R"(announcement_stored {"announcement":1})"},
        {AnnouncementRemoved{1}, R"(announcement_removed {"announcement":1})"},
        {RoomSetUp{12, 35}, R"(room_set_up {"room":12,"volume":35})"},
        {RoomVolumeChanged{12, 40}, R"(room_volume_changed {"room":12,"volume":40})"},
        {RoomRestored{12, 35, false}, R"(room_restored {"room":12,"volume":35,"changed_meanwhile":false})"},
        {RoomOutputFailed{12, "gone"}, R"(room_output_failed {"room":12,"reason":"gone"})"},
        {RoomHealthChanged{12, RoomHealth::Silent, "gone"},
         R"(room_health_changed {"room":12,"health":"silent","reason":"gone"})"},
        {ScreensWoken{12}, R"(screens_woken {"room":12})"},
        {ScreensRested{12}, R"(screens_rested {"room":12})"},
        {SoundStarted{"/media/announcements/a.wav"}, R"(sound_started {"file":"a"})"},
        {SoundEnded{"/media/announcements/a.wav", ""}, R"(sound_ended {"file":"a","error":null})"},
        {PopupShown{7, 5, "m", "", std::chrono::milliseconds(500), false},
         R"(popup_shown {"navigator":5,"popup":{"number":7,"message":"m","image":"","ok_button":false,)"
         R"("remaining_ms":500,"ends":"1970-01-01T00:00:02.000Z"}})"},
        {PopupChanged{7, 5, "n"}, R"(popup_changed {"navigator":5,"number":7,"message":"n"})"},
        {PopupHidden{7, 5, PopupEnd::Replaced},
         R"(popup_hidden {"navigator":5,"number":7,"why":"replaced"})"},
        {PagesChanged{5, 1}, R"(pages_changed {"navigator":5,"pages":1,"size":null,"armed":null})"},
        {VariableChanged{9, 4, "v"}, R"(variable_changed {"device":9,"variable":4,"value":"v"})"},
        {MediaStored{"a.wav"}, R"(media_stored {"name":"a.wav"})"},
        {MediaRemoved{"a.wav"}, R"(media_removed {"name":"a.wav"})"},
        {VoiceFailed{"Anna", "gone"}, R"(voice_failed {"voice":"Anna","reason":"gone"})"},
        {VoiceRecovered{"Anna"}, R"(voice_recovered {"voice":"Anna"})"},
        {StateSaved{}, "state_saved {}"},
        {StateNotSaved{"full"}, R"(state_not_saved {"reason":"full"})"},
        {LogLine{Severity::Warning, "t"}, R"(log {"level":"warning","text":"t"})"}};
    ASSERT_EQ(kinds.size(), std::variant_size_v<EventData>);
    for (const auto& [data, told] : kinds) {
        const Event event = At(data);
        EXPECT_EQ(event_json::TypeOf(event) + (" " + DataOf(event)), told);
    }
}

TEST(EventJsonTest, PageIsToldWhatConcernsIt) {
    using events::PopupEnd;
    EXPECT_EQ(event_json::PageMessage(At(events::ScreensWoken{12})), Framed("wake", "{}"));
    EXPECT_EQ(event_json::PageMessage(At(events::ScreensRested{12})), Framed("rest", "{}"));
    EXPECT_EQ(event_json::PageMessage(At(events::PopupChanged{7, 5, "n"})),
              Framed("popup_changed", R"({"number":7,"message":"n"})"));
    const auto hidden = [](PopupEnd why) {
        return event_json::PageMessage(At(events::PopupHidden{7, 5, why}));
    };
    EXPECT_EQ(hidden(PopupEnd::TimeIsUp), Framed("popup_hidden", R"({"number":7,"why":"time_is_up"})"));
    EXPECT_EQ(hidden(PopupEnd::Hidden), Framed("popup_hidden", R"({"number":7,"why":"hidden"})"));
    EXPECT_EQ(hidden(PopupEnd::Dismissed), Framed("popup_hidden", R"({"number":7,"why":"dismissed"})"));
}

TEST(EventJsonTest, StoredAnnouncementIsToldAsItIs) {
    Announcement announcement;
    announcement.id = 3;
    announcement.name = "Dinner";
    const auto now = std::make_shared<const Announcement>(announcement);

    EXPECT_EQ(DataOf(At(events::AnnouncementStored{3, now})),
              R"({"announcement":3,"now":)" + fields::ToText(announcement) + "}");
}

TEST(EventJsonTest, SocketsBeginWithTheState) {
    const Event event = At(events::StateSaved{});
    EXPECT_EQ(fields::ToText(view::StateMessage{7, event.time, {R"({"status":1})"}}),
              Framed("state", R"({"status":1})"));
    EXPECT_EQ(fields::ToText(view::PageStateMessage{7, event.time, {R"({"house":"h"})"}}),
              Framed("state", R"({"house":"h"})"));
}

} // namespace controller
