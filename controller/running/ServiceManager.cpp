#include "controller/running/ServiceManager.h"

#include "controller/driver/Text.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <utility>

#include <unistd.h>

namespace controller {

namespace {

/// A whole number; nothing when the variable is missing or holds anything else.
std::optional<std::int64_t> NumberOf(const char* variable) {
    const char* text = std::getenv(variable);
    return ReadNumber<std::int64_t>(text != nullptr ? text : "", 0, 999'999'999'999'999'999);
}

} // namespace

ServiceManager::Environment ServiceManager::Environment::OfThisProcess() {
    Environment environment;
    if (const char* socket = std::getenv("NOTIFY_SOCKET"))
        environment.socket = socket;
    const auto period = NumberOf("WATCHDOG_USEC");
    const auto process = NumberOf("WATCHDOG_PID");
    const bool isForAnother = std::getenv("WATCHDOG_PID") != nullptr && process != ::getpid();
    if (period && *period > 0 && !isForAnother)
        environment.watchdog = std::chrono::microseconds(*period);
    return environment;
}

ServiceManager::ServiceManager(const Environment& environment,
                               IScheduler& scheduler,
                               EventFeed& feed,
                               Log& log)
    : m_environment(environment)
    , m_log(log)
    , m_socket(environment.socket)
    , m_signOfLife(scheduler, "a sign of life for the service manager") {
    if (m_socket.IsOpen())
        m_subscription = feed.Subscribe([this](const Event& event) { Take(event); });
}

void ServiceManager::Tell(const std::string& lines) {
    // Once is enough: a service manager that is gone does not come back for this process.
    if (!m_socket.Send(lines) && !std::exchange(m_isFailureTold, true))
        m_log.Warning("The service manager cannot be reached at " + m_environment.socket);
}

void ServiceManager::Ready(const std::string& what) {
    m_driverOnly.Assert();
    m_isReady = true;
    m_idle = OneLine(what);
    m_told = m_idle + m_doing + m_trouble;
    Tell("READY=1\nSTATUS=" + m_told);
    if (m_socket.IsOpen() && m_environment.watchdog)
        SignOfLife();
}

void ServiceManager::Stopping() {
    m_driverOnly.Assert();
    m_isReady = false;
    Tell("STOPPING=1\nSTATUS=Ending");
}

void ServiceManager::SignOfLife() {
    Tell("WATCHDOG=1");
    // Twice in the time that is given, so that a late one is not the last.
    const auto half = std::chrono::duration_cast<IScheduler::Duration>(*m_environment.watchdog / 2);
    m_signOfLife.Start(std::max(half, IScheduler::Duration{1}), [this] { SignOfLife(); });
}

void ServiceManager::Take(const Event& event) {
    if (const auto* failed = std::get_if<events::StateNotSaved>(&event.data))
        m_trouble = "; the disk does not take the announcements: " + OneLine(failed->reason);
    else if (std::holds_alternative<events::StateSaved>(event.data))
        m_trouble.clear();
    else if (const auto* started = std::get_if<events::AnnouncementStarted>(&event.data))
        m_doing = "; playing announcement " + std::to_string(started->announcement);
    else if (std::holds_alternative<events::AnnouncementEnded>(event.data))
        m_doing.clear();
    const std::string status = m_idle + m_doing + m_trouble;
    if (m_isReady && status != m_told)
        Tell("STATUS=" + (m_told = status));
}

} // namespace controller
