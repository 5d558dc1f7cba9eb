#include "controller/agent/AgentHost.h"

#include "controller/ModuleFile.h"
#include "tests/controller/support/FakeScheduler.h"
#include "tests/controller/support/TemporaryFolder.h"
#include "tests/controller/support/TestLog.h"

#include <gtest/gtest.h>

namespace controller {

namespace {

constexpr const char* kOne =
    "<announcements><announcement><id>1</id><name>One</name><audio><file></file>"
    "<delay>0</delay></audio><video><file></file><text></text><delay>0</delay>"
    "<timeout>0</timeout></video><rooms/><navigators/></announcement></announcements>";

class AgentHostTest : public testing::Test {
protected:
    AgentHostTest() {
        DriverHost::Listeners listeners;
        listeners.eventFired = [this](std::uint32_t id) {
            m_events.push_back(id);
        };
        listeners.handlerMissing = [this](const std::string& /*name*/) {
            m_agent.HandlerMissing();
        };
        m_host.SetListeners(listeners);
    }

    FakeScheduler m_scheduler;
    TestLog m_log;
    Timers m_timers{m_scheduler, m_log.log};
    DriverHost m_host{m_timers, m_log.log};
    InstanceRegistry m_services;
    std::vector<std::uint32_t> m_events;
    AgentHost m_agent{FindModuleFile().string(), m_services, m_host, m_log.log};
};

TEST_F(AgentHostTest, ARequestIsAnsweredWithTheAgentsReply) {
    m_agent.Start(kOne);
    const AgentAnswer answer = m_agent.Request("remove_announcement", {{"id", "1"}});
    EXPECT_EQ(answer.kind, AgentAnswer::Kind::Reply);
    EXPECT_EQ(answer.tag, "success");
    EXPECT_EQ(answer.text, "<success/>");
    EXPECT_EQ(m_agent.State(), "<announcements/>");
}

TEST_F(AgentHostTest, ACommandReachesTheAgent) {
    m_agent.Start(kOne);
    EXPECT_EQ(m_agent.Command("execute_announcement", {{"id", "1"}}).kind, AgentAnswer::Kind::Done);
    EXPECT_EQ(m_events, std::vector<std::uint32_t>{1});
}

TEST_F(AgentHostTest, WhatTheAgentThrowsIsTheAnswerAndIsLogged) {
    m_agent.Start("");
    const AgentAnswer answer = m_agent.Request("add_announcement", {{"announcement", "no xml"}});
    EXPECT_EQ(answer.kind, AgentAnswer::Kind::Failed);
    EXPECT_EQ(answer.text, "Unable to dom xml to create announcement");
    EXPECT_EQ(m_log.lines.back(),
              "warning: The agent failed in add_announcement: Unable to dom xml to create announcement");
    EXPECT_EQ(m_agent.Request("get_announcements", {}).text, "<announcements/>");
}

TEST_F(AgentHostTest, ANameThatNobodyHasIsToldAsSuch) {
    m_agent.Start("");
    EXPECT_EQ(m_agent.Request("no_such_request", {}).kind, AgentAnswer::Kind::Unknown);
    EXPECT_EQ(m_agent.Command("no_such_command", {}).kind, AgentAnswer::Kind::Unknown);
    EXPECT_EQ(m_agent.Request("get_announcements", {}).kind, AgentAnswer::Kind::Reply);
}

TEST_F(AgentHostTest, WithoutAnAgentNothingIsDelivered) {
    EXPECT_EQ(m_agent.Request("get_announcements", {}).kind, AgentAnswer::Kind::NoAgent);
    m_agent.Start(kOne);
    m_agent.Stop();
    EXPECT_EQ(m_agent.Command("execute_announcement", {{"id", "1"}}).kind, AgentAnswer::Kind::NoAgent);
    EXPECT_THROW((void)m_agent.State(), std::runtime_error);
    EXPECT_EQ(m_scheduler.Waiting(), 0U);
}

TEST_F(AgentHostTest, AStateThatIsNoXmlIsRefused) {
    EXPECT_THROW(m_agent.Start("<announcements>"), std::runtime_error);
}

TEST(AgentModuleTest, AModuleThatIsMissingOfTheWrongKindOrWithoutItsEntryIsToldByName) {
    FakeScheduler scheduler;
    TestLog log;
    Timers timers(scheduler, log.log);
    DriverHost host(timers, log.log);
    InstanceRegistry services;
    const TemporaryFolder folder;
    const auto text = folder.Write("text.so", "no module");
    const std::string files[] = {(folder.Path() / "missing.so").string(), text.string(), FRAMEWORK_FILE};
    for (const std::string& file : files) {
        try {
            const AgentHost agent(file, services, host, log.log);
            FAIL() << file;
        } catch (const std::runtime_error& error) {
            EXPECT_NE(std::string(error.what()).find(file), std::string::npos) << error.what();
        }
    }
}

} // namespace

} // namespace controller
