#include "controller/api/streams/EventStreams.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <optional>

namespace controller {

namespace {

using Json = nlohmann::json;
using Texts = std::vector<std::string>;

class FakeSocket final : public WebSocket {
public:
    void Send(std::shared_ptr<const std::string> text) override { sent.push_back(Json::parse(*text)); }
    void Close(unsigned code, const std::string& /*reason*/) override { closed = code; }
    void OnMessage(std::function<void(std::string_view)> listener) override {
        onMessage = std::move(listener);
    }
    void OnClosed(std::function<void()> listener) override { onClosed = std::move(listener); }

    /// "seq type", each message since the last call.
    Texts Take() {
        Texts texts;
        for (const Json& message : std::exchange(sent, {}))
            texts.push_back(std::to_string(message["seq"].get<unsigned>()) + " " +
                            message["type"].get<std::string>());
        return texts;
    }

    std::vector<Json> sent;
    std::optional<unsigned> closed;
    std::function<void(std::string_view)> onMessage;
    std::function<void()> onClosed;
};

/// Navigators 5 and 6 in room 12, 7 in room 13. Watchers get their state when the test says so.
class EventStreamsTest : public testing::Test {
protected:
    EventStreams::Parts Parts() {
        return {[this](const EventStreams::State& give) { m_give = give; },
                [](std::uint32_t navigator) { return R"({"navigator":)" + std::to_string(navigator) + "}"; },
                [this](std::uint32_t navigator) {
                    ++m_roomsAsked;
                    return navigator == 7 ? 13U : 12U;
                }};
    }

    std::shared_ptr<FakeSocket> Watch() {
        auto socket = std::make_shared<FakeSocket>();
        m_streams->AddWatcher(socket);
        return socket;
    }
    std::shared_ptr<FakeSocket> Page(std::uint32_t navigator) {
        auto socket = std::make_shared<FakeSocket>();
        m_streams->AddPage(navigator, socket);
        return socket;
    }

