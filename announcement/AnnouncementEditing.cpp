#include "announcement/Announcement.h"
#include "host/Conversion.h"

#include <boost/make_shared.hpp>

int Announcement::ModifyAnnouncement(const ICmdMessage& message) {
    Rooms formerRooms;
    Navigators formerNavigators;
    m_rooms.swap(formerRooms);
    m_navigators.swap(formerNavigators);
    const int result = fromCmdMessage(message);
    if (result < 0) {
        LogError("Unable to modify announcement");
        m_rooms.swap(formerRooms);
        m_navigators.swap(formerNavigators);
        InvalidateState();
    }
    return result;
}

int Announcement::AddRoom(const ICmdMessage& message) {
    try {
        if (ModifyRoom(message) >= 0)
            return 0;
        const auto room = boost::make_shared<AnnouncementRoom>(m_helper, m_instances, message);
        if (m_rooms.emplace(room->GetRoomId(), room).second)
            InvalidateState();
        return 0;
    } catch (const std::string& failure) {
        LogError(failure);
        return -1;
    }
}

int Announcement::ModifyRoom(const ICmdMessage& message) {
    try {
        // Made only to learn which room the message names.
        const auto named = boost::make_shared<AnnouncementRoom>(m_helper, m_instances, message);
        const auto found = m_rooms.find(named->GetRoomId());
        if (found == m_rooms.end())
            return -1;
        (void)found->second->ModifyRoom(message); // its text has been read once already
        return 0;
    } catch (const std::string& failure) {
        LogError(failure);
        return -1;
    }
}

void Announcement::RemoveRoom(const ICmdMessage& message) {
    const std::string id = message.GetParam("room_id");
    if (!id.empty() && m_rooms.erase(vq::ToULong(id)) > 0)
        InvalidateState();
}

void Announcement::AddNavigator(const ICmdMessage& message) {
    const auto navigator = boost::make_shared<AnnouncementNav>(m_helper, m_instances, message);
    if (m_navigators.emplace(navigator->GetNavID(), navigator).second)
        InvalidateState();
}

void Announcement::RemoveNavigator(const ICmdMessage& message) {
    const std::string id = message.GetParam("navigator_id");
    if (!id.empty() && m_navigators.erase(vq::ToULong(id)) > 0)
        InvalidateState();
}
