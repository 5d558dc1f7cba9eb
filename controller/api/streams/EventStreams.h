#pragma once

#include "controller/driver/DriverOnly.h"
#include "controller/events/EventFeed.h"
#include "controller/http/HttpExchange.h"
#include "controller/rooms/ScreenSpeakers.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace controller {

/// The sockets that are told what happens: those that watch everything, and the pages of navigators. Driver
/// thread only.
class EventStreams {
public:
    /// So many events are kept for a socket whose first message is still being made.
    static constexpr std::size_t kMaxHeld = 1000;

    /// The state, as JSON text, that a socket begins with; given at once or later.
    using State = std::function<void(std::string data)>;
    struct Parts {
        std::function<void(const State& give)> wholeState;
        std::function<std::string(std::uint32_t navigator)> pageState;
        std::function<std::uint32_t(std::uint32_t navigator)> roomOf;
        ScreenSpeakers* speakers = nullptr; ///< borrowed for life; null: no page is a loudspeaker
    };

    /// `feed` is borrowed for life.
    EventStreams(EventFeed& feed, Parts parts);
    EventStreams(const EventStreams&) = delete;
    EventStreams& operator=(const EventStreams&) = delete;
    ~EventStreams();

    /// Sends the state, and from then on everything.
    void AddWatcher(std::shared_ptr<WebSocket> socket);

    /// Sends what the page has to show, and from then on what concerns it.
    void AddPage(std::uint32_t navigator, std::shared_ptr<WebSocket> socket);

    /// How many pages of this navigator are connected.
    [[nodiscard]] std::size_t PagesOf(std::uint32_t navigator) const;

    /// How large its screen is, as its page says; of several, the one that came last.
    [[nodiscard]] std::optional<events::ScreenSize> SizeOf(std::uint32_t navigator) const;

    /// Whether one of its pages can be heard; nothing where no room plays on them.
    [[nodiscard]] std::optional<bool> IsArmed(std::uint32_t navigator) const;

    /// How many sockets there are.
    [[nodiscard]] std::size_t Size() const noexcept { return m_watchers.size() + m_pageCount; }

private:
    using Text = std::shared_ptr<const std::string>;
    struct Watcher {
        std::shared_ptr<WebSocket> socket;
        bool isBegun = false;
        std::vector<Text> held;
    };

    struct Page {
        std::shared_ptr<WebSocket> socket;
        std::optional<events::ScreenSize> size;
    };

    void Take(const Event& event);
    void PageClosed(std::uint32_t navigator, std::uint64_t id);
    void Hear(std::uint32_t navigator, std::uint64_t id, std::string_view text);
    void TellPagesOf(std::uint32_t navigator);
    void TellWatchers(const Event& event);
    void TellPages(const Event& event);
    void TellNavigator(std::uint32_t navigator, const Text& text);
    void Begin(std::uint64_t id, std::uint64_t number, const std::string& state);

    EventFeed& m_feed;
    Parts m_parts;
    std::uint64_t m_lastNumber = 0;
    std::uint64_t m_lastId = 0;
    std::map<std::uint64_t, Watcher> m_watchers;
    std::map<std::uint32_t, std::map<std::uint64_t, Page>> m_pages;
    std::map<std::uint32_t, std::set<std::uint32_t>> m_screensOf; ///< by room, those that have pages
    std::size_t m_pageCount = 0;
    const std::shared_ptr<bool> m_life = std::make_shared<bool>(true); ///< sockets may outlive this object
    EventFeed::Subscription m_subscription;
    DriverOnly m_driverOnly;
};

} // namespace controller
