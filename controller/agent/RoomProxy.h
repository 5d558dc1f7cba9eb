#pragma once

#include "controller/agent/DigitalAudio.h"
#include "controller/events/EventFeed.h"
#include "host/IRoomProxy.h"

namespace controller {

/// One room as the agent reaches it. Driver thread only.
class RoomProxy final : public IRoomProxy {
public:
    /// `audio`, `volumes` and `feed` are borrowed for life.
    RoomProxy(std::uint32_t room, DigitalAudio& audio, RoomVolumes& volumes, EventFeed& feed)
        : m_room(room)
        , m_audio(audio)
        , m_volumes(volumes)
        , m_feed(feed) {}

    void SetUpAudio() override;
    void SetAudioVolume(std::uint32_t volume) override;
    void RestoreAudioState() override;
    void SetUpVideo() override;
    void RestoreVideoState() override;

    /// No restore is ever pending here: rooms are restored when they are told to be.
    void CancelRestoringState() override { m_driverOnly.Assert(); }

private:
    const std::uint32_t m_room;
    DigitalAudio& m_audio;
    RoomVolumes& m_volumes;
    EventFeed& m_feed;
    bool m_areScreensAwake = false; ///< wanted for a popup
    DriverOnly m_driverOnly;
};

} // namespace controller
