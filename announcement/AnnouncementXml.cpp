#include "announcement/Announcement.h"
#include "host/AssertWrite.h"
#include "host/ForEachChild.h"
#include "host/XmlHelper.h"

#include <boost/make_shared.hpp>

namespace {

/// Reported with the check for "navigators": a number of its own that stays.
constexpr int kNoNavigatorsLine = 473;

/// Appends an element of that name holding each target's own element.
template <class Targets>
void WriteTargets(VqXML::INode& node, const char* name, const Targets& targets) {
    VqXML::INode& list = XmlHelper::AddChild(node, name, "");
    for (const auto& [id, target] : targets)
        list.AppendChild(target->toXml().Get());
}

} // namespace

void Announcement::fromXml(VqXML::INode& node) {
    m_name = node.GetChildValue("name");
    m_id = node.GetChildValueAsULong("id");
    m_displayId = 0;
    m_variableId = 0;
    m_variableName.clear();
    m_hasOkButton = true;
    if (const VqXML::INode* const audio = node.FindChild("audio"); audio != nullptr) {
        m_audioFile = audio->GetChildValue("file");
        m_audioDelay = audio->GetChildValueAsULong("delay");
    }
    if (VqXML::INode* const video = node.FindChild("video"); video != nullptr)
        ReadVideo(*video);
    ReadRooms(node);
    ReadNavigators(node);
}

void Announcement::ReadVideo(VqXML::INode& video) {
    m_videoFile = video.GetChildValue("file");
    m_text = video.GetChildValue("text");
    m_videoDelay = video.GetChildValueAsULong("delay");
    m_timeout = video.GetChildValueAsULong("timeout");
    if (!video.GetChildValue("OKButton").empty())
        m_hasOkButton = video.GetChildValueAsBool("OKButton");
    // Either both ids are given, or there is no binding at all.
    if (video.GetChildValue("displayID").empty() || video.GetChildValue("variableID").empty())
        return;
    m_displayId = video.GetChildValueAsULong("displayID");
    m_variableId = video.GetChildValueAsULong("variableID");
    m_variableName = video.GetChildValue("variableName");
}

void Announcement::ReadRooms(VqXML::INode& node) {
    VqXML::INode* const rooms = node.FindChild("rooms");
    if (rooms == nullptr)
        return;
    ForEachChild(*rooms, [this](VqXML::INode& child) {
        const auto room = boost::make_shared<AnnouncementRoom>(m_helper, m_instances, child);
        m_rooms.emplace(room->GetRoomId(), room);
    });
}

void Announcement::ReadNavigators(VqXML::INode& node) {
    VqXML::INode* const navigators = node.FindChild("navigators");
    if (navigators == nullptr) {
        vq::AssertWrite("Announcement", kNoNavigatorsLine, vq::StackTrace());
        LogError("Announcement is missing navigators tag");
        return;
    }
    ForEachChild(*navigators, [this](VqXML::INode& child) {
        const auto navigator = boost::make_shared<AnnouncementNav>(m_helper, m_instances, child);
        m_navigators.emplace(navigator->GetNavID(), navigator);
    });
}

vq::auto_com<VqXML::INode> Announcement::toXml() {
    vq::auto_com<VqXML::INode> node = VqXML::CreateXmlNode("announcement", "");
    node->AddChildULong("id", m_id);
    node->AddChildString("name", m_name);
    VqXML::INode& audio = XmlHelper::AddChild(*node, "audio", "");
    audio.AddChildString("file", m_audioFile);
    audio.AddChildULong("delay", m_audioDelay);
    WriteVideo(XmlHelper::AddChild(*node, "video", ""));
    WriteTargets(*node, "rooms", m_rooms);
    WriteTargets(*node, "navigators", m_navigators);
    return node;
}

void Announcement::WriteVideo(VqXML::INode& video) const {
    video.AddChildString("file", m_videoFile);
    video.AddChildString("text", m_text);
    video.AddChildULong("delay", m_videoDelay);
    video.AddChildULong("timeout", m_timeout);
    video.AddChildULong("displayID", m_displayId);
    video.AddChildULong("variableID", m_variableId);
    video.AddChildString("variableName", m_variableName);
    video.AddChildBool("OKButton", m_hasOkButton);
}

int Announcement::fromCmdMessage(const ICmdMessage& message) {
    const vq::auto_com<VqXML::IDocument> document =
        VqXML::CreateXmlDocument(message.GetParam("announcement"));
    if (!document)
        return -1;
    fromXml(*document->GetRootNode());
    return 0;
}
