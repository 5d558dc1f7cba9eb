#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>

namespace controller::audio {

/// Threads that may get stuck in a device: they are counted, waited for within limits, and left behind when
/// that is not enough. What they need they own themselves. Copies are the same threads. Any thread.
class Workers final {
public:
    /// Runs the task on a thread of its own. The task must not throw.
    /// @throws std::system_error when the machine gives no more threads.
    void Start(std::function<void()> task);

    /// Waits until no task runs; false when some still do at the end of the time.
    bool Wait(std::chrono::milliseconds limit);

private:
    struct Count {
        std::mutex mutex;
        std::condition_variable changed;
        unsigned running = 0;
    };

    std::shared_ptr<Count> m_count = std::make_shared<Count>();
};

} // namespace controller::audio
