#pragma once

#include "controller/agent/RoomProxy.h"
#include "controller/driver/DriverOnly.h"
#include "controller/driver/Log.h"
#include "controller/rooms/Popups.h"
#include "host/IDeviceManager.h"

#include <functional>
#include <map>
#include <memory>
#include <set>

namespace controller {

/// The devices that the agent reaches: rooms by their interface, navigators by popup commands, and its own
/// device, whose state it says has changed. Driver thread only.
class DeviceManager final : public IDeviceManager {
public:
    struct Hooks {
        std::function<void()> stateInvalidated;
        std::function<std::uint64_t()> show; ///< the number of the present playing
        std::function<bool()> refusePopup;   ///< whether no popup is to be shown any more
    };

    /// `popups` and `log` are borrowed for life.
    DeviceManager(const std::set<std::uint32_t>& navigators, Popups& popups, Log& log, Hooks hooks);

    /// `room` is borrowed for life.
    void AddRoom(std::uint32_t id, RoomProxy& room) { m_rooms.emplace(id, &room); }

    std::int32_t SendCommandToDevice(std::uint32_t deviceId,
                                     ICmdMessage* message,
                                     std::uint32_t flags,
                                     std::uint32_t context) override;
    void InvalidateDeviceState(std::uint32_t deviceId) override;
    void GetDeviceInterface(std::uint32_t deviceId, const std::string& guid, void** out) override;

private:
    std::set<std::uint32_t> m_navigators;
    std::map<std::uint32_t, RoomProxy*> m_rooms;
    Popups& m_popups;
    Log& m_log;
    Hooks m_hooks;
    DriverOnly m_driverOnly;
};

} // namespace controller
