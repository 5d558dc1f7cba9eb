#pragma once

#include "controller/driver/IScheduler.h"
#include "tests/controller/support/Within.h"

#include <condition_variable>
#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <utility>

namespace controller {

/// A scheduler whose time passes, and whose posted work is done, when the test says so.
class FakeScheduler final : public IScheduler {
public:
    [[nodiscard]] Duration Now() const override { return m_now; }

    std::uint64_t After(Duration delay, const char* /*what*/, std::function<void()> work) override {
        m_work.emplace(std::pair(m_now + delay, ++m_lastId), std::move(work));
        return m_lastId;
    }

    void Cancel(std::uint64_t id) noexcept override {
        for (auto place = m_work.begin(); place != m_work.end(); ++place) {
            if (place->first.second != id)
                continue;
            m_work.erase(place);
            return;
        }
    }

    void Post(const char* /*what*/, std::function<void()> work) override {
        const std::lock_guard lock(m_mutex);
        m_posted.push_back(std::move(work));
        m_arrived.notify_one();
    }

    /// Does what is posted, and what that posts.
    void DoPosted() {
        while (HasPosted())
            DoNextPosted();
    }

    /// Waits for the next piece of work that another thread posts, and does it.
    /// @throws std::runtime_error when none comes.
    void DoNextPosted() {
        std::unique_lock lock(m_mutex);
        if (!m_arrived.wait_for(lock, kPatience, [this] { return !m_posted.empty(); }))
            throw std::runtime_error("waited in vain for work that another thread posts");
        const auto work = std::move(m_posted.front());
        m_posted.pop_front();
        lock.unlock();
        work();
    }

    void Advance(Duration duration) {
        const Duration end = m_now + duration;
        while (!m_work.empty() && m_work.begin()->first.first <= end) {
            const auto due = m_work.extract(m_work.begin());
            m_now = due.key().first;
            due.mapped()();
        }
        m_now = end;
    }

    [[nodiscard]] std::size_t Waiting() const { return m_work.size(); }
    [[nodiscard]] bool HasPosted() {
        const std::lock_guard lock(m_mutex);
        return !m_posted.empty();
    }

private:
    Duration m_now{0};
    std::uint64_t m_lastId = 0;
    std::map<std::pair<Duration, std::uint64_t>, std::function<void()>> m_work;
    std::mutex m_mutex;
    std::condition_variable m_arrived;
    std::deque<std::function<void()>> m_posted;
};

} // namespace controller
