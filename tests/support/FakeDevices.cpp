#include "tests/support/FakeDevices.h"

#include "framework/CmdMessage.h"

namespace {

/// "NAME PARAMETER:TYPE=value …", a bound parameter as "PARAMETER:TYPE@device/variable".
std::string TextOf(const ICmdMessage& message) {
    std::string text = message.GetName();
    for (const CmdMessage::Parameter& parameter : dynamic_cast<const CmdMessage&>(message).GetParameters()) {
        text += " " + parameter.name + ":" + parameter.type;
        if (parameter.isVariable)
            text += "@" + std::to_string(parameter.deviceId) + "/" + std::to_string(parameter.variableId);
        else
            text += "=" + parameter.value;
    }
    return text;
}

} // namespace

void FakeRoom::SetAudioVolume(std::uint32_t volume) {
    m_log.Call("IRoomProxy.SetAudioVolume(" + std::to_string(m_id) + ", " + std::to_string(volume) + ")");
}

void FakeRoom::Note(const char* operation) {
    m_log.Call(std::string("IRoomProxy.") + operation + "(" + std::to_string(m_id) + ")");
}

std::int32_t FakeDevices::SendCommandToDevice(std::uint32_t deviceId,
                                              ICmdMessage* message,
                                              std::uint32_t flags,
                                              std::uint32_t context) {
    m_log.Call("IDeviceManager.SendCommandToDevice(" + std::to_string(deviceId) + ", " + TextOf(*message) +
               ", " + std::to_string(flags) + ", " + std::to_string(context) + ")");
    return -1; // nobody may care
}

void FakeDevices::InvalidateDeviceState(std::uint32_t deviceId) {
    m_log.Call("IDeviceManager.InvalidateDeviceState(" + std::to_string(deviceId) + ")");
}

void FakeDevices::GetDeviceInterface(std::uint32_t deviceId, const std::string& guid, void** out) {
    m_log.LookUp("IDeviceManager.GetDeviceInterface(" + std::to_string(deviceId) + ", " + guid + ")");
    const bool isKnown = !knownRooms || knownRooms->count(deviceId) > 0;
    if (guid != IRoomProxy::kGuid || !isKnown)
        return; // `out` is the caller's to have set to null
    IRoomProxy& room = m_rooms.try_emplace(deviceId, m_log, deviceId).first->second;
    *out = &room;
}
