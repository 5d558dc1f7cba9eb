#pragma once

#include "controller/driver/IScheduler.h"

#include <utility>

namespace controller {

/// Work that happens once, later, unless the alarm is stopped, started again or destroyed before.
class Alarm {
public:
    /// `scheduler` is borrowed for life; `what` names the work in the log.
    Alarm(IScheduler& scheduler, const char* what) : m_scheduler(scheduler), m_what(what) {}
    Alarm(const Alarm&) = delete;
    Alarm& operator=(const Alarm&) = delete;
    ~Alarm() { Stop(); }

    /// The work may destroy the alarm.
    void Start(IScheduler::Duration delay, std::function<void()> work) {
        Stop();
        m_id = m_scheduler.After(delay, m_what, [this, work = std::move(work)] {
            m_id = 0;
            // A copy, for the work may destroy this alarm and itself with it.
            const auto now = work;
            now();
        });
    }

    void Stop() noexcept {
        if (m_id != 0)
            m_scheduler.Cancel(std::exchange(m_id, 0));
    }

    [[nodiscard]] bool IsRunning() const noexcept { return m_id != 0; }

private:
    IScheduler& m_scheduler;
    const char* const m_what;
    std::uint64_t m_id = 0;
};

} // namespace controller
