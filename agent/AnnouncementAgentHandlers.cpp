#include "agent/AnnouncementAgent.h"
#include "host/Conversion.h"

#include <boost/make_shared.hpp>

namespace {

using Reply = vq::auto_com<VqXML::INode>;

} // namespace

/// Does `action` to the announcement that the request names; `action` gives null, or the text of its failure.
template <class Action>
Reply AnnouncementAgent::Edit(const ICmdMessage& message, const char* unknownId, Action action) const {
    const auto announcement = GetAnnouncementFromCmdMessage(message);
    if (!announcement)
        return CreateReturn(ReturnCode::Failure, unknownId);
    if (const char* const failure = action(*announcement); failure != nullptr)
        return Fail(failure);
    return CreateReturn(ReturnCode::Success, "");
}

// Handlers are registered under one type, and most change what the agent owns.
// NOLINTBEGIN(readability-make-member-function-const)

Reply AnnouncementAgent::OnReqAddAnnouncement(const ICmdMessage& message) {
    const std::uint32_t id = GetNextAnnouncementID();
    boost::shared_ptr<Announcement> announcement;
    try {
        announcement = boost::make_shared<Announcement>(GetHelper(), *GetInstanceManager(), message, id);
    } catch (const std::string& failure) {
        return Fail(failure);
    }
    // Under the allocated id, also when the text carried one of its own: that one counts at the next start.
    m_announcements.emplace(id, announcement);
    DmInvalidateState();
    return CreateReturn(ReturnCode::Success, vq::ToString(id));
}

Reply AnnouncementAgent::OnReqRemoveAnnouncement(const ICmdMessage& message) {
    const std::uint32_t id = vq::ToULong(message.GetParam("id"));
    const auto removed = GetAnnouncementFromID(id); // destroyed when the map no longer knows it
    if (!removed)
        return CreateReturn(ReturnCode::Failure, "Invalid announcement id on remove");
    m_announcements.erase(id);
    return CreateReturn(ReturnCode::Success, "");
}

Reply AnnouncementAgent::OnReqModifyAnnouncement(const ICmdMessage& message) {
    try {
        // Built whole, only to learn the id that the description carries.
        const auto described =
            boost::make_shared<Announcement>(GetHelper(), *GetInstanceManager(), message, 0U);
        const auto announcement = GetAnnouncementFromID(described->GetID());
        if (!announcement)
            return CreateReturn(ReturnCode::Failure, "Invalid announcement id on modify");
        if (announcement->ModifyAnnouncement(message) < 0)
            return Fail("Unable to modify announcement");
        return CreateReturn(ReturnCode::Success, "");
    } catch (const std::string& failure) {
        return Fail(failure);
    }
}

Reply AnnouncementAgent::OnReqAddRoom(const ICmdMessage& message) {
    return Edit(message, "Invalid announcement id on add room", [&](Announcement& announcement) {
        return announcement.AddRoom(message) < 0 ? "Unable to add room to announcement" : nullptr;
    });
}

Reply AnnouncementAgent::OnReqModifyRoom(const ICmdMessage& message) {
    return Edit(message, "Invalid announcement id on modify room", [&](Announcement& announcement) {
        return announcement.ModifyRoom(message) < 0 ? "Unable to modify room in announcement" : nullptr;
    });
}

// The other three answer "success" whatever comes of them.

Reply AnnouncementAgent::OnReqRemoveRoom(const ICmdMessage& message) {
    return Edit(message, "Invalid announcement id on remove room", [&](Announcement& announcement) {
        announcement.RemoveRoom(message);
        return nullptr;
    });
}

Reply AnnouncementAgent::OnReqAddNavigator(const ICmdMessage& message) {
    return Edit(message, "Invalid announcement id on add navigator", [&](Announcement& announcement) {
        announcement.AddNavigator(message);
        return nullptr;
    });
}

Reply AnnouncementAgent::OnReqRemoveNavigator(const ICmdMessage& message) {
    return Edit(message, "Invalid announcement id on remove navigator", [&](Announcement& announcement) {
        announcement.RemoveNavigator(message);
        return nullptr;
    });
}

Reply AnnouncementAgent::OnReqGetAnnouncements(const ICmdMessage& /*message*/) {
    return toXml();
}

Reply AnnouncementAgent::OnReqGetAnnouncement(const ICmdMessage& message) {
    const auto announcement = GetAnnouncementFromCmdMessage(message);
    return announcement ? announcement->toXml() : VqXML::CreateXmlNode("announcement", "");
}

// NOLINTEND(readability-make-member-function-const)

Reply AnnouncementAgent::CreateReturn(ReturnCode code, const std::string& text) {
    Reply reply = VqXML::CreateXmlNode();
    reply->SetNameAndValue(code == ReturnCode::Success ? "success" : "fail", text);
    return reply;
}

Reply AnnouncementAgent::CreateReturn(ReturnCode code, const Reply& element) {
    Reply reply = CreateReturn(code, std::string());
    reply->AppendChild(element.Get());
    return reply;
}

Reply AnnouncementAgent::Fail(const std::string& text) const {
    LogMessage(Error, text.c_str());
    return CreateReturn(ReturnCode::Failure, text);
}

boost::shared_ptr<Announcement>
AnnouncementAgent::GetAnnouncementFromCmdMessage(const ICmdMessage& message) const {
    return GetAnnouncementFromID(vq::ToULong(message.GetParam("id")));
}
