#include "controller/audio/Ticker.h"

#include <utility>

namespace controller::audio {

Ticker::Ticker(std::chrono::milliseconds interval, std::function<void()> onTick)
    : m_interval(interval)
    , m_onTick(std::move(onTick))
    , m_thread([this] { Run(); }) {}

Ticker::~Ticker() {
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isEnding = true;
    }
    m_changed.notify_all();
    m_thread.join();
}

void Ticker::Switch(bool isOn) {
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (std::exchange(m_isOn, isOn) == isOn)
            return;
    }
    m_changed.notify_all();
}

void Ticker::Run() {
    std::unique_lock<std::mutex> lock(m_mutex);
    while (!m_isEnding) {
        m_changed.wait(lock, [this] { return m_isOn || m_isEnding; });
        if (m_changed.wait_for(lock, m_interval, [this] { return !m_isOn || m_isEnding; }))
            continue;
        lock.unlock();
        m_onTick();
        lock.lock();
    }
}

} // namespace controller::audio
