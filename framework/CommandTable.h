#pragma once

#include "framework/IDriverHost.h"
#include "host/CmdDispatcher.h"
#include "host/UICmdDispatcher.h"

#include <boost/function.hpp>

#include <memory>
#include <string>
#include <unordered_map>

/// The two dispatchers of an agent driver: handlers by exact name. Tells the driver host what is registered,
/// and which names that came in nobody has registered.
class CommandTable final : public CmdDispatcher, public UICmdDispatcher {
public:
    explicit CommandTable(IDriverHost& host) : m_host(host) {}

    void RegisterCmd0(const std::string& name, const boost::function<void()>& handler) override;
    void RegisterCmd1(const std::string& name,
                      const boost::function<void(const ICmdMessage&)>& handler) override;
    void RegisterUICmd(const std::string& name, const UICmdHandler& handler) override;

    void Execute(const ICmdMessage& message) const;
    [[nodiscard]] vq::auto_com<VqXML::INode> Request(const ICmdMessage& message) const;

private:
    using CmdHandler = boost::function<void(const ICmdMessage&)>;

    // Shared, for a handler may register its own name anew while it runs.
    template <class Handler>
    using Table = std::unordered_map<std::string, std::shared_ptr<const Handler>>;

    IDriverHost& m_host;
    Table<CmdHandler> m_commands;
    Table<UICmdHandler> m_requests;
};
