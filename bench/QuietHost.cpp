#include "bench/QuietHost.h"

#include "framework/CmdMessage.h"

#include <stdexcept>

QuietHost::QuietHost() {
    m_instances.RegisterInterface(IDriverHost::kGuid, static_cast<IDriverHost*>(this), 1);
    m_instances.RegisterInterface(IDeviceManager::kGuid, static_cast<IDeviceManager*>(this), 1);
    m_instances.RegisterInterface(ITimerManager::kGuid, static_cast<ITimerManager*>(this), 1);
}

std::uint32_t
QuietHost::AddTimer(VqBaseDriver& /*driver*/, std::uint32_t /*interval*/, std::uint32_t /*unit*/) {
    return 1;
}

void QuietHost::HandlerMissing(const std::string& name) {
    throw std::logic_error("nobody handles " + name);
}

vq::auto_com<ICmdMessage> QuietHost::CreateCmdMessage(const std::string& name) const {
    return CmdMessage::Create(name);
}

std::int32_t QuietHost::SendCommandToDevice(std::uint32_t /*deviceId*/,
                                            ICmdMessage* /*message*/,
                                            std::uint32_t /*flags*/,
                                            std::uint32_t /*context*/) {
    return 0;
}

void QuietHost::GetDeviceInterface(std::uint32_t /*deviceId*/, const std::string& /*guid*/, void** out) {
    *out = nullptr;
}

std::uint32_t
QuietHost::AddTimer(std::uint32_t /*interval*/, std::uint32_t /*unit*/, ITimerManagerCallback* /*callback*/) {
    return 1;
}
