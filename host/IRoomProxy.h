#pragma once

#include <cstdint>

/// One room's audio and video, found at every use through `IDeviceManager::GetDeviceInterface` with the
/// room's id.
class IRoomProxy {
public:
    static constexpr const char* kGuid = "{258A9CD0-5596-4c89-BBD4-C7489BA8494B}";

    /// Saves the room's audio state and routes the announcement's stream to the room.
    virtual void SetUpAudio() = 0;

    /// Sets the room's volume for the announcement, in the host's own scale.
    virtual void SetAudioVolume(std::uint32_t volume) = 0;

    /// Returns the room's audio to what `SetUpAudio` saved.
    virtual void RestoreAudioState() = 0;

    /// Saves the room's video state and prepares its screens for a popup.
    virtual void SetUpVideo() = 0;

    /// Returns the room's video to what `SetUpVideo` saved.
    virtual void RestoreVideoState() = 0;

    /// Drops a pending restore of the room.
    virtual void CancelRestoringState() = 0;

protected:
    ~IRoomProxy() = default;
};
