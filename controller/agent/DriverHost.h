#pragma once

#include "controller/agent/Timers.h"
#include "controller/driver/Log.h"
#include "controller/driver/Worker.h"
#include "framework/AssertWriter.h"
#include "framework/IDriverHost.h"
#include "host/IDriverHelperV2.h"
#include "host/ILogger.h"

#include <atomic>
#include <functional>

namespace controller {

/// What stands behind the base driver's own services in this program, and the log services that the agent
/// writes to.
class DriverHost final : public IDriverHost, public ILogger, private IDriverHelperV2, private AssertWriter {
public:
    /// The agent's own device. No room and no navigator has this id.
    static constexpr std::uint32_t kDeviceId = 0;

    /// Who wants to know what the driver calls; empty ones are left out.
    struct Listeners {
        std::function<void(std::uint32_t eventId)> eventFired;
        std::function<void()> stateInvalidated;
        std::function<void(const std::string& name)> handlerMissing;
    };

    /// Both are borrowed for life.
    DriverHost(Timers& timers, controller::Log& log) : m_timers(timers), m_log(log) {}

    void SetListeners(Listeners listeners) { m_listeners = std::move(listeners); }

    [[nodiscard]] const IDriverHelperV2& GetHelper(const VqBaseDriver& driver) override;
    std::uint32_t AddTimer(VqBaseDriver& driver, std::uint32_t interval, std::uint32_t unit) override;
    void ForgetDriver(VqBaseDriver& driver) noexcept override;
    void FireEvent(std::uint32_t eventId) override;
    void LogMessage(unsigned level, const char* text) override;
    void InvalidateState(VqBaseDriver& driver) override;
    void HandlerRegistered(Registration registration, const std::string& name) override;
    void HandlerMissing(const std::string& name) override;

    void Log(int level, const std::string& text) override;

private:
    [[nodiscard]] vq::auto_com<ICmdMessage> CreateCmdMessage(const std::string& name) const override;
    [[nodiscard]] std::uint32_t GetDeviceId() const override { return kDeviceId; }
    void Write(const char* file, int line, const vq::StackTrace& stack) override;

    Timers& m_timers;
    controller::Log& m_log;
    Listeners m_listeners;
    std::atomic<bool> m_isNamingStack = false;
    Worker m_worker; ///< finds the names of a stack, which reads debug information and may take seconds
};

} // namespace controller
