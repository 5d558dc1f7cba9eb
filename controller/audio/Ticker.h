#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace controller::audio {

/// Calls back in equal intervals, on a thread of its own, while it is switched on; asleep otherwise.
class Ticker final {
public:
    Ticker(std::chrono::milliseconds interval, std::function<void()> onTick);
    ~Ticker();

    Ticker(const Ticker&) = delete;
    Ticker& operator=(const Ticker&) = delete;

    void Switch(bool isOn);

private:
    void Run();

    const std::chrono::milliseconds m_interval;
    const std::function<void()> m_onTick;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_isOn = false;
    bool m_isEnding = false;
    std::thread m_thread;
};

} // namespace controller::audio
