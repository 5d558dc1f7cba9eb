#include "controller/agent/RoomProxy.h"

#include <utility>

namespace controller {

void RoomProxy::SetUpVideo() {
    if (!std::exchange(m_areScreensAwake, true))
        m_feed.Publish(events::ScreensWoken{m_room});
}

void RoomProxy::RestoreVideoState() {
    if (std::exchange(m_areScreensAwake, false))
        m_feed.Publish(events::ScreensRested{m_room});
}

} // namespace controller
