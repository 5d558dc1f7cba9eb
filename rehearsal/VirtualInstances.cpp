#include "rehearsal/VirtualInstances.h"

#include "framework/IDriverHost.h"
#include "host/IDeviceManager.h"
#include "host/IDigitalAudio.h"
#include "host/ILogger.h"
#include "host/ITimerManager.h"
#include "rehearsal/HostSettings.h"

void VirtualInstances::QueryInterface(const std::string& guid, void** out) const {
    *out = nullptr;
    void* found = nullptr;
    if (!IsSwitchedOff(guid))
        m_registry.QueryInterface(guid, &found);
    // The base driver's look-up of its own host is none of the agent's.
    if (guid != IDriverHost::kGuid)
        m_trace.LookUp(found != nullptr, "IInstanceManager.QueryInterface", guid);
    *out = found;
}

void VirtualInstances::RegisterInterface(const std::string& guid, void* object, std::uint32_t version) {
    m_trace.CallBegins("IInstanceManager.RegisterInterface", guid, version);
    m_registry.RegisterInterface(guid, object, version);
}

void VirtualInstances::UnregisterInterface(const std::string& guid) {
    m_registry.UnregisterInterface(guid);
    m_trace.Call("IInstanceManager.UnregisterInterface", guid);
}

bool VirtualInstances::IsSwitchedOff(const std::string& guid) const {
    return (!m_settings.hasDigitalAudio && guid == IDigitalAudio::kGuid) ||
           (!m_settings.hasLogger && guid == ILogger::kGuid) ||
           (!m_settings.hasDeviceManager && guid == IDeviceManager::kGuid) ||
           (!m_settings.hasTimerManager && guid == ITimerManager::kGuid);
}
