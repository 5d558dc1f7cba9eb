#pragma once

#include <functional>
#include <memory>
#include <mutex>

namespace controller::audio {

/// The way back to the driver thread. It outlives the engine in the hands of threads that are stuck in a
/// device; what they still have to say is dropped then. Post: any thread. Close: driver thread.
class Mailbox final : public std::enable_shared_from_this<Mailbox> {
public:
    using Task = std::function<void()>;

    explicit Mailbox(std::function<void(Task)> post);

    /// Runs the task on the driver thread, later; drops it if the mailbox is closed by then.
    void Post(Task task);

    void Close();

private:
    [[nodiscard]] bool IsOpen() const;

    mutable std::mutex m_mutex;
    std::function<void(Task)> m_post;
};

} // namespace controller::audio
