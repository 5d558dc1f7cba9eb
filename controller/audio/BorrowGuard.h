#pragma once

#include "controller/audio/Borrowed.h"
#include "controller/driver/Descriptor.h"
#include "controller/driver/Log.h"

#include <filesystem>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include <sys/types.h>

namespace controller::audio {

/// A process that knows what is borrowed and gives it back when this one ends without having done so: until
/// the next start people would hear their music quiet. It is started at the first entry, holds nothing but
/// the end of a pipe, and ends with this object. Driver thread.
class BorrowGuard final {
public:
    /// `words` is the program, with arguments, that runs `GuardBorrowed`. The log is borrowed for life.
    BorrowGuard(std::vector<std::string> words, Log& log);
    BorrowGuard(const BorrowGuard&) = delete;
    BorrowGuard& operator=(const BorrowGuard&) = delete;
    ~BorrowGuard();

    /// Tells it what has changed, as `Borrowings::Watch`. It is never waited for; one that is gone is started
    /// again.
    void Tell(const std::vector<Borrowed>& entries);

private:
    void Start();
    void Drop(const std::string& why);
    [[nodiscard]] bool Send(const std::string& text);

    const std::vector<std::string> m_words;
    Log& m_log;
    std::map<std::string, Borrowed> m_entries; ///< by key, as text
    Descriptor m_pipe;
    pid_t m_process = -1;
};

/// What the guard's program does: reads entries until nobody is left to write any, gives back what is still
/// borrowed then, and gives the exit status. Waits for servers some seconds at most.
[[nodiscard]] int GuardBorrowed(int input);

} // namespace controller::audio
