#pragma once

#include "controller/driver/DriverOnly.h"
#include "controller/driver/IScheduler.h"
#include "controller/driver/Log.h"
#include "host/ITimerManager.h"

#include <functional>
#include <unordered_map>

class VqBaseDriver;

namespace controller {

/// The agent's timers: those of its announcements (`ITimerManager`) and the driver's own. One counter numbers
/// both; an id that is in use, or 0, is never given. What a callback throws is logged.
class Timers final : public ITimerManager {
public:
    /// Both are borrowed for life.
    Timers(IScheduler& scheduler, Log& log);
    Timers(const Timers&) = delete;
    Timers& operator=(const Timers&) = delete;
    ~Timers();

    std::uint32_t
    AddTimer(std::uint32_t interval, std::uint32_t unit, ITimerManagerCallback* callback) override;
    void KillTimer(std::uint32_t& timerId) override;
    void KillAllTimers(ITimerManagerCallback* callback) override;

    std::uint32_t AddDriverTimer(std::uint32_t interval, std::uint32_t unit, VqBaseDriver& driver);
    void ForgetDriver(const VqBaseDriver& driver) noexcept;

    /// How many timers of announcements run.
    [[nodiscard]] std::size_t AnnouncementTimers() const noexcept { return m_announcementTimers; }

    /// Whether a driver deals with one of its timers right now.
    [[nodiscard]] bool IsInDriverTimer() const noexcept { return m_isInDriverTimer; }

    /// Is called each time when a driver has dealt with one of its timers.
    void SetDriverTimerListener(std::function<void()> listener) { m_driverTimerDone = std::move(listener); }

private:
    struct Timer {
        std::uint64_t scheduled = 0;
        ITimerManagerCallback* callback = nullptr; ///< null for a driver's timer
        VqBaseDriver* driver = nullptr;
    };

    std::uint32_t Add(std::uint32_t interval, std::uint32_t unit, Timer timer);
    void Remove(std::unordered_map<std::uint32_t, Timer>::iterator place) noexcept;
    void Fire(std::uint32_t id);

    IScheduler& m_scheduler;
    Log& m_log;
    std::unordered_map<std::uint32_t, Timer> m_timers;
    std::size_t m_announcementTimers = 0;
    std::uint32_t m_lastId = 0;
    bool m_isInDriverTimer = false;
    std::function<void()> m_driverTimerDone;
    DriverOnly m_driverOnly;
};

} // namespace controller
