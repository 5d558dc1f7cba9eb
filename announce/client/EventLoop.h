#pragma once

#include "announce/basics/Failure.h"

#include <boost/asio/io_context.hpp>
#include <boost/asio/signal_set.hpp>

#include <chrono>
#include <memory>
#include <utility>

/// Waits for what happens on the network, and for SIGINT and SIGTERM while it waits.
class EventLoop {
public:
    using Duration = std::chrono::steady_clock::duration;

    EventLoop();
    EventLoop(const EventLoop&) = delete;
    EventLoop& operator=(const EventLoop&) = delete;

    [[nodiscard]] boost::asio::io_context& Context() noexcept { return m_context; }

    /// Waits until `isDone()`. Throws Interrupted when the user wants to leave.
    template <class Predicate>
    void WaitUntil(Predicate isDone) {
        while (!isDone())
            RunOne();
    }

    /// The same, for so long at most; says whether it is done.
    template <class Predicate>
    bool WaitFor(Duration longest, Predicate isDone) {
        const auto end = std::chrono::steady_clock::now() + longest;
        while (!isDone()) {
            if (!RunOneUntil(end))
                return isDone();
        }
        return true;
    }

    void Sleep(Duration duration) {
        (void)WaitFor(duration, [] { return false; });
    }

    /// Starts an operation and waits for its end. `start` is given the handler, which may outlive the wait
    /// when that is interrupted.
    template <class Start>
    boost::system::error_code Await(Start&& start) {
        struct Result {
            bool isDone = false;
            boost::system::error_code error;
        };
        const auto result = std::make_shared<Result>();
        std::forward<Start>(start)([result](const boost::system::error_code& error, auto&&...) {
            result->isDone = true;
            result->error = error;
        });
        WaitUntil([&result] { return result->isDone; });
        return result->error;
    }

private:
    void RunOne();
    bool RunOneUntil(std::chrono::steady_clock::time_point end);
    void ThrowIfInterrupted() const;

    boost::asio::io_context m_context;
    boost::asio::signal_set m_signals;
    bool m_isInterrupted = false;
};
