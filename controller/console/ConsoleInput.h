#pragma once

#include "controller/console/ConsoleCommand.h"
#include "controller/driver/IScheduler.h"

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

namespace controller {

/// Reads commands, one a line, on a thread of its own. The next line is read when the one before has been
/// answered, so that replies stand in order and never more than one command waits.
class ConsoleInput {
public:
    /// A line taken apart, or why it cannot be.
    struct Line {
        ConsoleCommand command;
        std::string error;
    };
    using Answered = std::function<void()>;

    struct Hooks {
        std::function<void(const Line&, const Answered&)>
            take;                    ///< on the driver thread; calls `Answered` once, there
        std::function<void()> ended; ///< on the driver thread: there is no more input
    };

    /// The longest line, in bytes.
    static constexpr std::size_t kMaxLine = std::size_t{1024} * 1024;

    /// Descriptor and driver are borrowed for life.
    ConsoleInput(int descriptor, IScheduler& driver, Hooks hooks);
    ConsoleInput(const ConsoleInput&) = delete;
    ConsoleInput& operator=(const ConsoleInput&) = delete;
    /// Stops reading, at once.
    ~ConsoleInput();

private:
    /// What an answer opens; it may come when the input is gone.
    struct Gate {
        std::mutex mutex;
        std::condition_variable condition;
        bool isAnswered = true;
        bool isEnding = false;
    };

    void Read();
    bool ReadMore();
    void Deliver(const std::string& text);
    void Await(const Line& line);

    const int m_descriptor;
    IScheduler& m_driver;
    Hooks m_hooks;
    int m_wakeUp;
    std::string m_buffer;
    std::shared_ptr<Gate> m_gate;
    std::thread m_thread;
};

} // namespace controller
