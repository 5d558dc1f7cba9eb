#pragma once

#include "controller/driver/IScheduler.h"

#include <functional>
#include <map>
#include <utility>

namespace controller {

/// A scheduler whose time passes when the test says so.
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

private:
    Duration m_now{0};
    std::uint64_t m_lastId = 0;
    std::map<std::pair<Duration, std::uint64_t>, std::function<void()>> m_work;
};

} // namespace controller
