#pragma once

#include "controller/audio/Borrowings.h"
#include "controller/audio/Mailbox.h"
#include "controller/audio/pulse/Ducking.h"
#include "controller/audio/pulse/Pausing.h"
#include "controller/audio/pulse/PulseServer.h"

#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace controller::audio {

/// What happens to what others play while an announcement plays.
struct Duck {
    double decibels = -15;  ///< Negative: how much quieter it is.
    bool isPausing = false; ///< Media players that can be paused are.
};

/// The sound server as the rooms use it: one connection for all of them, made when it is first needed, and
/// what is lowered for them. It may outlive the engine in the hands of threads that are stuck in a device.
/// Operations: any thread, where nothing else is said.
class PulseDesk final : public std::enable_shared_from_this<PulseDesk> {
public:
    /// So long a room that opens waits for the server's answer.
    static constexpr std::chrono::milliseconds kAnswer{1500};
    /// And so long until others are quiet, which takes a tenth of a second and what the disk needs.
    static constexpr std::chrono::milliseconds kLowering{300};

    explicit PulseDesk(std::shared_ptr<Mailbox> mailbox) : m_mailbox(std::move(mailbox)) {}
    PulseDesk(const PulseDesk&) = delete;
    PulseDesk& operator=(const PulseDesk&) = delete;
    ~PulseDesk() = default;

    /// `changed` is called when the server has come or gone, or its sinks have. Driver thread, until `Close`.
    void Listen(std::function<void()> changed) { m_changed = std::move(changed); }

    /// From now on other programs' music is lowered, and what a former run has left is raised; without this,
    /// nothing of other programs is touched. Driver thread; what is given is borrowed until `Close`.
    void Begin(IScheduler& driver, Borrowings& borrowings);

    /// Raises at once what is lowered, and touches nothing any more. Driver thread.
    void Close();

    /// Whether the server has answered, and nothing that it has is lowered. Driver thread.
    [[nodiscard]] bool HasGivenBack() const;

    /// What WhyNot gives when the time is over.
    static constexpr const char* kNoAnswer = "the sound server does not answer";
    /// Of a server that has nothing but what swallows all.
    static constexpr const char* kNoDevice = "the sound server has no sound device";

    /// The sink that a server without any device makes, so that programs have one.
    static constexpr const char* kDummy = "auto_null";

    /// What the server has; nothing without an answer within `kAnswer`.
    [[nodiscard]] std::optional<PulseState> State();

    /// Why nothing can be heard on the sink, "default" being the one that the server says; empty when it can.
    /// Waits for the server, `kAnswer` at most.
    [[nodiscard]] std::string WhyNot(const std::string& sink);

    /// The same of several, for the price of one.
    [[nodiscard]] std::vector<std::string> WhyNot(const std::vector<std::string>& sinks);

    /// Does that to others on the sink, for as long as what comes back is kept. Waits until what plays there
    /// is lowered, `kLowering` at most. Not on the driver thread.
    [[nodiscard]] std::shared_ptr<void> Lower(const std::string& sink, const Duck& duck);

private:
    [[nodiscard]] PulseServer& Server();
    void OnState(const PulseState& state);

    const std::shared_ptr<Mailbox> m_mailbox;
    std::mutex m_mutex;
    std::unique_ptr<Ducking> m_ducking; ///< Driver thread.
    std::unique_ptr<Pausing> m_pausing; ///< Driver thread.
    std::function<void()> m_changed;    ///< Driver thread.
    PulseState m_last;                  ///< Driver thread.
    std::unique_ptr<PulseServer> m_server;
};

} // namespace controller::audio
