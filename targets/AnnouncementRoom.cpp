#include "targets/AnnouncementRoom.h"

#include "host/FindService.h"

AnnouncementRoom::AnnouncementRoom(const IDriverHelper& driverHelper,
                                   const IInstanceManager& instances,
                                   VqXML::INode& node)
    : m_instances(instances) {
    fromXml(node);
    Initialize(driverHelper);
}

AnnouncementRoom::AnnouncementRoom(const IDriverHelper& driverHelper,
                                   const IInstanceManager& instances,
                                   const ICmdMessage& message)
    : m_instances(instances) {
    if (!fromCmdMessage(message))
        throw "Unable to create announcement room";
    Initialize(driverHelper);
}

void AnnouncementRoom::Initialize(const IDriverHelper& driverHelper) {
    m_driverHelper = &driverHelper;
    m_deviceManager = FindService<IDeviceManager>(m_instances);
}

void AnnouncementRoom::fromXml(VqXML::INode& node) {
    m_roomId = node.GetChildValueAsULong("id");
    m_volume = node.GetChildValueAsLong("volume");
}

vq::auto_com<VqXML::INode> AnnouncementRoom::toXml() const {
    vq::auto_com<VqXML::INode> node = VqXML::CreateXmlNode("room", "");
    node->AddChildULong("id", m_roomId);
    node->AddChildLong("volume", m_volume);
    return node;
}

bool AnnouncementRoom::fromCmdMessage(const ICmdMessage& message) {
    const vq::auto_com<VqXML::IDocument> document = VqXML::CreateXmlDocument(message.GetParam("room"));
    if (!document)
        return false;
    fromXml(*document->GetRootNode());
    return true;
}

bool AnnouncementRoom::ModifyRoom(const ICmdMessage& message) {
    return fromCmdMessage(message);
}

void AnnouncementRoom::SetUpAudio() {
    Call(&IRoomProxy::SetUpAudio);
}

void AnnouncementRoom::SetAudioVolume() {
    if (m_volume == 0 || m_volume == -1)
        return;
    if (IRoomProxy* const proxy = FindProxy(); proxy != nullptr)
        proxy->SetAudioVolume(static_cast<std::uint32_t>(m_volume));
}

void AnnouncementRoom::RestoreAudioState() {
    Call(&IRoomProxy::RestoreAudioState);
}

void AnnouncementRoom::SetUpVideo() {
    Call(&IRoomProxy::SetUpVideo);
}

void AnnouncementRoom::RestoreVideoState() {
    Call(&IRoomProxy::RestoreVideoState);
}

void AnnouncementRoom::CancelRestoringState() {
    Call(&IRoomProxy::CancelRestoringState);
}

IRoomProxy* AnnouncementRoom::FindProxy() const {
    if (m_deviceManager == nullptr)
        return nullptr;
    void* proxy = nullptr;
    m_deviceManager->GetDeviceInterface(m_roomId, IRoomProxy::kGuid, &proxy);
    return static_cast<IRoomProxy*>(proxy);
}

void AnnouncementRoom::Call(void (IRoomProxy::*operation)()) {
    if (IRoomProxy* const proxy = FindProxy(); proxy != nullptr)
        (proxy->*operation)();
}
