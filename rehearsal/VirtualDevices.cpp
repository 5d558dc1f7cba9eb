#include "rehearsal/VirtualDevices.h"

#include "framework/CmdMessage.h"

std::int32_t VirtualDevices::SendCommandToDevice(std::uint32_t deviceId,
                                                 ICmdMessage* message,
                                                 std::uint32_t flags,
                                                 std::uint32_t context) {
    m_trace.Call("IDeviceManager.SendCommandToDevice", deviceId, dynamic_cast<const CmdMessage*>(message),
                 flags, context);
    return 0;
}

void VirtualDevices::InvalidateDeviceState(std::uint32_t deviceId) {
    m_trace.Call("IDeviceManager.InvalidateDeviceState", deviceId);
}

void VirtualDevices::GetDeviceInterface(std::uint32_t deviceId, const std::string& guid, void** out) {
    *out = nullptr;
    const bool isFound = guid == IRoomProxy::kGuid && m_settings.HasRoom(deviceId);
    m_trace.LookUp(isFound, "IDeviceManager.GetDeviceInterface", deviceId, guid);
    if (isFound)
        *out = static_cast<IRoomProxy*>(&m_rooms.try_emplace(deviceId, deviceId, m_trace).first->second);
}
