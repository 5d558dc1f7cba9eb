#pragma once

#include "controller/events/EventFeed.h"
#include "controller/house/House.h"

#include <cstdint>
#include <functional>
#include <set>
#include <string>

namespace controller {

/// Prints what happens in the house, one line each. Driver thread only.
class ConsoleView {
public:
    using Print = std::function<void(const std::string& line)>;
    using NameOf = std::function<std::string(std::uint32_t announcement)>;

    /// `house` and `feed` are borrowed for life.
    ConsoleView(const House& house, EventFeed& feed, NameOf nameOf, Print print);

private:
    void Show(const events::AnnouncementStarted& event);
    void Show(const events::AnnouncementStopped& event);
    void Show(const events::AnnouncementEnded& event);
    void Show(const events::RoomSetUp& event);
    void Show(const events::RoomRestored& event);
    void Show(const events::RoomHealthChanged& event);
    void Show(const events::SoundStarted& event);
    void Show(const events::SoundEnded& event);
    void Show(const events::PopupShown& event);
    void Show(const events::PopupChanged& event);
    void Show(const events::PopupHidden& event);
    /// The others are the log's business, or are replied to.
    template <class Other>
    void Show(const Other& /*event*/) {}

    [[nodiscard]] std::string Announcement(std::uint32_t id) const;
    [[nodiscard]] std::string Room(std::uint32_t id) const;
    [[nodiscard]] std::string Navigator(std::uint32_t id) const;

    const House& m_house;
    NameOf m_nameOf;
    Print m_print;
    std::string m_roomsInSound; ///< "Kitchen, Living room"
    std::set<std::uint32_t> m_unheard;
    EventFeed::Subscription m_subscription;
};

} // namespace controller
