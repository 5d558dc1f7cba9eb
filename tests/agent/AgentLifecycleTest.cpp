#include "agent/ModuleConstants.h"
#include "tests/support/AgentTest.h"

#include <algorithm>
#include <type_traits>

namespace {

using AgentLifecycleTest = AgentTest;

const std::string kFace = "{E869B37E-23C8-4334-9B26-0A96C0EF981C}";
const std::string kPublished = "IInstanceManager.RegisterInterface(" + kFace + ", 1)";
const std::string kWithdrawn = "IInstanceManager.UnregisterInterface(" + kFace + ")";

TEST_F(AgentLifecycleTest, TheFactoryMakesAnAgentThatPublishesItsFace) {
    m_agent.reset();
    std::unique_ptr<VqBaseDriver> driver;
    EXPECT_EQ(CallsOf([&] { driver.reset(AnnouncementAgent::Create(m_host)); }), Lines{kPublished});
    auto* const agent = dynamic_cast<AnnouncementAgent*>(driver.get());
    ASSERT_NE(agent, nullptr);
    EXPECT_EQ(m_host.Face(), static_cast<IAnnouncementAgent*>(agent));
    EXPECT_EQ(driver->GetMultiplicity(), DriverMultiplicity::Single);
    EXPECT_EQ(static_cast<int>(driver->GetMultiplicity()), 0);
    EXPECT_EQ(CallsOf([&] { driver.reset(); }), Lines{kWithdrawn});
    EXPECT_EQ(m_host.Face(), nullptr);
}

TEST_F(AgentLifecycleTest, ConstructionLooksNothingUp) {
    m_agent.reset();
    m_host.log.ShowLookUps();
    EXPECT_EQ(CallsOf([&] { m_agent = std::make_unique<AnnouncementAgent>(m_host); }), Lines{kPublished});
}

TEST_F(AgentLifecycleTest, AHostThatRefusesTheFaceGetsNoAgentAndNoWithdrawal) {
    m_agent.reset();
    m_host.log.ThrowAtCall(1);
    EXPECT_EQ(CallsOf([&] { EXPECT_THROW((void)AnnouncementAgent::Create(m_host), std::string); }),
              Lines{kPublished});
    EXPECT_EQ(m_host.Face(), nullptr);
}

TEST_F(AgentLifecycleTest, AHostWithoutItsDriverServicesGetsNoAgent) {
    class EmptyManager final : public IInstanceManager {
        void QueryInterface(const std::string& /*guid*/, void** out) const override { *out = nullptr; }
        void RegisterInterface(const std::string&, void*, std::uint32_t) override {}
        void UnregisterInterface(const std::string&) override {}
    };
    EmptyManager empty;
    EXPECT_THROW((void)AnnouncementAgent::Create(empty), std::invalid_argument);
}

TEST_F(AgentLifecycleTest, RegistersTwelveNamesInOrder) {
    EXPECT_EQ(
        CallsOf([&] { m_agent->RegisterCommands(); }),
        (Lines{"CmdDispatcher.RegisterCmd1(execute_announcement)",
               "CmdDispatcher.RegisterCmd0(ANNOUNCEMENT_DISMISSED)",
               "UICmdDispatcher.RegisterUICmd(add_announcement)",
               "UICmdDispatcher.RegisterUICmd(remove_announcement)",
               "UICmdDispatcher.RegisterUICmd(modify_announcement)",
               "UICmdDispatcher.RegisterUICmd(add_room)", "UICmdDispatcher.RegisterUICmd(modify_room)",
               "UICmdDispatcher.RegisterUICmd(remove_room)", "UICmdDispatcher.RegisterUICmd(add_navigator)",
               "UICmdDispatcher.RegisterUICmd(remove_navigator)",
               "UICmdDispatcher.RegisterUICmd(get_announcements)",
               "UICmdDispatcher.RegisterUICmd(get_announcement)"}));
}

TEST_F(AgentLifecycleTest, NamesAreKnownToTheLetter) {
    EXPECT_EQ(CallsOf([&] {
                  Command("announcement_dismissed");
                  Command("EXECUTE_ANNOUNCEMENT");
                  Command("get_announcements"); // a request is no command
                  EXPECT_EQ(Request("execute_announcement"), "none");
              }),
              (Lines{"no handler: announcement_dismissed", "no handler: EXECUTE_ANNOUNCEMENT",
                     "no handler: get_announcements", "no handler: execute_announcement"}));
}

TEST_F(AgentLifecycleTest, NoCommandAndNoRequestForgetsEverything) {
    Start(Stored(Popup("1") + Popup("2")));
    const std::string before = Saved();
    Execute("1");
    Execute("2");
    for (const char* name : {"execute_announcement", "ANNOUNCEMENT_DISMISSED"})
        Command(name);
    for (const char* name : {"remove_announcement", "add_room", "modify_room", "remove_room", "add_navigator",
                             "remove_navigator", "get_announcements", "get_announcement"})
        (void)Request(name);
    for (const char* name : {"add_announcement", "modify_announcement"})
        EXPECT_THROW(Request(name), const char*) << name;
    EXPECT_EQ(Saved(), before);
    EXPECT_TRUE(m_agent->IsAnnouncementInQueue(2));
    EXPECT_EQ(m_agent->GetNextAnnouncementID(), 3U);
}

TEST_F(AgentLifecycleTest, InitializeAndRegisterCommandsDoNotNeedEachOther) {
    m_agent.reset();
    m_agent = std::make_unique<AnnouncementAgent>(m_host);
    m_agent->RegisterCommands();
    EXPECT_EQ(Request("get_announcements"), "<announcements/>");
    Load(Stored(Silent("1")));
    EXPECT_EQ(Request("get_announcements"), Stored(SilentWritten("1")));

    m_agent.reset();
    m_agent = std::make_unique<AnnouncementAgent>(m_host);
    Load(Stored(Silent("1")));
    EXPECT_EQ(CallsOf([&] { Execute("1"); }), Lines{"no handler: execute_announcement"});
}

TEST_F(AgentLifecycleTest, WithoutASavedStateItIsEmptyAndHandsOutOneFirst) {
    EXPECT_EQ(Saved(), "<announcements/>");
    EXPECT_EQ(m_agent->GetNextAnnouncementID(), 1U);
}

TEST_F(AgentLifecycleTest, ClearAllAnnouncementsForgetsMapAndQueueAndCounterButNotWhatPlays) {
    Start(Stored(Popup("1") + Silent("2")));
    Request("add_announcement", {{"announcement", Popup("0")}});
    EXPECT_EQ(m_agent->GetNextAnnouncementID(), 4U);
    Execute("1");
    Execute("2");
    EXPECT_TRUE(m_agent->IsAnnouncementInQueue(2));

    EXPECT_EQ(CallsOf([&] { m_agent->ClearAllAnnouncements(); }), (Lines{kTimersKilled, kTimersKilled}));
    EXPECT_EQ(Saved(), "<announcements/>");
    EXPECT_FALSE(m_agent->IsAnnouncementInQueue(2));
    EXPECT_EQ(m_agent->GetNextAnnouncementID(), 1U);
    EXPECT_EQ(
        CallsOf([&] { m_host.Advance(5000); }),
        (Lines{"poll 1", "VqBaseDriver.AddTimer(1000, 1) = 3", "poll 3", "VqBaseDriver.AddTimer(1000, 1) = 4",
               "poll 4", "VqBaseDriver.AddTimer(1000, 1) = 5", "poll 5", "VqBaseDriver.AddTimer(1000, 1) = 6",
               "timer 2", "ILogger.Log(6, Announcement restoring video)", "poll 6", kTimersKilled}));
}

TEST_F(AgentLifecycleTest, DestructionDropsTheStoredThenWithdrawsTheFaceThenDropsWhatPlays) {
    // The playing announcement is held by nobody else: its timers are killed last.
    Start(Stored(Popup("1") + Silent("2")));
    Execute("1");
    Request("remove_announcement", {{"id", "1"}});
    EXPECT_EQ(CallsOf([&] { m_agent.reset(); }), (Lines{kTimersKilled, kWithdrawn, kTimersKilled}));
    EXPECT_EQ(CallsOf([&] { m_host.Advance(60000); }), Lines{});
}

TEST_F(AgentLifecycleTest, AnAnnouncementThatPlaysOutlivesItsPlaceInTheMapAtDestruction) {
    Start(Stored(Popup("1") + Silent("2")));
    Execute("1");
    EXPECT_EQ(CallsOf([&] { m_agent.reset(); }), (Lines{kTimersKilled, kWithdrawn, kTimersKilled}));
}

TEST_F(AgentLifecycleTest, StoredAnnouncementsAreDestroyedByAscendingId) {
    std::vector<std::uint32_t> ids;
    std::string stored;
    for (std::uint32_t id = 1; id <= 50; ++id)
        ids.push_back(id * 7919 % 104729);
    for (const std::uint32_t id : ids)
        stored += Silent(std::to_string(id));
    Start(Stored(stored));

    std::sort(ids.begin(), ids.end());
    std::vector<const ITimerManagerCallback*> ascending;
    ascending.reserve(ids.size());
    for (const std::uint32_t id : ids)
        ascending.push_back(m_agent->GetAnnouncementFromID(id).get());
    m_host.timers.ownersCancelled.clear();
    m_agent.reset();
    EXPECT_EQ(m_host.timers.ownersCancelled, ascending);
}

TEST_F(AgentLifecycleTest, AHostThatThrowsWhileTimersAreCancelledIsSurvived) {
    Start(Stored(Silent("1") + Silent("2")));
    m_host.log.ThrowAtCall(1);
    EXPECT_EQ(CallsOf([&] { m_agent.reset(); }), (Lines{kTimersKilled, kTimersKilled, kWithdrawn}));
}

TEST_F(AgentLifecycleTest, AHostThatThrowsAtTheWithdrawalIsSurvived) {
    m_host.log.ThrowAtCall(1);
    EXPECT_EQ(CallsOf([&] { m_agent.reset(); }), Lines{kWithdrawn});
    EXPECT_TRUE(m_host.log.HasThrown());
}

TEST_F(AgentLifecycleTest, ThePollTimerIsNotCancelledByTheAgentAndDoesNotReachADeadOne) {
    Start(Stored(Silent("1")));
    Execute("1");
    EXPECT_EQ(CallsOf([&] { m_agent.reset(); }), (Lines{kWithdrawn, kTimersKilled}));
    EXPECT_EQ(CallsOf([&] { m_host.Advance(5000); }), Lines{});
}

TEST_F(AgentLifecycleTest, TheModuleCarriesItsTwoConstants) {
    EXPECT_STREQ(kFirstModuleConstant, "268435440");
    EXPECT_STREQ(kSecondModuleConstant, "268435442");
    EXPECT_EQ(std::stoul(kFirstModuleConstant), 0x0FFFFFF0UL);
    EXPECT_EQ(std::stoul(kSecondModuleConstant), 0x0FFFFFF2UL);
}

TEST_F(AgentLifecycleTest, IsAnAgentDriverAndAnAnnouncementAgent) {
    EXPECT_TRUE((std::is_base_of_v<VqBaseAgentDriver, AnnouncementAgent>));
    EXPECT_TRUE((std::is_convertible_v<AnnouncementAgent*, IAnnouncementAgent*>));
    EXPECT_TRUE(std::has_virtual_destructor_v<AnnouncementAgent>);
}

} // namespace
