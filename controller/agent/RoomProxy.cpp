#include "controller/agent/RoomProxy.h"

#include <utility>

namespace controller {

void RoomProxy::SetUpAudio() {
    m_driverOnly.Assert();
    m_audio.AddRoom(m_room);
}

void RoomProxy::SetAudioVolume(std::uint32_t volume) {
    m_driverOnly.Assert();
    m_volumes.SetForAnnouncement(m_room, volume);
}

void RoomProxy::RestoreAudioState() {
    m_driverOnly.Assert();
    m_audio.RemoveRoom(m_room);
}

void RoomProxy::SetUpVideo() {
    m_driverOnly.Assert();
    if (!std::exchange(m_areScreensAwake, true))
        m_feed.Publish(events::ScreensWoken{m_room});
}

void RoomProxy::RestoreVideoState() {
    m_driverOnly.Assert();
    if (std::exchange(m_areScreensAwake, false))
        m_feed.Publish(events::ScreensRested{m_room});
}

} // namespace controller
