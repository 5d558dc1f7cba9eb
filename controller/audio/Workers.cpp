#include "controller/audio/Workers.h"

#include <thread>
#include <utility>

namespace controller::audio {

void Workers::Start(std::function<void()> task) {
    const auto leave = [](Count& count) {
        const std::lock_guard<std::mutex> lock(count.mutex);
        --count.running;
        count.changed.notify_all();
    };
    {
        const std::lock_guard<std::mutex> lock(m_count->mutex);
        ++m_count->running;
    }
    try {
        std::thread([count = m_count, leave, task = std::move(task)]() mutable {
            task();
            // What the task owns must be gone when it counts as ended.
            task = nullptr;
            leave(*count);
        }).detach();
    } catch (...) {
        leave(*m_count);
        throw;
    }
}

bool Workers::Wait(std::chrono::milliseconds limit) {
    std::unique_lock<std::mutex> lock(m_count->mutex);
    return m_count->changed.wait_for(lock, limit, [this] { return m_count->running == 0; });
}

} // namespace controller::audio
