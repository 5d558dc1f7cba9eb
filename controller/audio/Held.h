#pragma once

#include <memory>
#include <mutex>
#include <utility>

namespace controller::audio {

/// What an output keeps until its room has heard the last sample, or gives it up. Any thread.
class Held final {
public:
    void Keep(std::shared_ptr<void> what) {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (!m_isOver)
            m_what = std::move(what);
    }

    /// For good.
    void LetGo() {
        std::shared_ptr<void> what;
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isOver = true;
        what.swap(m_what);
    }

private:
    std::mutex m_mutex;
    std::shared_ptr<void> m_what;
    bool m_isOver = false;
};

} // namespace controller::audio
