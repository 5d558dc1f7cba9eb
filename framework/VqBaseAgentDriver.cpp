#include "host/VqBaseAgentDriver.h"

#include "framework/CommandTable.h"

VqBaseAgentDriver::VqBaseAgentDriver(IInstanceManager& instances, DriverMultiplicity multiplicity)
    : VqBaseDriver(instances, multiplicity)
    , m_commands(std::make_unique<CommandTable>(GetHost())) {}

VqBaseAgentDriver::~VqBaseAgentDriver() = default;

void VqBaseAgentDriver::ExecuteCommand(const ICmdMessage& message,
                                       ICmdReturn* /*result*/,
                                       std::uint32_t /*context*/) {
    m_commands->Execute(message);
}

vq::auto_com<VqXML::INode> VqBaseAgentDriver::UIRequest(const ICmdMessage& message) {
    return m_commands->Request(message);
}

CmdDispatcher& VqBaseAgentDriver::GetCmdDispatcher() {
    return *m_commands;
}

UICmdDispatcher& VqBaseAgentDriver::GetUICmdDispatcher() {
    return *m_commands;
}
