#pragma once

#include "controller/events/EventFeed.h"

#include <chrono>
#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace controller {

/// What the house is doing, as far as its events tell: they are all that this looks at. Driver thread only.
class HouseWatch {
public:
    using Time = std::chrono::system_clock::time_point;

    struct Playing {
        std::uint32_t announcement = 0;
        Time since;
    };
    struct Sound {
        std::string file;
        Time since;
    };
    struct Counts {
        std::uint64_t announcements = 0;
        std::uint64_t popups = 0;
        std::uint64_t outputFailures = 0;
    };

    /// `feed` is borrowed for life.
    explicit HouseWatch(EventFeed& feed);

    [[nodiscard]] const std::optional<Playing>& Current() const noexcept { return m_playing; }

    /// What was asked for, is still there, and has not had its turn, in the order of playing: what the agent
    /// has in its own queue goes before.
    [[nodiscard]] std::vector<std::uint32_t> Waiting() const;

    [[nodiscard]] const std::optional<Sound>& CurrentSound() const noexcept { return m_sound; }
    [[nodiscard]] bool IsAwake(std::uint32_t room) const { return m_awake.count(room) != 0; }

    /// Whether the room would be heard now.
    [[nodiscard]] events::RoomHealth Health(std::uint32_t room) const;

    /// Why it was not heard in the last announcement, or would not be now; empty when all is well.
    [[nodiscard]] std::string Trouble(std::uint32_t room) const;

    /// Why the state is not on the disk; nothing when it is.
    [[nodiscard]] const std::optional<std::string>& StateError() const noexcept { return m_stateError; }

    [[nodiscard]] const Counts& Totals() const noexcept { return m_counts; }

private:
    void Take(const Event& event);
    void Asked(const events::PlayAsked& asked);
    void Started(std::uint32_t announcement, Time time);
    void Removed(std::uint32_t announcement);
    void Changed(const events::RoomHealthChanged& changed);

    std::optional<Playing> m_playing;
    std::deque<std::uint32_t> m_waiting; ///< in the agent's own queue
    std::vector<Queued> m_queue;
    std::optional<Sound> m_sound;
    std::set<std::uint32_t> m_awake;
    std::map<std::uint32_t, std::string> m_trouble; ///< of the last announcement
    std::map<std::uint32_t, events::RoomHealthChanged> m_health;
    std::optional<std::string> m_stateError;
    Counts m_counts;
    EventFeed::Subscription m_subscription;
};

} // namespace controller
