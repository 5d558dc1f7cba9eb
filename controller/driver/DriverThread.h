#pragma once

#include "controller/driver/IScheduler.h"
#include "controller/driver/Log.h"

#include <atomic>
#include <map>
#include <memory>
#include <string>
#include <thread>

namespace boost::asio {
class io_context;
}

namespace controller {

/// The one thread that everything that touches the agent runs on: the thread that made this object. Other
/// threads post.
///
/// Nothing on it blocks. Work that takes longer than `kSlow` is named in the log; what work throws is logged,
/// and the thread goes on.
class DriverThread final : public IScheduler {
public:
    static constexpr std::chrono::milliseconds kSlow{50};
    /// As many pieces of work from outside may wait at once.
    static constexpr std::size_t kMaxWaiting = 1000;

    explicit DriverThread(Log& log);
    DriverThread(const DriverThread&) = delete;
    DriverThread& operator=(const DriverThread&) = delete;
    ~DriverThread();

    /// For the parts that do their own input and output on this thread.
    [[nodiscard]] boost::asio::io_context& Context() noexcept;

    /// Works until `Stop`; whoever made the object calls it.
    void Run();

    /// Ends `Run`; what waits then is dropped. Any thread.
    void Stop();

    [[nodiscard]] bool IsCurrent() const noexcept { return std::this_thread::get_id() == m_thread; }

    void Post(const char* what, std::function<void()> work) override;

    /// As `Post`, for what comes from outside: refused (false) while `kMaxWaiting` pieces of work wait.
    [[nodiscard]] bool TryPost(const char* what, std::function<void()> work);

    /// Does the work now, timed and with its exceptions caught, as posted work is. Driver thread only.
    void Do(const char* what, const std::function<void()>& work);

    [[nodiscard]] Duration Now() const override;
    std::uint64_t After(Duration delay, const char* what, std::function<void()> work) override;
    void Cancel(std::uint64_t id) noexcept override;

private:
    using TimePoint = std::chrono::steady_clock::time_point;
    struct Loop;
    struct Later {
        const char* what;
        std::function<void()> work;
    };
    using Key = std::pair<TimePoint, std::uint64_t>;

    void Rearm();
    void DoDue();

    Log& m_log;
    const std::thread::id m_thread = std::this_thread::get_id();
    const std::unique_ptr<Loop> m_loop;
    std::atomic<std::size_t> m_waiting{0};
    std::uint64_t m_lastId = 0;
    std::map<Key, Later> m_later;
    std::map<std::uint64_t, TimePoint> m_dueOf;
};

} // namespace controller
