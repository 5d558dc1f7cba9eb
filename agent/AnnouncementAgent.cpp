#include "agent/AnnouncementAgent.h"

// The spelling of the placeholder that every Boost from 1.53 on understands.
#define BOOST_BIND_GLOBAL_PLACEHOLDERS
#include <boost/bind.hpp>

VqBaseDriver* AnnouncementAgent::Create(IInstanceManager& instances) {
    return new AnnouncementAgent(instances);
}

AnnouncementAgent::AnnouncementAgent(IInstanceManager& instances)
    : VqBaseAgentDriver(instances, DriverMultiplicity::Single) {
    instances.RegisterInterface(IAnnouncementAgent::kGuid, static_cast<IAnnouncementAgent*>(this), 1);
}

AnnouncementAgent::~AnnouncementAgent() {
    ClearAllAnnouncements();
    try {
        GetInstanceManager()->UnregisterInterface(IAnnouncementAgent::kGuid);
    } catch (...) { // NOLINT(bugprone-empty-catch): a destructor has nobody to tell
    }
}

void AnnouncementAgent::Initialize(std::uint32_t reason,
                                   VqXML::INode& configuration,
                                   VqXML::INode* savedState) {
    VqBaseAgentDriver::Initialize(reason, configuration, savedState);
    if (savedState != nullptr)
        fromXml(savedState);
}

void AnnouncementAgent::RegisterCommands() {
    GetCmdDispatcher().RegisterCmd1("execute_announcement",
                                    boost::bind(&AnnouncementAgent::OnCmdExecuteAnnouncement, this, _1));
    GetCmdDispatcher().RegisterCmd0("ANNOUNCEMENT_DISMISSED",
                                    boost::bind(&AnnouncementAgent::OnCmdAnnouncementDismissed, this));
    const auto request = [this](const char* name, Handler handler) {
        GetUICmdDispatcher().RegisterUICmd(name, boost::bind(handler, this, _1));
    };
    request("add_announcement", &AnnouncementAgent::OnReqAddAnnouncement);
    request("remove_announcement", &AnnouncementAgent::OnReqRemoveAnnouncement);
    request("modify_announcement", &AnnouncementAgent::OnReqModifyAnnouncement);
    request("add_room", &AnnouncementAgent::OnReqAddRoom);
    request("modify_room", &AnnouncementAgent::OnReqModifyRoom);
    request("remove_room", &AnnouncementAgent::OnReqRemoveRoom);
    request("add_navigator", &AnnouncementAgent::OnReqAddNavigator);
    request("remove_navigator", &AnnouncementAgent::OnReqRemoveNavigator);
    request("get_announcements", &AnnouncementAgent::OnReqGetAnnouncements);
    request("get_announcement", &AnnouncementAgent::OnReqGetAnnouncement);
}

void AnnouncementAgent::ClearAllAnnouncements() {
    while (!m_announcements.empty()) // one by one, for `clear` destroys in no promised order
        m_announcements.erase(m_announcements.begin());
    m_nextAnnouncementId = 1;
    m_queue.clear();
}
