#include "controller/audio/snapcast/SnapcastThread.h"

namespace controller::audio {

SnapcastThread::SnapcastThread()
    : m_context(std::make_shared<boost::asio::io_context>(1))
    , m_work(m_context->get_executor())
    , m_thread([context = m_context] { context->run(); }) {}

SnapcastThread::~SnapcastThread() {
    m_context->stop();
    m_thread.join();
    // What is to be closed is, and is not kept for ever by what it waits for.
    m_context->restart();
    m_context->poll();
}

} // namespace controller::audio
