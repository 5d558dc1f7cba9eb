#pragma once

#include <boost/asio/executor_work_guard.hpp>
#include <boost/asio/io_context.hpp>

#include <memory>
#include <thread>

namespace controller::audio {

/// The one thread for all Snapcast servers. Whoever posts to it later than its end posts to nobody.
class SnapcastThread final {
public:
    /// @throws std::system_error when there is no thread for it.
    SnapcastThread();
    SnapcastThread(const SnapcastThread&) = delete;
    SnapcastThread& operator=(const SnapcastThread&) = delete;
    /// What can be done at once is done, and what would have to be waited for is dropped.
    ~SnapcastThread();

    [[nodiscard]] const std::shared_ptr<boost::asio::io_context>& Context() const { return m_context; }

private:
    const std::shared_ptr<boost::asio::io_context> m_context;
    const boost::asio::executor_work_guard<boost::asio::io_context::executor_type> m_work;
    std::thread m_thread;
};

} // namespace controller::audio
