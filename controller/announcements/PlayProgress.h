#pragma once

#include "controller/announcements/Announcements.h"
#include "controller/driver/DriverOnly.h"
#include "controller/events/EventFeed.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

namespace controller {

/// How far what plays has come, and when it will probably be over; told by `PlayingChanged`. Driver thread
/// only.
class PlayProgress {
public:
    /// Both are borrowed for life.
    PlayProgress(const Announcements& announcements, EventFeed& feed);

    [[nodiscard]] const std::optional<PlayingNow>& Now() const noexcept { return m_now; }

    /// The sound of the announcement that began at `since` is so long.
    void SoundMeasured(std::chrono::system_clock::time_point since, std::chrono::milliseconds length);

private:
    void Take(const Event& event);
    void Started(const Event& event, std::uint32_t announcement);
    [[nodiscard]] bool TakeSound(const Event& event);
    [[nodiscard]] bool TakePopup(const Event& event);
    void Expect();
    void Tell();

    const Announcements& m_announcements;
    EventFeed& m_feed;
    std::optional<PlayingNow> m_now;
    std::size_t m_popups = 0;                          ///< of what plays, on the screens
    std::chrono::milliseconds m_length{0};             ///< of its sound; 0 while it is not known
    std::chrono::system_clock::time_point m_soundDue;  ///< the moment of its first sample
    std::chrono::system_clock::time_point m_popupsEnd; ///< of the last one's
    EventFeed::Subscription m_subscription;
    DriverOnly m_driverOnly;
};

} // namespace controller
