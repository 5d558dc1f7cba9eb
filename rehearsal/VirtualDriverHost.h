#pragma once

#include "framework/IDriverHost.h"
#include "rehearsal/HostSettings.h"
#include "rehearsal/Trace.h"
#include "rehearsal/VirtualTimers.h"

#include <cstdint>
#include <string>

/// What stands behind the base driver's services.
class VirtualDriverHost final : public IDriverHost {
public:
    VirtualDriverHost(const HostSettings& settings, VirtualTimers& timers, Trace& trace)
        : m_helper(settings)
        , m_timers(timers)
        , m_trace(trace) {}

    [[nodiscard]] const IDriverHelperV2& GetHelper(const VqBaseDriver& /*driver*/) override {
        return m_helper;
    }
    std::uint32_t AddTimer(VqBaseDriver& driver, std::uint32_t interval, std::uint32_t unit) override;
    void ForgetDriver(VqBaseDriver& driver) noexcept override;
    void FireEvent(std::uint32_t eventId) override;
    void LogMessage(unsigned level, const char* text) override;
    void InvalidateState(VqBaseDriver& driver) override;
    void HandlerRegistered(Registration registration, const std::string& name) override;
    void HandlerMissing(const std::string& name) override;

private:
    class Helper final : public IDriverHelperV2 {
    public:
        explicit Helper(const HostSettings& settings) : m_settings(settings) {}

        [[nodiscard]] vq::auto_com<ICmdMessage> CreateCmdMessage(const std::string& name) const override;
        [[nodiscard]] std::uint32_t GetDeviceId() const override { return m_settings.deviceId; }

    private:
        const HostSettings& m_settings;
    };

    Helper m_helper;
    VirtualTimers& m_timers;
    Trace& m_trace;
};
