#pragma once

#include "controller/audio/home_assistant/HouseLimits.h"
#include "controller/audio/home_assistant/HttpCall.h"

#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace controller::audio {

class HomeAssistantPlay;

/// All rooms that are players of Home Assistant: one thread, which begins with the first of them. Operations:
/// any thread, where nothing else is said; none waits for the network.
class HomeAssistantDesk final {
public:
    explicit HomeAssistantDesk(const HouseLimits& limits);
    HomeAssistantDesk(const HomeAssistantDesk&) = delete;
    HomeAssistantDesk& operator=(const HomeAssistantDesk&) = delete;
    ~HomeAssistantDesk();

    [[nodiscard]] const HouseLimits& Limits() const { return m_limits; }

    /// Does it on the desk's thread; nothing any more when that is closed.
    /// @throws std::system_error when there is no thread.
    void Post(std::function<void()> work);

    /// The desk's thread: what is under way has its connections, and is given up when the desk closes.
    void Enter(const std::shared_ptr<HomeAssistantPlay>& play);
    [[nodiscard]] const HttpMeans& Means() const { return m_means; }

    /// Gives up what is under way, and ends the thread.
    void Close();

private:
    struct Engine;

    const HouseLimits m_limits;
    const std::unique_ptr<Engine> m_engine;
    const HttpMeans m_means;
    std::vector<std::weak_ptr<HomeAssistantPlay>> m_plays;
    std::mutex m_mutex;
    bool m_isClosed = false;
    std::thread m_thread;
};

} // namespace controller::audio
