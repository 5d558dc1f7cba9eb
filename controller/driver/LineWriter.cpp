#include "controller/driver/LineWriter.h"

#include <cerrno>
#include <condition_variable>
#include <csignal>
#include <deque>
#include <mutex>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace controller {

struct LineWriter::Queue {
    Queue(int number, Gap gapLine) : descriptor(number), gap(std::move(gapLine)) {}
    Queue(const Queue&) = delete;
    Queue& operator=(const Queue&) = delete;
    ~Queue() {
        if (descriptor >= 0)
            ::close(descriptor);
    }

    /// For the first one and those that come with it, or the end.
    void WaitForLines(std::unique_lock<std::mutex>& lock) {
        changed.wait(lock, [this] { return isEnding || !lines.empty(); });
        changed.wait_for(lock, kGather, [this] { return isEnding; });
    }

    const int descriptor;
    const Gap gap;
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<std::string> lines;
    std::size_t bytes = 0; ///< of the lines, and of the one that is being written
    std::size_t dropped = 0;
    bool isEnding = false;
    bool isDone = false;
};

namespace {

/// May wait for ever. What cannot be written has nowhere to say so.
void WriteAll(int descriptor, const std::string& line) {
    std::size_t done = 0;
    while (done < line.size()) {
        const ssize_t written = ::write(descriptor, line.data() + done, line.size() - done);
        if (written > 0)
            done += static_cast<std::size_t>(written);
        else if (written < 0 && errno == EAGAIN) {
            pollfd room{descriptor, POLLOUT, 0};
            (void)::poll(&room, 1, -1); // the next write tells what it was
        } else if (written == 0 || errno != EINTR)
            return;
    }
}

} // namespace

LineWriter::LineWriter(int descriptor, Gap gap)
    : m_queue(std::make_shared<Queue>(::fcntl(descriptor, F_DUPFD_CLOEXEC, 0), std::move(gap))) {
    // Signals are the driver thread's business.
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    m_thread = std::thread([queue = m_queue] { Work(*queue); });
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

LineWriter::~LineWriter() {
    std::unique_lock lock(m_queue->mutex);
    m_queue->isEnding = true;
    m_queue->changed.notify_all();
    const bool isDone = m_queue->changed.wait_for(lock, kPatience, [this] { return m_queue->isDone; });
    lock.unlock();
    if (isDone)
        m_thread.join();
    else
        m_thread.detach(); // nobody reads; what waits ends with the process
}

void LineWriter::Write(std::string line) {
    const std::lock_guard lock(m_queue->mutex);
    const bool isRoom = m_queue->lines.empty() || m_queue->bytes + line.size() <= kMaxWaiting;
    // Once a line is dropped the next ones are, until its gap has been said.
    if (m_queue->dropped > 0 || !isRoom) {
        ++m_queue->dropped;
        return;
    }
    // Else it is not asleep, or gathers.
    const bool isFirst = m_queue->lines.empty();
    m_queue->bytes += line.size();
    m_queue->lines.push_back(std::move(line));
    if (isFirst)
        m_queue->changed.notify_all();
}

void LineWriter::Work(Queue& queue) {
    std::unique_lock lock(queue.mutex);
    while (true) {
        if (queue.lines.empty())
            queue.WaitForLines(lock);
        if (queue.lines.empty())
            break;
        const std::string line = std::move(queue.lines.front());
        queue.lines.pop_front();
        lock.unlock();
        WriteAll(queue.descriptor, line);
        lock.lock();
        queue.bytes -= line.size();
        if (queue.lines.empty() && queue.dropped > 0) {
            queue.lines.push_back(queue.gap(std::exchange(queue.dropped, 0)));
            queue.bytes += queue.lines.back().size();
        }
    }
    queue.isDone = true;
    queue.changed.notify_all();
}

} // namespace controller
