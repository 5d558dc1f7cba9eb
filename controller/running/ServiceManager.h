#pragma once

#include "controller/driver/Alarm.h"
#include "controller/driver/DriverOnly.h"
#include "controller/driver/Log.h"
#include "controller/events/EventFeed.h"
#include "controller/running/NotifySocket.h"

#include <chrono>
#include <optional>
#include <string>

namespace controller {

/// Tells the service manager that started the program (systemd) how it is: that it is ready, what it does,
/// that it ends; and, when a watchdog waits for that, that the driver thread still gets its work done: the
/// sign of life is work of that thread, so that none comes when it is stuck. Driver thread only.
class ServiceManager {
public:
    struct Environment {
        std::string socket;                                ///< NOTIFY_SOCKET
        std::optional<std::chrono::microseconds> watchdog; ///< a sign of life is due within this time

        /// What the service manager has put into the environment of this process. A watchdog that is meant
        /// for another process, or is no number, is none.
        [[nodiscard]] static Environment OfThisProcess();
    };

    /// `scheduler`, `feed` and `log` are borrowed for life. Throws as `NotifySocket` does.
    ServiceManager(const Environment& environment, IScheduler& scheduler, EventFeed& feed, Log& log);

    /// The house is served; `what` says so in one line. From now on there are signs of life.
    void Ready(const std::string& what);

    /// The end has begun. The signs of life go on until the end.
    void Stopping();

private:
    void Take(const Event& event);
    void Tell(const std::string& lines);
    void SignOfLife();

    const Environment m_environment;
    Log& m_log;
    NotifySocket m_socket;
    std::string m_idle; ///< what the status is when nothing plays and all is well
    std::string m_doing;
    std::string m_trouble;
    std::string m_told; ///< the status that was told last
    bool m_isReady = false;
    bool m_isFailureTold = false;
    Alarm m_signOfLife;
    EventFeed::Subscription m_subscription;
    DriverOnly m_driverOnly;
};

} // namespace controller
