#pragma once

#include "framework/IDriverHost.h"
#include "framework/InstanceRegistry.h"
#include "host/IDeviceManager.h"
#include "host/ITimerManager.h"

#include <cstdint>
#include <string>

/// The least host that an agent works at: devices and timers take every call and do nothing.
class QuietHost final : private IDriverHost,
                        private IDriverHelperV2,
                        private IDeviceManager,
                        private ITimerManager {
public:
    QuietHost();

    [[nodiscard]] IInstanceManager& Instances() { return m_instances; }

private:
    [[nodiscard]] const IDriverHelperV2& GetHelper(const VqBaseDriver& /*driver*/) override { return *this; }
    std::uint32_t AddTimer(VqBaseDriver& driver, std::uint32_t interval, std::uint32_t unit) override;
    void ForgetDriver(VqBaseDriver& /*driver*/) noexcept override {}
    void FireEvent(std::uint32_t /*eventId*/) override {}
    void LogMessage(unsigned /*level*/, const char* /*text*/) override {}
    void InvalidateState(VqBaseDriver& /*driver*/) override {}
    void HandlerRegistered(Registration /*registration*/, const std::string& /*name*/) override {}
    void HandlerMissing(const std::string& name) override;

    [[nodiscard]] vq::auto_com<ICmdMessage> CreateCmdMessage(const std::string& name) const override;
    [[nodiscard]] std::uint32_t GetDeviceId() const override { return 100; }

    std::int32_t SendCommandToDevice(std::uint32_t deviceId,
                                     ICmdMessage* message,
                                     std::uint32_t flags,
                                     std::uint32_t context) override;
    void InvalidateDeviceState(std::uint32_t /*deviceId*/) override {}
    void GetDeviceInterface(std::uint32_t deviceId, const std::string& guid, void** out) override;

    std::uint32_t
    AddTimer(std::uint32_t interval, std::uint32_t unit, ITimerManagerCallback* callback) override;
    void KillTimer(std::uint32_t& timerId) override { timerId = 0; }
    void KillAllTimers(ITimerManagerCallback* /*callback*/) override {}

    InstanceRegistry m_instances;
};
