#pragma once

#include "host/IDeviceManager.h"
#include "host/IRoomProxy.h"
#include "tests/support/CallLog.h"

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>

/// Notes what is done in one room.
class FakeRoom final : public IRoomProxy {
public:
    FakeRoom(CallLog& log, std::uint32_t id) : m_log(log), m_id(id) {}

    void SetUpAudio() override { Note("SetUpAudio"); }
    void SetAudioVolume(std::uint32_t volume) override;
    void RestoreAudioState() override { Note("RestoreAudioState"); }
    void SetUpVideo() override { Note("SetUpVideo"); }
    void RestoreVideoState() override { Note("RestoreVideoState"); }
    void CancelRestoringState() override { Note("CancelRestoringState"); }

private:
    void Note(const char* operation);

    CallLog& m_log;
    std::uint32_t m_id;
};

/// A home in which every navigator takes its commands, and every room (or only some) can be controlled.
class FakeDevices final : public IDeviceManager {
public:
    explicit FakeDevices(CallLog& log) : m_log(log) {}

    std::int32_t SendCommandToDevice(std::uint32_t deviceId,
                                     ICmdMessage* message,
                                     std::uint32_t flags,
                                     std::uint32_t context) override;
    void InvalidateDeviceState(std::uint32_t deviceId) override;
    void GetDeviceInterface(std::uint32_t deviceId, const std::string& guid, void** out) override;

    std::optional<std::set<std::uint32_t>> knownRooms; ///< unset: every id is a room

private:
    CallLog& m_log;
    std::map<std::uint32_t, FakeRoom> m_rooms;
};
