#include "controller/audio/Mailbox.h"

#include <utility>

namespace controller::audio {

void Mailbox::Post(Task task) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_driver == nullptr)
        return;
    m_driver->Post("the audio engine", [self = shared_from_this(), task = std::move(task)] {
        if (self->IsOpen())
            task();
    });
}

bool Mailbox::IsOpen() const {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_driver != nullptr;
}

void Mailbox::Close() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_driver = nullptr;
}

} // namespace controller::audio
