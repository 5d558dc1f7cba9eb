#include "controller/agent/Timers.h"

#include "controller/agent/Guarded.h"
#include "host/TimerUnit.h"
#include "host/VqBaseDriver.h"

namespace controller {

Timers::Timers(IScheduler& scheduler, Log& log) : m_scheduler(scheduler), m_log(log) {}

Timers::~Timers() {
    for (const auto& [id, timer] : m_timers)
        m_scheduler.Cancel(timer.scheduled);
}

std::uint32_t Timers::AddTimer(std::uint32_t interval, std::uint32_t unit, ITimerManagerCallback* callback) {
    Timer timer;
    timer.callback = callback;
    return Add(interval, unit, timer);
}

std::uint32_t Timers::AddDriverTimer(std::uint32_t interval, std::uint32_t unit, VqBaseDriver& driver) {
    Timer timer;
    timer.driver = &driver;
    return Add(interval, unit, timer);
}

std::uint32_t Timers::Add(std::uint32_t interval, std::uint32_t unit, Timer timer) {
    m_driverOnly.Assert();
    do {
        ++m_lastId;
    } while (m_lastId == 0 || m_timers.count(m_lastId) != 0);
    const std::uint32_t id = m_lastId;
    const bool isSeconds = unit == TimerUnit::Seconds;
    const IScheduler::Duration delay{static_cast<std::int64_t>(interval) * (isSeconds ? 1000 : 1)};
    const char* what = timer.callback != nullptr ? "a timer of an announcement" : "the agent's poll";
    timer.scheduled = m_scheduler.After(delay, what, [this, id] { Fire(id); });
    m_timers.emplace(id, timer);
    if (timer.callback != nullptr)
        ++m_announcementTimers;
    return id;
}

void Timers::KillTimer(std::uint32_t& timerId) {
    m_driverOnly.Assert();
    const auto place = m_timers.find(timerId);
    timerId = 0;
    if (place != m_timers.end())
        Remove(place);
}

void Timers::KillAllTimers(ITimerManagerCallback* callback) {
    m_driverOnly.Assert();
    for (auto place = m_timers.begin(); place != m_timers.end();) {
        const auto current = place++;
        if (current->second.callback == callback && callback != nullptr)
            Remove(current);
    }
}

void Timers::ForgetDriver(const VqBaseDriver& driver) noexcept {
    m_driverOnly.Assert();
    for (auto place = m_timers.begin(); place != m_timers.end();) {
        const auto current = place++;
        if (current->second.driver == &driver)
            Remove(current);
    }
}

void Timers::Remove(std::unordered_map<std::uint32_t, Timer>::iterator place) noexcept {
    m_scheduler.Cancel(place->second.scheduled);
    if (place->second.callback != nullptr)
        --m_announcementTimers;
    m_timers.erase(place);
}

void Timers::Fire(std::uint32_t id) {
    const auto place = m_timers.find(id);
    const Timer timer = place->second;
    Remove(place);
    m_isInDriverTimer = timer.driver != nullptr;
    // The owner may be destroyed by its own timer; nothing of it is touched afterwards.
    const auto thrown = Guarded([&] {
        if (timer.callback != nullptr)
            timer.callback->OnTimerExpired(id, 0);
        else
            timer.driver->OnTimerExpired(id, 0);
    });
    if (thrown)
        m_log.Error(Describe(*thrown, "a timer"));
    m_isInDriverTimer = false;
    if (timer.driver != nullptr && m_driverTimerDone)
        m_driverTimerDone();
}

} // namespace controller
