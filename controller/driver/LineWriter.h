#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <thread>

namespace controller {

/// Writes lines to a descriptor that nobody may be reading, on a thread of its own: nothing here ever waits
/// for a reader. What a full pipe leaves no room for is dropped, counted, and said in its place.
class LineWriter {
public:
    /// So many bytes wait at most; a longer line is taken when none waits.
    static constexpr std::size_t kMaxWaiting = std::size_t{1} << 20U;
    /// So long an end waits for what is still to be written.
    static constexpr std::chrono::milliseconds kPatience{1000};
    /// So long it waits behind a line for what comes with it: waking it for each line would cost who writes
    /// more than the lines do.
    static constexpr std::chrono::milliseconds kGather{2};

    /// The line that stands in the place of so many dropped ones. Called on the writing thread, which may
    /// outlive this object.
    using Gap = std::function<std::string(std::size_t dropped)>;

    /// `descriptor` is copied.
    LineWriter(int descriptor, Gap gap);
    LineWriter(const LineWriter&) = delete;
    LineWriter& operator=(const LineWriter&) = delete;
    ~LineWriter();

    /// Any thread. The line brings its end along.
    void Write(std::string line);

private:
    struct Queue;

    static void Work(Queue& queue);

    const std::shared_ptr<Queue> m_queue; ///< shared with a thread that may hang
    std::thread m_thread;
};

} // namespace controller
