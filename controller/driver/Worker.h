#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

namespace controller {

/// A thread that does, one after another, what would block the driver thread. What waits at the end is still
/// done.
class Worker {
public:
    Worker();
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;
    /// Waits until everything is done.
    ~Worker();

    /// Any thread. The work must not throw.
    void Submit(std::function<void()> work);

private:
    void Work();

    std::mutex m_mutex;
    std::condition_variable m_wakeUp;
    std::deque<std::function<void()>> m_queue;
    bool m_isEnding = false;
    std::thread m_thread;
};

} // namespace controller
