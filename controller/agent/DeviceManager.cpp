#include "controller/agent/DeviceManager.h"

#include "controller/agent/DriverHost.h"
#include "framework/CmdMessage.h"

namespace controller {

namespace {

std::optional<MessageBinding> BindingOf(const ICmdMessage& message, const std::string& name) {
    // Only our own message class tells what a parameter is bound to, and the agent can get no other from us.
    const auto* ours = dynamic_cast<const CmdMessage*>(&message);
    if (ours == nullptr)
        return std::nullopt;
    for (const CmdMessage::Parameter& parameter : ours->GetParameters())
        if (parameter.name == name && parameter.isVariable)
            return MessageBinding{parameter.deviceId, parameter.variableId};
    return std::nullopt;
}

} // namespace

DeviceManager::DeviceManager(const std::set<std::uint32_t>& navigators, Popups& popups, Log& log, Hooks hooks)
    : m_navigators(navigators)
    , m_popups(popups)
    , m_log(log)
    , m_hooks(std::move(hooks)) {}

std::int32_t DeviceManager::SendCommandToDevice(std::uint32_t deviceId,
                                                ICmdMessage* message,
                                                std::uint32_t /*flags*/,
                                                std::uint32_t /*context*/) {
    m_driverOnly.Assert();
    if (m_navigators.count(deviceId) == 0) {
        m_log.Warning("The announcement wants navigator " + std::to_string(deviceId) +
                      ", which the house does not have");
        return -1;
    }
    if (message->GetName() == "HIDE_POPUP") {
        m_popups.DismissOn(deviceId);
        return 0;
    }
    if (message->GetName() != "SHOW_POPUP")
        return -1;
    if (m_hooks.refusePopup())
        return 0;
    Popups::Wanted wanted;
    wanted.message = message->GetParam("MESSAGE");
    wanted.binding = BindingOf(*message, "MESSAGE");
    wanted.image = message->GetParam("IMGURL");
    wanted.delay = std::chrono::milliseconds(message->GetParamAsULong("DELAY"));
    wanted.hasOkButton = message->GetParam("SHOWOK") == "true";
    wanted.show = m_hooks.show();
    m_popups.Show(deviceId, wanted);
    return 0;
}

void DeviceManager::InvalidateDeviceState(std::uint32_t deviceId) {
    m_driverOnly.Assert();
    if (deviceId == DriverHost::kDeviceId)
        m_hooks.stateInvalidated();
}

void DeviceManager::GetDeviceInterface(std::uint32_t deviceId, const std::string& guid, void** out) {
    m_driverOnly.Assert();
    *out = nullptr;
    const auto place = m_rooms.find(deviceId);
    if (place != m_rooms.end() && guid == IRoomProxy::kGuid)
        *out = static_cast<IRoomProxy*>(place->second);
}

} // namespace controller
