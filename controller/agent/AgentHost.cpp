#include "controller/agent/AgentHost.h"

#include "controller/agent/Guarded.h"
#include "framework/CmdMessage.h"
#include "framework/XmlText.h"

#include <stdexcept>

namespace controller {

namespace {

vq::auto_com<CmdMessage> MessageOf(const std::string& name, const Parameters& parameters) {
    auto message = CmdMessage::Create(name);
    for (const auto& [parameter, value] : parameters)
        message->AddParam(parameter, "STRING", value);
    return message;
}

} // namespace

AgentHost::AgentHost(const std::string& moduleFile,
                     InstanceRegistry& services,
                     DriverHost& driverHost,
                     Log& log)
    : m_services(services)
    , m_log(log)
    , m_module(moduleFile) {
    m_services.RegisterInterface(IDriverHost::kGuid, static_cast<IDriverHost*>(&driverHost), 1);
    m_services.RegisterInterface(ILogger::kGuid, static_cast<ILogger*>(&driverHost), 1);
}

AgentHost::~AgentHost() {
    Stop();
}

void AgentHost::Start(const std::string& savedState) {
    m_driverOnly.Assert();
    vq::auto_com<VqXML::IDocument> document;
    if (!savedState.empty()) {
        document = VqXML::CreateXmlDocument(savedState);
        if (!document)
            throw std::runtime_error("the saved state is not XML");
    }
    const auto configuration = VqXML::CreateXmlNode("configuration", "");
    const auto thrown = Guarded([&] {
        m_agent = m_module.Create(m_services);
        m_agent->Initialize(0, *configuration, document ? document->GetRootNode() : nullptr);
        m_agent->RegisterCommands();
    });
    if (!thrown)
        return;
    Stop();
    throw std::runtime_error(Describe(*thrown, "its start"));
}

void AgentHost::Stop() noexcept {
    m_driverOnly.Assert();
    m_agent.reset();
}

template <class Call>
AgentAnswer AgentHost::Deliver(const std::string& name, const Parameters& parameters, const Call& call) {
    m_driverOnly.Assert();
    if (!m_agent)
        return {AgentAnswer::Kind::NoAgent, "", "the controller is ending", ""};
    const auto message = MessageOf(name, parameters);
    AgentAnswer answer;
    m_isUnknown = false;
    const auto thrown = Guarded([&] { call(*message, answer); });
    if (thrown) {
        m_log.Warning(Describe(*thrown, name));
        const std::string text = thrown->text.empty() ? Describe(*thrown, name) : thrown->text;
        return {AgentAnswer::Kind::Failed, "", text, ""};
    }
    if (m_isUnknown)
        return {AgentAnswer::Kind::Unknown, "", "the agent has no " + name, ""};
    return answer;
}

AgentAnswer AgentHost::Command(const std::string& name, const Parameters& parameters) {
    return Deliver(name, parameters, [this](const ICmdMessage& message, AgentAnswer& /*answer*/) {
        m_agent->ExecuteCommand(message, nullptr, 0);
    });
}

AgentAnswer AgentHost::Ask(const std::string& name, const Parameters& parameters) {
    return Deliver(name, parameters, [this](const ICmdMessage& message, AgentAnswer& answer) {
        const auto reply = m_agent->UIRequest(message);
        answer.kind = reply ? AgentAnswer::Kind::Reply : AgentAnswer::Kind::NoReply;
        if (!reply)
            return;
        answer.tag = reply->GetName();
        answer.value = reply->GetValue();
        answer.element = reply;
    });
}

AgentAnswer AgentHost::Request(const std::string& name, const Parameters& parameters) {
    AgentAnswer answer = Ask(name, parameters);
    if (answer.element.Get() != nullptr)
        answer.text = ToXmlText(*answer.element);
    return answer;
}

std::string AgentHost::State() {
    m_driverOnly.Assert();
    if (!m_agent)
        throw std::runtime_error("there is no agent");
    std::string text;
    const auto thrown = Guarded([&] {
        const auto state = m_agent->GetPersistState(0);
        if (state)
            text = ToXmlText(*state);
    });
    if (thrown)
        throw std::runtime_error(Describe(*thrown, "giving its state"));
    return text;
}

} // namespace controller
