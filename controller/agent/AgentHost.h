#pragma once

#include "controller/agent/DriverHost.h"
#include "controller/driver/DriverOnly.h"
#include "controller/driver/Log.h"
#include "framework/DriverModule.h"
#include "framework/InstanceRegistry.h"
#include "host/INode.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace controller {

/// Named text parameters, in the order of their adding.
using Parameters = std::vector<std::pair<std::string, std::string>>;

/// What became of a command or a request.
struct AgentAnswer {
    enum class Kind {
        Done,    ///< a command was delivered; `text` is empty
        Reply,   ///< a request was answered; `text` is the reply as XML, `tag` its element's name
        NoReply, ///< a request was delivered and got no element
        Unknown, ///< nobody has a handler under the name
        Failed,  ///< the agent threw; `text` says what
        NoAgent, ///< the agent has been destroyed
    };
    Kind kind = Kind::Done;
    std::string tag;
    std::string text;
    std::string value;                       ///< the text inside the reply's element
    vq::auto_com<VqXML::INode> element = {}; ///< the reply itself; null without one
};

/// Holds the agent: loads its module, creates, initialises and destroys it, and makes the calls into it. What
/// leaves the agent by throwing is caught here, logged, and becomes an answer. Driver thread only.
class AgentHost {
public:
    /// Loads the module; throws `std::runtime_error` as `DriverModule` does. `services` must hold what the
    /// agent looks up, is borrowed for life, and tells through `driverHost` what the agent asks for.
    AgentHost(const std::string& moduleFile, InstanceRegistry& services, DriverHost& driverHost, Log& log);
    AgentHost(const AgentHost&) = delete;
    AgentHost& operator=(const AgentHost&) = delete;
    ~AgentHost();

    /// Creates the agent with a saved state, as XML text; empty for none. Throws `std::runtime_error` when
    /// the text is not XML or the agent cannot take it.
    void Start(const std::string& savedState);

    /// Destroys the agent; commands and requests find none from now on.
    void Stop() noexcept;

    [[nodiscard]] bool IsRunning() const noexcept { return m_agent != nullptr; }

    [[nodiscard]] AgentAnswer Command(const std::string& name, const Parameters& parameters);
    [[nodiscard]] AgentAnswer Request(const std::string& name, const Parameters& parameters);

    /// The same without the text, for who reads the element: writing it takes longer than the request does.
    [[nodiscard]] AgentAnswer Ask(const std::string& name, const Parameters& parameters);

    /// The agent's present state as XML text. Throws `std::runtime_error` when the agent cannot give it.
    [[nodiscard]] std::string State();

    /// The handler that the driver host calls for names that nobody registered.
    void HandlerMissing() noexcept { m_isUnknown = true; }

private:
    template <class Call>
    AgentAnswer Deliver(const std::string& name, const Parameters& parameters, const Call& call);

    InstanceRegistry& m_services;
    Log& m_log;
    DriverModule m_module;
    std::unique_ptr<VqBaseDriver> m_agent;
    bool m_isUnknown = false;
    DriverOnly m_driverOnly;
};

} // namespace controller