    EventFeed m_feed;
    EventStreams::State m_give;
    unsigned m_roomsAsked = 0;
    std::unique_ptr<EventStreams> m_streams = std::make_unique<EventStreams>(m_feed, Parts());
};

TEST_F(EventStreamsTest, AWatcherGetsTheStateAndThenAllThatHappenedSince) {
    m_feed.Publish(events::SoundStarted{"before"});
    const auto socket = Watch();
    m_feed.Publish(events::RoomVolumeChanged{12, 40});
    m_feed.Publish(events::VariableChanged{9, 4, "warm"});
    EXPECT_TRUE(socket->sent.empty());

    m_give("{\"whole\":true}");
    EXPECT_EQ(socket->sent.at(0)["data"], Json({{"whole", true}}));
    EXPECT_EQ(socket->Take(), (Texts{"1 state", "2 room_volume_changed", "3 variable_changed"}));

    m_feed.Publish(events::RoomVolumeChanged{12, 41});
    EXPECT_EQ(socket->Take(), Texts{"4 room_volume_changed"});
    EXPECT_EQ(m_streams->Size(), 1U);
}

TEST_F(EventStreamsTest, AWatcherWhoseStateTakesTooLongIsToldToComeAgain) {
    const auto socket = Watch();
    for (std::size_t i = 0; i < EventStreams::kMaxHeld; ++i)
        m_feed.Publish(events::VariableChanged{9, 4, "x"});
    EXPECT_FALSE(socket->closed);
    m_feed.Publish(events::VariableChanged{9, 4, "x"});
    EXPECT_EQ(socket->closed, 1013U);
}

TEST_F(EventStreamsTest, APageIsToldOfItsOwnPopupsAndItsOwnRoom) {
    const auto five = Page(5);
    const auto six = Page(6);
    const auto seven = Page(7);
    EXPECT_EQ(five->sent.at(0)["data"], Json({{"navigator", 5}}));
    five->Take();
    six->Take();
    seven->Take();

    m_feed.Publish(events::ScreensWoken{12});
    m_feed.Publish(events::PopupShown{1, 5, "Dinner", "", std::chrono::seconds(6), true});
    m_feed.Publish(events::PopupChanged{1, 5, "Supper"});
    m_feed.Publish(events::PopupHidden{1, 5, events::PopupEnd::Dismissed});
    m_feed.Publish(events::ScreensRested{12});
    m_feed.Publish(events::VariableChanged{9, 4, "warm"});

    EXPECT_EQ(five->Take(),
              (Texts{"4 wake", "5 popup_shown", "6 popup_changed", "7 popup_hidden", "8 rest"}));
    EXPECT_EQ(six->Take(), (Texts{"4 wake", "8 rest"}));
    EXPECT_EQ(seven->Take(), Texts{});
}

TEST_F(EventStreamsTest, RoomsThatWakeAskForNoRoomOfAnyScreen) {
    const std::vector<std::shared_ptr<FakeSocket>> pages = {Page(5), Page(6), Page(7)};
    const unsigned asked = m_roomsAsked;
    for (std::uint32_t room = 1; room <= 1000; ++room)
        m_feed.Publish(events::ScreensWoken{room});
    EXPECT_EQ(m_roomsAsked, asked);
    for (const auto& page : pages)
        EXPECT_EQ(page->sent.back()["type"], "wake");
    pages[0]->onClosed();
    m_feed.Publish(events::ScreensRested{12});
    EXPECT_EQ(pages[0]->sent.back()["type"], "wake");
    EXPECT_EQ(pages[1]->sent.back()["type"], "rest");
}

TEST_F(EventStreamsTest, PagesAreCountedAsTheyComeAndGo) {
    std::vector<std::pair<std::uint32_t, std::size_t>> told;
    const auto subscription = m_feed.Subscribe([&](const Event& event) {
        if (const auto* change = std::get_if<events::PagesChanged>(&event.data))
            told.emplace_back(change->navigator, change->pages);
    });
    const auto first = Page(5);
    const auto second = Page(5);
    EXPECT_EQ(m_streams->PagesOf(5), 2U);
    EXPECT_EQ(m_streams->PagesOf(6), 0U);
    EXPECT_EQ(m_streams->Size(), 2U);

    first->onClosed();
    second->onClosed();

    EXPECT_EQ(m_streams->Size(), 0U);
    EXPECT_EQ(told, (decltype(told){{5, 1}, {5, 2}, {5, 1}, {5, 0}}));
}

TEST_F(EventStreamsTest, AScreenIsAsLargeAsItsLastPageSaysUntilThatGoes) {
    Texts told;
    const auto subscription = m_feed.Subscribe([&](const Event& event) {
        const auto& change = std::get<events::PagesChanged>(event.data);
        told.push_back(std::to_string(change.pages) + (change.size
                                                           ? " " + std::to_string(change.size->width) + "x" +
                                                                 std::to_string(change.size->height)
                                                           : ""));
    });
    const auto first = Page(5);
    EXPECT_FALSE(m_streams->SizeOf(5));
    first->onMessage(R"({"size":{"width":1280,"height":800}})");
    first->onMessage(R"({"size":{"width":1280,"height":800}})");
    const auto second = Page(5);
    second->onMessage(R"({"size":{"width":800,"height":1280}})");
    first->onMessage(R"({"size":{"width":640,"height":480}})");
    second->onClosed();
    first->onClosed();

    EXPECT_EQ(told, (Texts{"1", "1 1280x800", "2 1280x800", "2 800x1280", "1 640x480", "0"}));
    EXPECT_FALSE(m_streams->SizeOf(5));
    EXPECT_FALSE(m_streams->SizeOf(6));
}

TEST_F(EventStreamsTest, WhatAPageSaysThatIsNoSizeIsThrownAway) {
    const auto page = Page(5);
    for (const char* text : {"", "{", "[]", "null", "{}", R"({"size":null})", R"({"size":{"width":1}})",
                             R"({"size":{"width":0,"height":1}})", R"({"size":{"width":1,"height":100001}})",
                             R"({"size":{"width":1.5,"height":1}})", "\xff\xfe"})
        page->onMessage(text);
    EXPECT_FALSE(m_streams->SizeOf(5));
    EXPECT_FALSE(page->closed);
}

TEST_F(EventStreamsTest, APageIsToldTheTimeAndWhatToPlayAndItsNewsAreHeard) {
    ScreenSpeakers speakers({5});
    EventStreams::Parts parts = Parts();
    parts.speakers = &speakers;
    m_streams = std::make_unique<EventStreams>(m_feed, parts);
    std::vector<std::optional<bool>> told;
    const auto subscription = m_feed.Subscribe(
        [&](const Event& event) { told.push_back(std::get<events::PagesChanged>(event.data).isArmed); });
    const auto page = Page(5);
    (void)Page(6);
    page->onMessage(R"({"armed":true})");
    page->onMessage(R"({"armed":true})");
    EXPECT_EQ(told, (decltype(told){false, std::nullopt, true}));
    EXPECT_EQ(m_streams->IsArmed(5), std::optional(true));
    EXPECT_EQ(m_streams->IsArmed(6), std::nullopt);

    std::vector<ScreenSpeakers::News> news;
    const ScreenSpeakers::Time at(std::chrono::microseconds(1234567));
    speakers.Prepare(5, {3, "/a"});
    const auto play = speakers.Begin(5, {3, "/a"}, at, 0.125, [&](auto one) { news.push_back(one); });
    page->sent.clear();
    page->onMessage(R"({"ping":7})");
    EXPECT_EQ(page->sent.at(0)["type"], "pong");
    EXPECT_EQ(page->sent.at(0)["data"]["ping"], 7);
    EXPECT_GT(page->sent.at(0)["data"]["now"], 0);
    for (const char* text : {"started", "late", "ended", "failed", "dancing"})
        page->onMessage(R"({"play":{"play":1,"news":")" + std::string(text) + "\"}}");
    speakers.SetGain(play, 1);
    speakers.End(play);
    const auto sent = std::exchange(page->sent, {});
    EXPECT_EQ(sent.at(1), Json::parse(R"({"type":"sound_gain","data":{"play":1,"gain":1.0}})"));
    EXPECT_EQ(sent.at(2), Json::parse(R"({"type":"sound_stop","data":{"play":1}})"));
    EXPECT_EQ(news, (std::vector{ScreenSpeakers::News::Started, ScreenSpeakers::News::Late,
                                 ScreenSpeakers::News::Ended, ScreenSpeakers::News::Failed}));
    page->onClosed();
    EXPECT_FALSE(speakers.IsArmed(5));
    EXPECT_EQ(told.back(), std::optional(false));
    m_streams = nullptr;
}

TEST_F(EventStreamsTest, APageIsToldOfASoundBeforeAndWhenItIsToPlayIt) {
    ScreenSpeakers speakers({5});
    EventStreams::Parts parts = Parts();
    parts.speakers = &speakers;
    m_streams = std::make_unique<EventStreams>(m_feed, parts);
    const auto page = Page(5);
    page->onMessage(R"({"armed":true})");
    page->sent.clear();
    speakers.Prepare(5, {3, "/a"});
    (void)speakers.Begin(5, {3, "/a"}, ScreenSpeakers::Time(std::chrono::microseconds(1234567)), 0.125,
                         [](auto /*news*/) {});
    EXPECT_EQ(page->sent,
              (std::vector{Json::parse(R"({"type":"sound_fetch","data":{"sound":3,"address":"/a"}})"),
                           Json::parse(R"({"type":"sound_play","data":{"play":1,"sound":3,"address":"/a",)"
                                       R"("at":1234567,"gain":0.125}})")}));
    m_streams = nullptr;
    EXPECT_FALSE(speakers.IsArmed(5)) << "nothing is sent to sockets that may be gone";
}

TEST_F(EventStreamsTest, ASocketThatHasGoneIsToldNothing) {
    const auto socket = Watch();
    m_give("{}");
    socket->Take();
    socket->onClosed();
    m_feed.Publish(events::RoomVolumeChanged{12, 41});
    EXPECT_EQ(socket->Take(), Texts{});
    EXPECT_EQ(m_streams->Size(), 0U);
}

TEST_F(EventStreamsTest, SocketsAndStatesMayComeAfterItsEnd) {
    const auto watcher = Watch();
    const auto page = Page(5);
    page->Take();
    m_streams = nullptr;

    m_give("{}");
    watcher->onClosed();
    page->onClosed();

    EXPECT_EQ(watcher->Take(), Texts{});
    EXPECT_EQ(page->Take(), Texts{});
}

} // namespace

} // namespace controller
