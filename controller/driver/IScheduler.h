#pragma once

#include <chrono>
#include <cstdint>
#include <functional>

namespace controller {

/// The way to the driver thread: work for it, soon or later. Driver thread only, but for `Post`.
class IScheduler {
public:
    using Duration = std::chrono::milliseconds;

    /// After so long, work that is many pieces lets go of the thread for what else waits.
    static constexpr Duration kTurn{10};

    /// Time that never jumps, from a start of no meaning.
    [[nodiscard]] virtual Duration Now() const = 0;

    /// Does the work soon, never within this call. Any thread. `what` names it in the log. For answers to
    /// work that the driver thread itself gave away, of which there are only so many.
    virtual void Post(const char* what, std::function<void()> work) = 0;

    /// Does `work` once, `delay` from now, and gives an id, never 0. What is due at the same moment is done
    /// in the order in which it was asked for. `what` names the work in the log and must live as long as the
    /// program.
    virtual std::uint64_t After(Duration delay, const char* what, std::function<void()> work) = 0;

    /// The work with this id will not be done; nothing happens when it has been done.
    virtual void Cancel(std::uint64_t id) noexcept = 0;

protected:
    ~IScheduler() = default;
};

} // namespace controller
