#include "controller/driver/DriverThread.h"

#include <boost/asio/executor_work_guard.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/steady_timer.hpp>

#include <cassert>
#include <exception>
#include <utility>

namespace controller {

using Clock = std::chrono::steady_clock;

struct DriverThread::Loop {
    boost::asio::io_context context{1};
    boost::asio::steady_timer timer{context};
};

DriverThread::DriverThread(Log& log) : m_log(log), m_loop(std::make_unique<Loop>()) {}

DriverThread::~DriverThread() = default;

boost::asio::io_context& DriverThread::Context() noexcept {
    return m_loop->context;
}

void DriverThread::Run() {
    assert(IsCurrent());
    const auto work = boost::asio::make_work_guard(m_loop->context);
    m_loop->context.run();
}

void DriverThread::Stop() {
    m_loop->context.stop();
}

void DriverThread::Post(const char* what, std::function<void()> work) {
    ++m_waiting;
    boost::asio::post(m_loop->context, [this, what, work = std::move(work)] {
        --m_waiting;
        Do(what, work);
    });
}

bool DriverThread::TryPost(const char* what, std::function<void()> work) {
    if (m_waiting >= kMaxWaiting)
        return false;
    Post(what, std::move(work));
    return true;
}

void DriverThread::Do(const char* what, const std::function<void()>& work) {
    assert(IsCurrent());
    const auto start = Clock::now();
    try {
        work();
    } catch (const std::exception& error) {
        m_log.Error(std::string("A failure in ") + what + ": " + error.what());
    } catch (...) {
        m_log.Error(std::string("A failure of unknown kind in ") + what);
    }
    const auto taken = std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - start);
    if (taken > kSlow)
        m_log.Warning(std::string("The driver thread was busy for ") + std::to_string(taken.count()) +
                      " ms with " + what);
}

IScheduler::Duration DriverThread::Now() const {
    return std::chrono::duration_cast<Duration>(Clock::now().time_since_epoch());
}

std::uint64_t DriverThread::After(Duration delay, const char* what, std::function<void()> work) {
    assert(IsCurrent());
    const std::uint64_t id = ++m_lastId;
    const TimePoint due = Clock::now() + delay;
    const auto place = m_later.emplace(Key{due, id}, Later{what, std::move(work)}).first;
    m_dueOf.emplace(id, due);
    if (place == m_later.begin())
        Rearm();
    return id;
}

void DriverThread::Cancel(std::uint64_t id) noexcept {
    assert(IsCurrent());
    const auto place = m_dueOf.find(id);
    if (place == m_dueOf.end())
        return;
    // The timer may now fire for nothing; that is cheaper than setting it anew.
    m_later.erase({place->second, id});
    m_dueOf.erase(place);
}

void DriverThread::Rearm() {
    if (m_later.empty())
        return;
    m_loop->timer.expires_at(m_later.begin()->first.first);
    m_loop->timer.async_wait([this](const boost::system::error_code& error) {
        if (!error)
            DoDue();
    });
}

void DriverThread::DoDue() {
    const TimePoint start = Clock::now();
    while (!m_later.empty() && m_later.begin()->first.first <= start && Clock::now() - start <= kTurn) {
        const auto due = m_later.extract(m_later.begin());
        m_dueOf.erase(due.key().second);
        Do(due.mapped().what, due.mapped().work);
    }
    Rearm(); // What is left has been due already: it is done behind what else waits.
}

} // namespace controller
