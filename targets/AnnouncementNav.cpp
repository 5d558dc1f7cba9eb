#include "targets/AnnouncementNav.h"

#include "host/Conversion.h"
#include "host/FindService.h"

AnnouncementNav::AnnouncementNav(const IDriverHelper& driverHelper,
                                 const IInstanceManager& instances,
                                 VqXML::INode& node)
    : m_instances(instances) {
    Initialize(driverHelper, node);
}

AnnouncementNav::AnnouncementNav(const IDriverHelper& driverHelper,
                                 const IInstanceManager& instances,
                                 const ICmdMessage& message)
    : m_instances(instances) {
    const vq::auto_com<VqXML::IDocument> document = VqXML::CreateXmlDocument(message.GetParam("navigator"));
    if (!document)
        throw "Unable to dom to create an announcement navigator";
    Initialize(driverHelper, *document->GetRootNode());
}

void AnnouncementNav::Initialize(const IDriverHelper& driverHelper, VqXML::INode& node) {
    fromXml(node);
    m_driverHelper = &driverHelper;
    m_deviceManager = FindService<IDeviceManager>(m_instances);
}

void AnnouncementNav::fromXml(VqXML::INode& node) {
    m_navId = node.GetChildValueAsULong("id");
    m_roomId = node.GetChildValueAsULong("room_id");
    m_isOnscreen = node.GetChildValueAsBool("onscreen");
}

vq::auto_com<VqXML::INode> AnnouncementNav::toXml() const {
    vq::auto_com<VqXML::INode> node = VqXML::CreateXmlNode("navigator", "");
    node->AddChildULong("id", m_navId);
    node->AddChildULong("room_id", m_roomId);
    node->AddChildBool("onscreen", m_isOnscreen);
    return node;
}

// NOLINTNEXTLINE(readability-function-size): the six values that make a popup
void AnnouncementNav::DisplayVideo(const std::string& image,
                                   const std::string& text,
                                   std::uint32_t delay,
                                   std::uint32_t displayId,
                                   std::uint32_t variableId,
                                   bool showOk) {
    if (m_deviceManager == nullptr)
        return;
    const vq::auto_com<ICmdMessage> message = m_driverHelper->CreateCmdMessage("SHOW_POPUP");
    if (displayId != 0 && variableId != 0)
        message->AddVariableParam("MESSAGE", "STRING", displayId, variableId);
    else
        message->AddParam("MESSAGE", "STRING", text);
    message->AddParam("IMGURL", "STRING", image);
    message->AddParam("DELAY", "NUMBER", vq::ToString(delay));
    message->AddParam("SHOWOK", "BOOLEAN", showOk ? "true" : "false");
    message->AddParam("SIZE", "NUMBER", "0");
    Send(*message);
}

void AnnouncementNav::DismissVideo() {
    if (m_deviceManager == nullptr)
        return;
    const vq::auto_com<ICmdMessage> message = m_driverHelper->CreateCmdMessage("HIDE_POPUP");
    Send(*message);
}

void AnnouncementNav::Send(ICmdMessage& message) {
    (void)m_deviceManager->SendCommandToDevice(m_navId, &message, 0, 0); // a navigator never answers
}
