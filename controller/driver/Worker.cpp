#include "controller/driver/Worker.h"

#include <csignal>
#include <utility>

namespace controller {

Worker::Worker() {
    // Signals are the driver thread's business.
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    m_thread = std::thread([this] { Work(); });
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

Worker::~Worker() {
    {
        const std::lock_guard lock(m_mutex);
        m_isEnding = true;
    }
    m_wakeUp.notify_one();
    m_thread.join();
}

void Worker::Submit(std::function<void()> work) {
    {
        const std::lock_guard lock(m_mutex);
        m_queue.push_back(std::move(work));
    }
    m_wakeUp.notify_one();
}

void Worker::Work() {
    std::unique_lock lock(m_mutex);
    while (true) {
        m_wakeUp.wait(lock, [this] { return m_isEnding || !m_queue.empty(); });
        if (m_queue.empty())
            return;
        {
            const std::function<void()> work = std::move(m_queue.front());
            m_queue.pop_front();
            lock.unlock();
            work();
        }
        lock.lock();
    }
}

} // namespace controller
