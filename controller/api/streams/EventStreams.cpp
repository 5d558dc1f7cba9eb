#include "controller/api/streams/EventStreams.h"

#include "controller/api/json/EventJson.h"
#include "controller/api/json/HouseViews.h"
#include "controller/api/json/ParseJson.h"
#include "controller/api/json/SoundMessages.h"

#include <nlohmann/json.hpp>

namespace controller {

namespace {

bool IsSame(const std::optional<events::ScreenSize>& one, const std::optional<events::ScreenSize>& other) {
    if (!one || !other)
        return one.has_value() == other.has_value();
    return one->width == other->width && one->height == other->height;
}

} // namespace

EventStreams::EventStreams(EventFeed& feed, Parts parts)
    : m_feed(feed)
    , m_parts(std::move(parts))
    , m_lastNumber(feed.LastNumber())
    , m_subscription(feed.Subscribe([this](const Event& event) { Take(event); })) {}

void EventStreams::AddWatcher(std::shared_ptr<WebSocket> socket) {
    m_driverOnly.Assert();
    const std::uint64_t id = ++m_lastId;
    const std::weak_ptr<bool> life = m_life;
    socket->OnClosed([this, life, id] {
        if (!life.expired())
            m_watchers.erase(id);
    });
    m_watchers[id].socket = std::move(socket);
    m_parts.wholeState([this, life, id, number = m_lastNumber](const std::string& state) {
        if (!life.expired())
            Begin(id, number, state);
    });
}

void EventStreams::Begin(std::uint64_t id, std::uint64_t number, const std::string& state) {
    m_driverOnly.Assert();
    const auto place = m_watchers.find(id);
    if (place == m_watchers.end())
        return;
    Watcher& watcher = place->second;
    watcher.isBegun = true;
    watcher.socket->Send(std::make_shared<const std::string>(
        fields::ToText(view::StateMessage{number, std::chrono::system_clock::now(), {state}})));
    for (const Text& text : std::exchange(watcher.held, {}))
        watcher.socket->Send(text);
}

EventStreams::~EventStreams() {
    if (m_parts.speakers == nullptr)
        return;
    for (const auto& [navigator, pages] : m_pages)
        for (const auto& [id, page] : pages)
            m_parts.speakers->Close(navigator, id);
}

void EventStreams::AddPage(std::uint32_t navigator, std::shared_ptr<WebSocket> socket) {
    m_driverOnly.Assert();
    const std::uint64_t id = ++m_lastId;
    const std::weak_ptr<bool> life = m_life;
    socket->OnClosed([this, life, navigator, id] {
        if (!life.expired())
            PageClosed(navigator, id);
    });
    socket->OnMessage([this, life, navigator, id](std::string_view text) {
        if (!life.expired())
            Hear(navigator, id, text);
    });
    socket->Send(std::make_shared<const std::string>(fields::ToText(view::PageStateMessage{
        m_lastNumber, std::chrono::system_clock::now(), {m_parts.pageState(navigator)}})));
    if (m_parts.speakers != nullptr)
        m_parts.speakers->Open(navigator, id, [&to = *socket](const ScreenSpeakers::Order& order) {
            to.Send(std::make_shared<const std::string>(view::TextOf(order)));
        });
    m_pages[navigator].emplace(id, Page{std::move(socket), std::nullopt});
    m_screensOf[m_parts.roomOf(navigator)].insert(navigator);
    ++m_pageCount;
    TellPagesOf(navigator);
}

void EventStreams::PageClosed(std::uint32_t navigator, std::uint64_t id) {
    if (m_parts.speakers != nullptr)
        m_parts.speakers->Close(navigator, id);
    const auto place = m_pages.find(navigator);
    m_pageCount -= place->second.erase(id);
    if (place->second.empty()) {
        m_pages.erase(place);
        m_screensOf[m_parts.roomOf(navigator)].erase(navigator);
    }
    TellPagesOf(navigator);
}

void EventStreams::TellPagesOf(std::uint32_t navigator) {
    m_feed.Publish(
        events::PagesChanged{navigator, PagesOf(navigator), SizeOf(navigator), IsArmed(navigator)});
}

/// What is not understood is thrown away, as is all that other sockets send: later pages may say more.
void EventStreams::Hear(std::uint32_t navigator, std::uint64_t id, std::string_view text) {
    m_driverOnly.Assert();
    Page& page = m_pages.at(navigator).at(id);
    const auto former = SizeOf(navigator);
    const auto wasArmed = IsArmed(navigator);
    view::PageSays says;
    try {
        says = fields::Read<view::PageSays>(ParseJson(std::string(text)));
    } catch (const std::exception&) {
        return;
    }
    if (says.ping)
        page.socket->Send(std::make_shared<const std::string>(
            fields::ToText(view::Pong{*says.ping, view::MicrosecondsOf(std::chrono::steady_clock::now())})));
    if (says.size)
        page.size = says.size;
    if (says.isArmed && m_parts.speakers != nullptr)
        m_parts.speakers->SetArmed(navigator, id, *says.isArmed);
    const auto news = says.play ? view::NewsOf(says.play->news) : std::nullopt;
    if (news && m_parts.speakers != nullptr)
        m_parts.speakers->Hear(navigator, id, says.play->play, *news);
    if (!IsSame(former, SizeOf(navigator)) || wasArmed != IsArmed(navigator))
        TellPagesOf(navigator);
}

std::optional<bool> EventStreams::IsArmed(std::uint32_t navigator) const {
    if (m_parts.speakers == nullptr || !m_parts.speakers->IsSpeaker(navigator))
        return std::nullopt;
    return m_parts.speakers->IsArmed(navigator);
}

std::optional<events::ScreenSize> EventStreams::SizeOf(std::uint32_t navigator) const {
    m_driverOnly.Assert();
    std::optional<events::ScreenSize> size;
    const auto place = m_pages.find(navigator);
    if (place == m_pages.end())
        return size;
    for (const auto& [id, page] : place->second)
        size = page.size ? page.size : size;
    return size;
}

std::size_t EventStreams::PagesOf(std::uint32_t navigator) const {
    m_driverOnly.Assert();
    const auto place = m_pages.find(navigator);
    return place != m_pages.end() ? place->second.size() : 0;
}

void EventStreams::Take(const Event& event) {
    m_lastNumber = event.number;
    // Pages first: people wait for them.
    if (!m_pages.empty())
        TellPages(event);
    if (!m_watchers.empty())
        TellWatchers(event);
}

void EventStreams::TellWatchers(const Event& event) {
    const auto text = std::make_shared<const std::string>(event_json::Message(event));
    for (auto& [id, watcher] : m_watchers) {
        if (watcher.isBegun)
            watcher.socket->Send(text);
        else if (watcher.held.size() < kMaxHeld)
            watcher.held.push_back(text);
        else
            // Its first message takes too long: it connects again and gets a fresh one.
            watcher.socket->Close(1013, "too much happened before the state was sent");
    }
}

void EventStreams::TellNavigator(std::uint32_t navigator, const Text& text) {
    const auto place = m_pages.find(navigator);
    if (place == m_pages.end())
        return;
    for (const auto& [id, page] : place->second)
        page.socket->Send(text);
}

void EventStreams::TellPages(const Event& event) {
    std::uint32_t navigator = 0;
    std::uint32_t room = 0;
    if (const auto* shown = std::get_if<events::PopupShown>(&event.data))
        navigator = shown->navigator;
    else if (const auto* changed = std::get_if<events::PopupChanged>(&event.data))
        navigator = changed->navigator;
    else if (const auto* hidden = std::get_if<events::PopupHidden>(&event.data))
        navigator = hidden->navigator;
    else if (const auto* woken = std::get_if<events::ScreensWoken>(&event.data))
        room = woken->room;
    else if (const auto* rested = std::get_if<events::ScreensRested>(&event.data))
        room = rested->room;
    const auto screens = m_screensOf.find(room);
    if (room == 0 ? m_pages.count(navigator) == 0 : screens == m_screensOf.end())
        return;
    auto message = event_json::PageMessage(event);
    if (!message)
        return;
    const auto text = std::make_shared<const std::string>(std::move(*message));
    if (room == 0) {
        TellNavigator(navigator, text);
        return;
    }
    for (const std::uint32_t id : screens->second)
        TellNavigator(id, text);
}

} // namespace controller
