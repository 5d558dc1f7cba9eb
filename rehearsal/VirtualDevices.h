#pragma once

#include "host/IDeviceManager.h"
#include "rehearsal/HostSettings.h"
#include "rehearsal/Trace.h"
#include "rehearsal/VirtualRoom.h"

#include <cstdint>
#include <string>
#include <unordered_map>

/// The home's devices: every id takes commands, and those that the settings name are rooms.
class VirtualDevices final : public IDeviceManager {
public:
    VirtualDevices(const HostSettings& settings, Trace& trace) : m_settings(settings), m_trace(trace) {}

    std::int32_t SendCommandToDevice(std::uint32_t deviceId,
                                     ICmdMessage* message,
                                     std::uint32_t flags,
                                     std::uint32_t context) override;
    void InvalidateDeviceState(std::uint32_t deviceId) override;
    void GetDeviceInterface(std::uint32_t deviceId, const std::string& guid, void** out) override;

private:
    const HostSettings& m_settings;
    Trace& m_trace;
    std::unordered_map<std::uint32_t, VirtualRoom>
        m_rooms; ///< those found so far, which stay good for who holds them
};
