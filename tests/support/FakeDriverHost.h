#pragma once

#include "framework/IDriverHost.h"
#include "tests/support/CallLog.h"
#include "tests/support/FakeTimers.h"

#include <cstdint>
#include <string>

/// Hands out the agent's device id and makes its outgoing messages.
class FakeHelper final : public IDriverHelperV2 {
public:
    explicit FakeHelper(CallLog& log) : m_log(log) {}

    [[nodiscard]] vq::auto_com<ICmdMessage> CreateCmdMessage(const std::string& name) const override;
    [[nodiscard]] std::uint32_t GetDeviceId() const override { return deviceId; }

    std::uint32_t deviceId = 100;

private:
    CallLog& m_log;
};

/// What stands behind the base driver's services.
class FakeDriverHost final : public IDriverHost {
public:
    FakeDriverHost(CallLog& log, FakeTimers& timers) : helper(log), m_log(log), m_timers(timers) {}

    [[nodiscard]] const IDriverHelperV2& GetHelper(const VqBaseDriver& driver) override;
    std::uint32_t AddTimer(VqBaseDriver& driver, std::uint32_t interval, std::uint32_t unit) override;
    void ForgetDriver(VqBaseDriver& driver) noexcept override;
    void FireEvent(std::uint32_t eventId) override;
    void LogMessage(unsigned level, const char* text) override;
    void InvalidateState(VqBaseDriver& driver) override;
    void HandlerRegistered(Registration registration, const std::string& name) override;
    void HandlerMissing(const std::string& name) override;

    FakeHelper helper;

private:
    CallLog& m_log;
    FakeTimers& m_timers;
};
