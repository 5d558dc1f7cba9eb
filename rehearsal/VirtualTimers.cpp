#include "rehearsal/VirtualTimers.h"

#include "host/VqBaseDriver.h"

#include <limits>

namespace {

VirtualTime ToTime(std::uint32_t interval, std::uint32_t unit) {
    if (unit == TimerUnit::Seconds)
        return std::chrono::duration<std::uint64_t>(interval);
    return VirtualTime(interval);
}

} // namespace

std::uint32_t
VirtualTimers::AddTimer(std::uint32_t interval, std::uint32_t unit, ITimerManagerCallback* callback) {
    constexpr std::string_view kCall = "ITimerManager.AddTimer";
    const std::uint32_t id = NextId();
    m_trace.CallReturning(id, kCall, interval, unit);
    m_lastId = id;
    m_schedule.Add(ToTime(interval, unit), callback, id, [this, callback, id] {
        m_trace.Tell(&TraceSink::TimerFired, id, TimerOwner::Announcement);
        m_trace.Enter([&] { callback->OnTimerExpired(id, 0); });
    });
    m_trace.React(kCall);
    return id;
}

void VirtualTimers::KillTimer(std::uint32_t& timerId) {
    m_schedule.Cancel(timerId);
    m_trace.Call("ITimerManager.KillTimer", timerId);
    timerId = 0; // last of all: a call that throws leaves it as it was
}

void VirtualTimers::KillAllTimers(ITimerManagerCallback* callback) {
    m_schedule.CancelAllOf(callback);
    m_trace.Call("ITimerManager.KillAllTimers");
}

std::uint32_t
VirtualTimers::AddDriverTimer(VqBaseDriver& driver, std::uint32_t interval, std::uint32_t unit) {
    constexpr std::string_view kCall = "VqBaseDriver.AddTimer";
    const std::uint32_t id = NextId();
    m_trace.CallReturning(id, kCall, interval, unit);
    m_lastId = id;
    // No id to cancel it by: the timer manager's `KillTimer` has no say over a driver's timers.
    m_schedule.Add(ToTime(interval, unit), &driver, 0, [this, &driver, id] {
        m_trace.Tell(&TraceSink::TimerFired, id, TimerOwner::Agent);
        m_trace.Enter([&] { driver.OnTimerExpired(id, 0); });
    });
    m_trace.React(kCall);
    return id;
}

void VirtualTimers::ForgetDriver(const VqBaseDriver& driver) noexcept {
    m_schedule.CancelAllOf(&driver);
}

std::uint32_t VirtualTimers::NextId() const noexcept {
    return m_lastId == std::numeric_limits<std::uint32_t>::max() ? 1 : m_lastId + 1;
}
