#include "announce/client/EventLoop.h"

#include <csignal>

EventLoop::EventLoop() : m_signals(m_context, SIGINT, SIGTERM) {
    m_signals.async_wait([this](const boost::system::error_code& error, int) {
        if (!error)
            m_isInterrupted = true;
    });
}

void EventLoop::RunOne() {
    m_context.run_one();
    ThrowIfInterrupted();
}

bool EventLoop::RunOneUntil(std::chrono::steady_clock::time_point end) {
    const bool hasRun = m_context.run_one_until(end) > 0;
    ThrowIfInterrupted();
    return hasRun;
}

void EventLoop::ThrowIfInterrupted() const {
    if (m_isInterrupted)
        throw Interrupted();
}
