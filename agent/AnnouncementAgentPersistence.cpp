#include "agent/AnnouncementAgent.h"
#include "host/ForEachChild.h"

#include <boost/make_shared.hpp>

vq::auto_com<VqXML::INode> AnnouncementAgent::GetPersistState(std::uint32_t /*reason*/) {
    return toXml();
}

vq::auto_com<VqXML::INode> AnnouncementAgent::toXml() {
    vq::auto_com<VqXML::INode> root = VqXML::CreateXmlNode("announcements", "");
    for (const auto& [id, announcement] : m_announcements)
        root->AppendChild(announcement->toXml().Get());
    return root;
}

void AnnouncementAgent::fromXml(VqXML::INode* node) {
    const IInstanceManager& instances = *GetInstanceManager();
    ForEachChild(*node, [&](VqXML::INode& child) {
        const auto announcement = boost::make_shared<Announcement>(GetHelper(), instances, child);
        m_announcements.emplace(announcement->GetID(), announcement);
    });
}

std::uint32_t AnnouncementAgent::GetNextAnnouncementID() {
    while (m_announcements.count(m_nextAnnouncementId) > 0)
        ++m_nextAnnouncementId;
    return m_nextAnnouncementId;
}
