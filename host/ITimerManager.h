#pragma once

#include "host/ITimerManagerCallback.h"
#include "host/TimerUnit.h"

#include <cstdint>

/// One-shot timers for objects that are not drivers. Timer ids are unsigned 32-bit numbers; 0 is never a
/// timer's id.
class ITimerManager {
public:
    static constexpr const char* kGuid = "{6AF43241-ECD9-4DFF-9F14-3E7194FFE2D4}";

    /// Arms a timer that calls `callback->OnTimerExpired` on the driver thread once, after `interval` units
    /// (`unit` is a `TimerUnit`), and returns its id. The callback is borrowed until the timer expires or is
    /// cancelled.
    virtual std::uint32_t
    AddTimer(std::uint32_t interval, std::uint32_t unit, ITimerManagerCallback* callback) = 0;

    /// Cancels the timer whose id is in `timerId` and sets `timerId` to 0; an id of 0, or of a timer that has
    /// expired, cancels nothing.
    virtual void KillTimer(std::uint32_t& timerId) = 0;

    /// Cancels every timer armed with this callback. Destructors call it, and drop what it throws.
    virtual void KillAllTimers(ITimerManagerCallback* callback) = 0;

protected:
    ~ITimerManager() = default;
};
