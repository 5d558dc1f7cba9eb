#include "controller/audio/Mailbox.h"

#include <utility>

namespace controller::audio {

Mailbox::Mailbox(std::function<void(Task)> post) : m_post(std::move(post)) {}

void Mailbox::Post(Task task) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_post)
        return;
    m_post([self = shared_from_this(), task = std::move(task)] {
        if (self->IsOpen())
            task();
    });
}

bool Mailbox::IsOpen() const {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_post != nullptr;
}

void Mailbox::Close() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_post = nullptr;
}

} // namespace controller::audio
