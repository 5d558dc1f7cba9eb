#pragma once

#include "host/CmdDispatcher.h"
#include "host/UICmdDispatcher.h"
#include "host/VqBaseDriver.h"

#include <memory>

class CommandTable;

/// Base class of agent drivers: a driver that is reached by commands and requests, each routed to the handler
/// that `RegisterCommands` registered under its exact name.
class VQ_EXPORT VqBaseAgentDriver : public VqBaseDriver {
public:
    ~VqBaseAgentDriver() override;

    /// Routes a command through the `CmdDispatcher`. A name that nobody registered is reported to the driver
    /// host and does nothing.
    void ExecuteCommand(const ICmdMessage& message, ICmdReturn* result, std::uint32_t context) override;

    /// Routes a request through the `UICmdDispatcher` and gives the handler's reply. A name that nobody
    /// registered is reported to the driver host and gets an empty holder.
    [[nodiscard]] vq::auto_com<VqXML::INode> UIRequest(const ICmdMessage& message) override;

protected:
    VqBaseAgentDriver(IInstanceManager& instances, DriverMultiplicity multiplicity);

    [[nodiscard]] CmdDispatcher& GetCmdDispatcher();
    [[nodiscard]] UICmdDispatcher& GetUICmdDispatcher();

private:
    std::unique_ptr<CommandTable> m_commands;
};
