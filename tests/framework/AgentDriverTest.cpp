#include "host/VqBaseAgentDriver.h"
#include "tests/support/FakeHost.h"
#include "tests/support/Lines.h"
#include "tests/support/TestMessage.h"
#include "tests/support/Xml.h"

#include <boost/function.hpp>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <stdexcept>

namespace {

class OpenAgent final : public VqBaseAgentDriver {
public:
    explicit OpenAgent(IInstanceManager& instances)
        : VqBaseAgentDriver(instances, DriverMultiplicity::Single) {}

    CmdDispatcher& Commands() { return GetCmdDispatcher(); }
    UICmdDispatcher& Requests() { return GetUICmdDispatcher(); }
};

vq::auto_com<VqXML::INode> Reply(const std::string& text) {
    return VqXML::CreateXmlNode("reply", text);
}

class AgentDriverTest : public testing::Test {
protected:
    void Execute(const std::string& name) { m_agent->ExecuteCommand(TestMessage(name), nullptr, 0); }
    std::string Request(const std::string& name) { return TextOf(m_agent->UIRequest(TestMessage(name))); }
    boost::function<void()> Note(const std::string& text) {
        return [this, text] {
            m_done.push_back(text);
        };
    }

    FakeHost m_host;
    std::unique_ptr<OpenAgent> m_agent = std::make_unique<OpenAgent>(m_host);
    Lines m_done;
};

TEST_F(AgentDriverTest, RegistrationsAreReportedInTheirOrder) {
    m_agent->Commands().RegisterCmd1("one", [](const ICmdMessage&) {});
    m_agent->Commands().RegisterCmd0("none", [] {});
    m_agent->Requests().RegisterUICmd("ask", [](const ICmdMessage&) { return Reply(""); });

    EXPECT_EQ(m_host.Take(), (Lines{"CmdDispatcher.RegisterCmd1(one)", "CmdDispatcher.RegisterCmd0(none)",
                                    "UICmdDispatcher.RegisterUICmd(ask)"}));
}

TEST_F(AgentDriverTest, CommandReachesTheHandlerOfItsExactName) {
    m_agent->Commands().RegisterCmd0("go", Note("go"));
    m_agent->Commands().RegisterCmd0("GO", Note("GO"));

    Execute("GO");

    EXPECT_EQ(m_done, Lines{"GO"});
}

TEST_F(AgentDriverTest, HandlerWithOneArgumentReceivesTheMessage) {
    m_agent->Commands().RegisterCmd1("go", [this](const ICmdMessage& message) {
        m_done.push_back(message.GetName() + " " + message.GetParam("id"));
    });

    m_agent->ExecuteCommand(TestMessage("go", {{"id", "5"}}), nullptr, 0);

    EXPECT_EQ(m_done, Lines{"go 5"});
}

TEST_F(AgentDriverTest, RequestReturnsTheHandlersElement) {
    m_agent->Requests().RegisterUICmd("ask",
                                      [](const ICmdMessage& message) { return Reply(message.GetName()); });

    EXPECT_EQ(Request("ask"), "<reply>ask</reply>");
}

TEST_F(AgentDriverTest, EmptyReplyStaysEmpty) {
    m_agent->Requests().RegisterUICmd("ask", [](const ICmdMessage&) { return vq::auto_com<VqXML::INode>(); });

    EXPECT_EQ(Request("ask"), "none");
}

TEST_F(AgentDriverTest, NameThatNobodyRegisteredIsReportedAndDoesNothing) {
    m_agent->Commands().RegisterCmd0("go", Note("go"));
    m_host.Take();

    Execute("unknown");
    EXPECT_EQ(Request("another"), "none");

    EXPECT_EQ(m_done, Lines{});
    EXPECT_EQ(m_host.Take(), (Lines{"no handler: unknown", "no handler: another"}));
}

TEST_F(AgentDriverTest, CommandsAndRequestsHaveNamesOfTheirOwn) {
    m_agent->Commands().RegisterCmd0("go", Note("go"));
    m_host.Take();

    EXPECT_EQ(Request("go"), "none");

    EXPECT_EQ(m_host.Take(), Lines{"no handler: go"});
}

TEST_F(AgentDriverTest, LaterRegistrationReplacesTheEarlierOneOfEitherKind) {
    m_agent->Commands().RegisterCmd0("go", Note("first"));
    m_agent->Commands().RegisterCmd1("go", [this](const ICmdMessage&) { m_done.emplace_back("second"); });
    m_agent->Requests().RegisterUICmd("ask", [](const ICmdMessage&) { return Reply("first"); });
    m_agent->Requests().RegisterUICmd("ask", [](const ICmdMessage&) { return Reply("second"); });

    Execute("go");

    EXPECT_EQ(m_done, Lines{"second"});
    EXPECT_EQ(Request("ask"), "<reply>second</reply>");
}

TEST_F(AgentDriverTest, HandlerMayReplaceItselfWhileItRuns) {
    const auto kept = std::make_shared<std::string>("first");
    m_agent->Commands().RegisterCmd1("go", [this, kept](const ICmdMessage&) {
        m_agent->Commands().RegisterCmd0("go", Note("second"));
        m_done.push_back(*kept); // what the handler holds is still there
    });

    Execute("go");
    Execute("go");

    EXPECT_EQ(m_done, (Lines{"first", "second"}));
}

TEST_F(AgentDriverTest, RequestHandlerMayReplaceItselfWhileItRuns) {
    const auto kept = std::make_shared<std::string>("first");
    m_agent->Requests().RegisterUICmd("ask", [this, kept](const ICmdMessage&) {
        m_agent->Requests().RegisterUICmd("ask", [](const ICmdMessage&) { return Reply("second"); });
        return Reply(*kept);
    });

    EXPECT_EQ(Request("ask"), "<reply>first</reply>");
    EXPECT_EQ(Request("ask"), "<reply>second</reply>");
}

TEST_F(AgentDriverTest, HandlerMayDestroyItsDriver) {
    const auto kept = std::make_shared<std::string>("still here");
    m_agent->Commands().RegisterCmd1("go", [this, kept](const ICmdMessage&) {
        m_agent.reset();
        m_done.push_back(*kept);
    });
    VqBaseDriver& agent = *m_agent;

    agent.ExecuteCommand(TestMessage("go"), nullptr, 0);

    EXPECT_EQ(m_done, Lines{"still here"});
}

TEST_F(AgentDriverTest, WhatAHandlerThrowsReachesTheHost) {
    m_agent->Commands().RegisterCmd0("go", [] { throw "a text"; });
    m_agent->Requests().RegisterUICmd(
        "ask", [](const ICmdMessage&) -> vq::auto_com<VqXML::INode> { throw std::string("a string"); });

    EXPECT_THROW(Execute("go"), const char*);
    EXPECT_THROW((void)Request("ask"), std::string);
}

TEST_F(AgentDriverTest, AgentWithoutHostIsNotMade) {
    class Nobody final : public IInstanceManager {
    public:
        void QueryInterface(const std::string& /*guid*/, void** out) const override { *out = nullptr; }
        void RegisterInterface(const std::string& /*guid*/,
                               void* /*object*/,
                               std::uint32_t /*version*/) override {}
        void UnregisterInterface(const std::string& /*guid*/) override {}
    };
    Nobody instances;

    EXPECT_THROW(OpenAgent{instances}, std::invalid_argument);
}

} // namespace
