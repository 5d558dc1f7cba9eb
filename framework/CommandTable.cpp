#include "framework/CommandTable.h"

void CommandTable::RegisterCmd0(const std::string& name, const boost::function<void()>& handler) {
    m_host.HandlerRegistered(IDriverHost::Registration::Cmd0, name);
    m_commands[name] = std::make_shared<CmdHandler>([handler](const ICmdMessage&) { handler(); });
}

void CommandTable::RegisterCmd1(const std::string& name,
                                const boost::function<void(const ICmdMessage&)>& handler) {
    m_host.HandlerRegistered(IDriverHost::Registration::Cmd1, name);
    m_commands[name] = std::make_shared<CmdHandler>(handler);
}

void CommandTable::RegisterUICmd(const std::string& name, const UICmdHandler& handler) {
    m_host.HandlerRegistered(IDriverHost::Registration::UICmd, name);
    m_requests[name] = std::make_shared<UICmdHandler>(handler);
}

void CommandTable::Execute(const ICmdMessage& message) const {
    const auto found = m_commands.find(message.GetName());
    if (found == m_commands.end()) {
        m_host.HandlerMissing(message.GetName());
        return;
    }
    const std::shared_ptr<const CmdHandler> handler = found->second;
    (*handler)(message);
}

vq::auto_com<VqXML::INode> CommandTable::Request(const ICmdMessage& message) const {
    const auto found = m_requests.find(message.GetName());
    if (found == m_requests.end()) {
        m_host.HandlerMissing(message.GetName());
        return nullptr;
    }
    const std::shared_ptr<const UICmdHandler> handler = found->second;
    return (*handler)(message);
}
