#pragma once

#include "host/ITimerManager.h"
#include "host/VqBaseDriver.h"
#include "tests/support/CallLog.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

/// Timers of both kinds, and the host's own answers, on a clock that stands still until the test lets time
/// pass. The ids count up from 1 in the order of arming; what is due at the same moment fires in that order.
class FakeTimers final : public ITimerManager {
public:
    explicit FakeTimers(CallLog& log) : m_log(log) {}

    std::uint32_t
    AddTimer(std::uint32_t interval, std::uint32_t unit, ITimerManagerCallback* callback) override;
    void KillTimer(std::uint32_t& timerId) override;
    void KillAllTimers(ITimerManagerCallback* callback) override;

    /// The owners whose timers were all cancelled, in order.
    std::vector<const ITimerManagerCallback*> ownersCancelled;
    /// What `KillTimer` stores in place of the id.
    std::uint32_t idLeftByKill = 0;

    std::uint32_t AddDriverTimer(VqBaseDriver& driver, std::uint32_t interval, std::uint32_t unit);
    void ForgetDriver(const VqBaseDriver& driver) noexcept;

    void AnswerAfter(std::uint64_t milliseconds, const std::string& name, std::function<void()> answer);
    void DropAnswers();

    /// Lets time pass and everything fire that falls due. What is thrown ends here, as an event of the log.
    void Advance(std::uint64_t milliseconds);

    [[nodiscard]] std::uint64_t Now() const { return m_now; }
    /// The timers that will fire, polls not counted.
    [[nodiscard]] std::size_t AnnouncementTimerCount() const;

private:
    struct Pending {
        std::uint64_t due;
        const void* owner; ///< null for the host's own answers
        std::uint32_t id;  ///< 0 for what nobody can kill by id
        std::string event;
        std::function<void()> fire;
    };

    template <class Predicate>
    void Remove(Predicate predicate);
    void Fire(const Pending& pending);

    CallLog& m_log;
    std::uint64_t m_now = 0;
    std::uint32_t m_lastId = 0;
    std::vector<Pending> m_pending; ///< in the order of arming
};
