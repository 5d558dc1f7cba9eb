#include "tests/support/AgentTest.h"

#include <functional>
#include <optional>
#include <tuple>

// The base driver's `Initialize` does nothing that could be seen. This one stands in its place in the whole
// program, for a program's own definition goes before a shared library's.

namespace {

using Arguments = std::tuple<std::uint32_t, VqXML::INode*, VqXML::INode*>;

std::optional<Arguments> baseInitialized;
std::function<void()> whenInitialized;

} // namespace

void VqBaseDriver::Initialize(std::uint32_t reason, VqXML::INode& configuration, VqXML::INode* savedState) {
    baseInitialized = Arguments{reason, &configuration, savedState};
    if (whenInitialized)
        whenInitialized();
}

namespace {

class AgentBaseTest : public AgentTest {
protected:
    AgentBaseTest() { baseInitialized.reset(); }
    ~AgentBaseTest() override { whenInitialized = nullptr; }

    vq::auto_com<VqXML::INode> m_configuration = VqXML::CreateXmlNode("configuration", "");
    vq::auto_com<VqXML::IDocument> m_saved = ParseXml(Stored(Silent("1")));
};

TEST_F(AgentBaseTest, TheBaseIsInitializedWithTheSameThreeArguments) {
    m_agent->Initialize(4294967295U, *m_configuration, m_saved->GetRootNode());
    EXPECT_EQ(baseInitialized, Arguments(4294967295U, m_configuration.Get(), m_saved->GetRootNode()));

    m_agent->Initialize(7, *m_configuration, nullptr);
    EXPECT_EQ(baseInitialized, Arguments(7U, m_configuration.Get(), nullptr));
}

TEST_F(AgentBaseTest, TheBaseIsInitializedBeforeTheSavedStateIsRead) {
    std::string savedThen = "not asked";
    whenInitialized = [&] {
        savedThen = Saved();
    };
    m_agent->Initialize(0, *m_configuration, m_saved->GetRootNode());
    EXPECT_EQ(savedThen, "<announcements/>");
    EXPECT_EQ(Saved(), Stored(SilentWritten("1")));
}

TEST_F(AgentBaseTest, ABaseThatFailsLeavesTheSavedStateUnread) {
    whenInitialized = [] {
        throw std::string("no base");
    };
    EXPECT_THROW(m_agent->Initialize(0, *m_configuration, m_saved->GetRootNode()), std::string);
    EXPECT_EQ(Saved(), "<announcements/>");
}

} // namespace
