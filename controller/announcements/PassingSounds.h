#pragma once

#include "controller/announcements/Announcements.h"
#include "controller/driver/Alarm.h"
#include "controller/driver/DriverOnly.h"
#include "controller/driver/IScheduler.h"
#include "controller/events/EventFeed.h"

#include <chrono>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace controller {

/// Sounds of the media folder that were brought to be heard once, such as a recording that is sent: each goes
/// when what has played it is over, and also when nobody comes to play it. One that an announcement names
/// stays as long as that does. Driver thread only.
class PassingSounds {
public:
    /// So long one waits to be played.
    static constexpr std::chrono::minutes kUnused{10};

    /// Borrowed for life.
    struct Parts {
        const Announcements& announcements;
        EventFeed& feed;
        IScheduler& driver;
        std::function<void(const std::string& file)> remove;
    };

    /// `left`: those that a former run has left, which wait no longer.
    PassingSounds(const std::vector<std::string>& left, Parts parts);
    PassingSounds(const PassingSounds&) = delete;
    PassingSounds& operator=(const PassingSounds&) = delete;
    ~PassingSounds() = default;

    /// The file of this name is one from now on.
    void Add(const std::string& file);

    /// It is none any more; false when it was none.
    bool Keep(const std::string& file) { return m_all.erase(file) != 0; }

private:
    struct Entry {
        IScheduler::Duration since{};
        bool wasUsed = false;
    };

    void Take(const Event& event);
    void Sweep();
    void SweepIn(IScheduler::Duration delay);
    [[nodiscard]] bool IsUsed(const std::string& file) const;

    const Parts m_parts;
    std::map<std::string, Entry> m_all;
    Alarm m_sweep;
    EventFeed::Subscription m_subscription;
    DriverOnly m_driverOnly;
};

} // namespace controller
