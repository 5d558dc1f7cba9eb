#include "tests/support/FakeTimers.h"

#include <algorithm>

namespace {

std::uint64_t ToMilliseconds(std::uint32_t interval, std::uint32_t unit) {
    return unit == TimerUnit::Seconds ? std::uint64_t{interval} * 1000 : interval;
}

std::string ArgumentsOf(std::uint32_t interval, std::uint32_t unit, std::uint32_t id) {
    return "(" + std::to_string(interval) + ", " + std::to_string(unit) + ") = " + std::to_string(id);
}

} // namespace

template <class Predicate>
void FakeTimers::Remove(Predicate predicate) {
    m_pending.erase(std::remove_if(m_pending.begin(), m_pending.end(), predicate), m_pending.end());
}

std::uint32_t
FakeTimers::AddTimer(std::uint32_t interval, std::uint32_t unit, ITimerManagerCallback* callback) {
    const std::uint32_t id = m_lastId + 1;
    m_log.Call("ITimerManager.AddTimer" + ArgumentsOf(interval, unit, id));
    m_lastId = id;
    m_pending.push_back(
        {m_now + ToMilliseconds(interval, unit), callback, id, "timer " + std::to_string(id), [callback, id] {
             callback->OnTimerExpired(id, 0);
         }});
    return id;
}

void FakeTimers::KillTimer(std::uint32_t& timerId) {
    const std::uint32_t id = timerId;
    if (id != 0)
        Remove([id](const Pending& pending) { return pending.id == id; });
    timerId = idLeftByKill;
    m_log.Call("ITimerManager.KillTimer(" + std::to_string(id) + ")");
}

void FakeTimers::KillAllTimers(ITimerManagerCallback* callback) {
    Remove([callback](const Pending& pending) { return pending.owner == callback; });
    ownersCancelled.push_back(callback);
    m_log.Call("ITimerManager.KillAllTimers()");
}

std::uint32_t FakeTimers::AddDriverTimer(VqBaseDriver& driver, std::uint32_t interval, std::uint32_t unit) {
    const std::uint32_t id = m_lastId + 1;
    m_log.Call("VqBaseDriver.AddTimer" + ArgumentsOf(interval, unit, id));
    m_lastId = id;
    m_pending.push_back(
        {m_now + ToMilliseconds(interval, unit), &driver, 0, "poll " + std::to_string(id), [&driver, id] {
             driver.OnTimerExpired(id, 0);
         }});
    return id;
}

void FakeTimers::ForgetDriver(const VqBaseDriver& driver) noexcept {
    Remove([&driver](const Pending& pending) { return pending.owner == &driver; });
}

void FakeTimers::AnswerAfter(std::uint64_t milliseconds,
                             const std::string& name,
                             std::function<void()> answer) {
    m_pending.push_back({m_now + milliseconds, nullptr, 0, name, std::move(answer)});
}

void FakeTimers::DropAnswers() {
    Remove([](const Pending& pending) { return pending.owner == nullptr; });
}

void FakeTimers::Advance(std::uint64_t milliseconds) {
    const std::uint64_t end = m_now + milliseconds;
    while (!m_pending.empty()) {
        const auto next = std::min_element(m_pending.begin(), m_pending.end(),
                                           [](const Pending& a, const Pending& b) { return a.due < b.due; });
        if (next->due > end)
            break;
        const Pending pending = *next;
        m_pending.erase(next);
        m_now = pending.due;
        Fire(pending);
    }
    m_now = end;
}

std::size_t FakeTimers::AnnouncementTimerCount() const {
    return static_cast<std::size_t>(std::count_if(m_pending.begin(), m_pending.end(),
                                                  [](const Pending& pending) { return pending.id != 0; }));
}

void FakeTimers::Fire(const Pending& pending) {
    m_log.Event(pending.event);
    try {
        pending.fire();
    } catch (const std::string& text) {
        m_log.Event("thrown: " + text);
    }
}
