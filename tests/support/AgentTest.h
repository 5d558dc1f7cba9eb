#pragma once

#include "agent/AnnouncementAgent.h"
#include "tests/support/FakeHost.h"
#include "tests/support/Lines.h"
#include "tests/support/TestMessage.h"
#include "tests/support/Xml.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>

/// An agent at a fake host, with its commands registered and nothing stored.
class AgentTest : public testing::Test {
protected:
    using Parameters = std::map<std::string, std::string>;

    AgentTest() { Start(""); }

    /// Replaces the agent by a new one with this saved state; an empty text: none.
    void Start(const std::string& savedState) {
        m_agent.reset();
        m_agent = std::make_unique<AnnouncementAgent>(m_host);
        Load(savedState);
        m_agent->RegisterCommands();
        m_host.Take();
    }
    void Load(const std::string& savedState) {
        const auto configuration = VqXML::CreateXmlNode("configuration", "");
        if (savedState.empty())
            return m_agent->Initialize(0, *configuration, nullptr);
        m_agent->Initialize(0, *configuration, ParseXml(savedState)->GetRootNode());
    }

    void Command(const std::string& name, const Parameters& parameters = {}) {
        m_agent->ExecuteCommand(TestMessage(name, parameters), nullptr, 0);
    }
    void Execute(const std::string& id) { Command("execute_announcement", {{"id", id}}); }
    std::string Request(const std::string& name, const Parameters& parameters = {}) {
        return TextOf(m_agent->UIRequest(TestMessage(name, parameters)));
    }
    std::string Request(const TestMessage& message) { return TextOf(m_agent->UIRequest(message)); }
    std::string Saved() { return TextOf(m_agent->GetPersistState(0)); }
    /// What the agent does now, without what came before.
    template <class Action>
    Lines CallsOf(Action action) {
        m_host.Take();
        action();
        return m_host.Take();
    }

    FakeHost m_host;
    std::unique_ptr<AnnouncementAgent> m_agent;
};

/// The call that ends every timer of the driver.
inline const std::string kTimersKilled = "ITimerManager.KillAllTimers()";

/// A stored announcement that plays neither sound nor popup.
inline std::string Silent(const std::string& id) {
    return "<announcement><id>" + id + "</id><name>" + id + "</name><rooms/><navigators/></announcement>";
}
/// The same, as the agent writes it.
inline std::string SilentWritten(const std::string& id) {
    return "<announcement><id>" + id + "</id><name>" + id +
           "</name><audio><file/><delay>0</delay></audio><video><file/><text/><delay>0</delay><timeout>0</"
           "timeout>"
           "<displayID>0</displayID><variableID>0</variableID><variableName/><OKButton>true</OKButton></"
           "video>"
           "<rooms/><navigators/></announcement>";
}
/// A stored announcement that shows a popup on navigator 5 for five seconds.
inline std::string Popup(const std::string& id) {
    return "<announcement><id>" + id + "</id><name>" + id +
           "</name><video><text>Hi</text><timeout>5000</timeout></video><rooms/"
           "><navigators><navigator><id>5</id>"
           "</navigator></navigators></announcement>";
}
inline std::string Stored(const std::string& announcements) {
    return "<announcements>" + announcements + "</announcements>";
}
