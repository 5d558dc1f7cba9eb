#include "host/StackTrace.h"

#include <boost/stacktrace.hpp>

namespace vq {

struct StackTrace::Frames {
    boost::stacktrace::stacktrace stack;
};

StackTrace::StackTrace() : m_frames(std::make_shared<Frames>()) {}

std::size_t StackTrace::FrameCount() const noexcept {
    return m_frames->stack.size();
}

std::string StackTrace::Text() const {
    return boost::stacktrace::to_string(m_frames->stack);
}

} // namespace vq
