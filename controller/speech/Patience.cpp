#include "controller/speech/Patience.h"

#include "controller/speech/SpeechError.h"

#include <algorithm>
#include <cerrno>
#include <string>
#include <system_error>

#include <sys/eventfd.h>
#include <unistd.h>

namespace controller {

namespace {

std::string Seconds(std::chrono::milliseconds time) {
    const bool isWhole = time.count() % 1000 == 0;
    return isWhole ? std::to_string(time.count() / 1000) + " s" : std::to_string(time.count()) + " ms";
}

} // namespace

StopSignal::StopSignal() : m_descriptor(::eventfd(0, EFD_CLOEXEC)) {
    if (m_descriptor < 0)
        throw std::system_error(errno, std::generic_category(), "no event can be made");
}

StopSignal::~StopSignal() {
    ::close(m_descriptor);
}

void StopSignal::Give() const noexcept {
    (void)::eventfd_write(m_descriptor, 1); // fails when it has been given more often than can be counted
}

void Patience::Wait(std::vector<pollfd>& descriptors) const {
    Wait(descriptors, m_limit);
}

void Patience::Wait(std::vector<pollfd>& descriptors, std::chrono::milliseconds atMost) const {
    using std::chrono::milliseconds;
    const auto left = std::chrono::ceil<milliseconds>(m_end - std::chrono::steady_clock::now());
    if (left <= milliseconds(0))
        throw SpeechError("has not spoken within " + Seconds(m_limit));
    descriptors.push_back({m_stop.Descriptor(), POLLIN, 0});
    const int found =
        ::poll(descriptors.data(), descriptors.size(), static_cast<int>(std::min(left, atMost).count()));
    const bool isStopped = found > 0 && descriptors.back().revents != 0;
    descriptors.pop_back();
    if (isStopped)
        throw SpeechError("was stopped, for the controller ends");
    if (found < 0)
        for (pollfd& one : descriptors)
            one.revents = 0;
    if (found == 0 && atMost >= left)
        throw SpeechError("has not spoken within " + Seconds(m_limit));
}

} // namespace controller
