#pragma once

#include "host/ITimerManager.h"
#include "rehearsal/Schedule.h"
#include "rehearsal/Trace.h"

#include <cstdint>

class VqBaseDriver;

/// The timers of both kinds, the driver's and the timer manager's, numbered together from 1 in the order in
/// which they are armed.
class VirtualTimers final : public ITimerManager {
public:
    VirtualTimers(Schedule& schedule, Trace& trace) : m_schedule(schedule), m_trace(trace) {}

    std::uint32_t
    AddTimer(std::uint32_t interval, std::uint32_t unit, ITimerManagerCallback* callback) override;
    void KillTimer(std::uint32_t& timerId) override;
    void KillAllTimers(ITimerManagerCallback* callback) override;

    std::uint32_t AddDriverTimer(VqBaseDriver& driver, std::uint32_t interval, std::uint32_t unit);
    /// The driver's timers fire no more.
    void ForgetDriver(const VqBaseDriver& driver) noexcept;

private:
    [[nodiscard]] std::uint32_t NextId() const noexcept;

    Schedule& m_schedule;
    Trace& m_trace;
    std::uint32_t m_lastId = 0;
};
