#pragma once

#include "host/ICmdMessage.h"

#include <cstdint>
#include <string>

/// Reaches the devices of the home: rooms, navigators, and the agent's own.
class IDeviceManager {
public:
    static constexpr const char* kGuid = "{731E9F66-23F5-4100-AA7B-C3F189BAABFD}";

    /// Delivers an outgoing command message to a device; the message is borrowed for the call. A device that
    /// does not exist gets nothing. The last two arguments are 0, and the result means nothing to the agent.
    virtual std::int32_t SendCommandToDevice(std::uint32_t deviceId,
                                             ICmdMessage* message,
                                             std::uint32_t flags,
                                             std::uint32_t context) = 0;

    /// The saved state of the driver of this device has changed: the host asks it again (`GetPersistState`)
    /// and saves.
    virtual void InvalidateDeviceState(std::uint32_t deviceId) = 0;

    /// Stores in `out` the device's interface of that identifier, or null. Borrowed; used at once.
    virtual void GetDeviceInterface(std::uint32_t deviceId, const std::string& guid, void** out) = 0;

protected:
    ~IDeviceManager() = default;
};
