#pragma once

#include <chrono>
#include <vector>

#include <poll.h>

namespace controller {

/// Ends what waits on other threads, once.
class StopSignal {
public:
    /// Throws `std::system_error`.
    StopSignal();
    StopSignal(const StopSignal&) = delete;
    StopSignal& operator=(const StopSignal&) = delete;
    ~StopSignal();

    /// Any thread.
    void Give() const noexcept;

    /// Readable from when it is given.
    [[nodiscard]] int Descriptor() const noexcept { return m_descriptor; }

private:
    int m_descriptor = -1;
};

/// How long an engine may take. One thread at a time.
class Patience {
public:
    /// From now on. `stop` is borrowed for life.
    Patience(const StopSignal& stop, std::chrono::milliseconds limit)
        : m_stop(stop)
        , m_limit(limit)
        , m_end(std::chrono::steady_clock::now() + limit) {}

    /// Waits until something happens to one of the descriptors; those that are negative count for nothing.
    /// Throws `SpeechError` when time is up, or the stop signal is given.
    void Wait(std::vector<pollfd>& descriptors) const;

    /// The same, for so long at most and then without a word.
    void Wait(std::vector<pollfd>& descriptors, std::chrono::milliseconds atMost) const;

private:
    const StopSignal& m_stop;
    const std::chrono::milliseconds m_limit;
    const std::chrono::steady_clock::time_point m_end;
};

} // namespace controller
