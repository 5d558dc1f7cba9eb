#pragma once

#include "controller/driver/IScheduler.h"

#include <functional>
#include <memory>
#include <mutex>

namespace controller::audio {

/// The way back to the driver thread. It outlives the engine in the hands of threads that are stuck in a
/// device; what they still have to say is dropped then. Post: any thread. Close: driver thread.
class Mailbox final : public std::enable_shared_from_this<Mailbox> {
public:
    using Task = std::function<void()>;

    /// `driver` is borrowed until `Close`.
    explicit Mailbox(IScheduler& driver) : m_driver(&driver) {}

    /// Runs the task on the driver thread, later; drops it if the mailbox is closed by then.
    void Post(Task task);

    void Close();

private:
    [[nodiscard]] bool IsOpen() const;

    mutable std::mutex m_mutex;
    IScheduler* m_driver; ///< null: closed
};

} // namespace controller::audio
