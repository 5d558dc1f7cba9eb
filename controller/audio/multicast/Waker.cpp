#include "controller/audio/multicast/Waker.h"

#include <cerrno>
#include <system_error>

#include <sys/eventfd.h>
#include <unistd.h>

namespace controller::audio {

Waker::Waker() : m_descriptor(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
    if (m_descriptor < 0)
        throw std::system_error(errno, std::generic_category(), "a thread that sends packets");
}

Waker::~Waker() {
    close(m_descriptor);
}

void Waker::Wake() const noexcept {
    (void)eventfd_write(m_descriptor, 1); // Fails only when it has been woken often enough.
}

void Waker::Drain() const noexcept {
    eventfd_t count = 0;
    (void)eventfd_read(m_descriptor, &count); // Fails only when nobody has woken it.
}

} // namespace controller::audio
