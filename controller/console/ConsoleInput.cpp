#include "controller/console/ConsoleInput.h"

#include <cerrno>
#include <csignal>
#include <cstdint>
#include <stdexcept>
#include <utility>

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace controller {

ConsoleInput::ConsoleInput(int descriptor, IScheduler& driver, Hooks hooks)
    : m_descriptor(descriptor)
    , m_driver(driver)
    , m_hooks(std::move(hooks))
    , m_wakeUp(::eventfd(0, EFD_CLOEXEC))
    , m_gate(std::make_shared<Gate>()) {
    if (m_wakeUp < 0)
        throw std::runtime_error("the console cannot be read: there is no event descriptor left");
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    m_thread = std::thread([this] { Read(); });
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

ConsoleInput::~ConsoleInput() {
    {
        const std::lock_guard lock(m_gate->mutex);
        m_gate->isEnding = true;
    }
    m_gate->condition.notify_one();
    const std::uint64_t one = 1;
    (void)!::write(m_wakeUp, &one, sizeof one);
    m_thread.join();
    ::close(m_wakeUp);
}

void ConsoleInput::Read() {
    while (ReadMore()) {
        for (std::size_t end = m_buffer.find('\n'); end != std::string::npos; end = m_buffer.find('\n')) {
            const std::string line = m_buffer.substr(0, end);
            m_buffer.erase(0, end + 1);
            Deliver(line);
        }
    }
    if (!m_buffer.empty())
        Deliver(m_buffer);
    const std::lock_guard lock(m_gate->mutex);
    if (!m_gate->isEnding)
        m_driver.Post("the end of the console's input", m_hooks.ended);
}

/// Waits for input and appends it; false at its end, or when reading shall stop.
bool ConsoleInput::ReadMore() {
    pollfd waited[] = {{m_descriptor, POLLIN, 0}, {m_wakeUp, POLLIN, 0}};
    while (::poll(waited, 2, -1) < 0)
        if (errno != EINTR)
            return false;
    if (waited[1].revents != 0)
        return false;
    char bytes[65536];
    ssize_t size = 0;
    do {
        size = ::read(m_descriptor, bytes, sizeof bytes);
    } while (size < 0 && errno == EINTR);
    if (size <= 0)
        return false;
    m_buffer.append(bytes, static_cast<std::size_t>(size));
    return m_buffer.size() <= kMaxLine;
}

void ConsoleInput::Deliver(const std::string& text) {
    Line line;
    try {
        if (text.size() > kMaxLine)
            throw ConsoleError("a line is longer than 1 MiB");
        line.command = ParseConsoleLine(text);
    } catch (const ConsoleError& error) {
        line.error = error.what();
    }
    if (!line.error.empty() || !line.command.verb.empty())
        Await(line);
}

/// Hands the line over, and waits until it is answered or reading shall stop.
void ConsoleInput::Await(const Line& line) {
    std::unique_lock lock(m_gate->mutex);
    if (m_gate->isEnding)
        return;
    m_gate->isAnswered = false;
    const Answered answered = [gate = m_gate] {
        const std::lock_guard answering(gate->mutex);
        gate->isAnswered = true;
        gate->condition.notify_one();
    };
    m_driver.Post("a command of the console",
                  [take = m_hooks.take, line, answered] { take(line, answered); });
    m_gate->condition.wait(lock, [this] { return m_gate->isAnswered || m_gate->isEnding; });
}

} // namespace controller
