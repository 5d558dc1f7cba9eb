#include "bench/AgentAtWork.h"

#include "bench/SavedState.h"
#include "framework/XmlText.h"
#include "host/Conversion.h"

#include <stdexcept>

namespace {

vq::auto_com<CmdMessage> Request(const char* name) {
    return CmdMessage::Create(name);
}

vq::auto_com<CmdMessage> Request(const char* name, std::uint32_t id) {
    auto request = Request(name);
    request->AddParam("id", "NUMBER", vq::ToString(id));
    return request;
}

void RequireSuccess(const vq::auto_com<VqXML::INode>& reply) {
    if (reply->GetName() != "success")
        throw std::logic_error("the agent refused a request: " + ToXmlText(*reply));
}

} // namespace

AgentAtWork::AgentAtWork() : m_driver(Module().Create(m_host.Instances())) {
    m_driver->RegisterCommands();
}

void AgentAtWork::Initialize(VqXML::INode& savedState) {
    m_driver->Initialize(0, savedState, &savedState);
}

void AgentAtWork::ParseAndInitialize(const std::string& savedState) {
    const auto document = VqXML::CreateXmlDocument(savedState);
    Initialize(*document->GetRootNode());
}

std::size_t AgentAtWork::GetAnnouncements() {
    return ToXmlText(*Ask(*Request("get_announcements"))).size();
}

std::size_t AgentAtWork::GetAnnouncement(std::uint32_t id) {
    return ToXmlText(*Ask(*Request("get_announcement", id))).size();
}

void AgentAtWork::ModifyRoom(std::uint32_t id) {
    const auto request = Request("modify_room", id);
    request->AddParam("room", "STRING", "<room><id>11</id><volume>60</volume></room>");
    RequireSuccess(Ask(*request));
}

void AgentAtWork::RemoveAnnouncement(std::uint32_t id) {
    RequireSuccess(Ask(*Request("remove_announcement", id)));
}

void AgentAtWork::AddAnnouncement(const std::string& text) {
    const auto request = Request("add_announcement");
    request->AddParam("announcement", "STRING", text);
    RequireSuccess(Ask(*request));
}

const DriverModule& AgentAtWork::Module() {
    static const DriverModule module(MODULE);
    return module;
}

vq::auto_com<VqXML::INode> AgentAtWork::Ask(const CmdMessage& request) {
    return m_driver->UIRequest(request);
}

vq::auto_com<VqXML::IDocument> SavedTree(std::size_t count) {
    return VqXML::CreateXmlDocument(SavedState(count));
}
