#include "tests/support/AgentTest.h"
#include "tests/support/LookUps.h"

namespace {

using AgentPersistenceTest = AgentTest;

/// Reaches a member that nothing but four thousand million announcements would bring where a test wants it:
/// access is not checked for the arguments of an explicit instantiation.
template <std::uint32_t AnnouncementAgent::*Member>
struct CounterAccess {
    friend std::uint32_t& CounterOf(AnnouncementAgent& agent) { return agent.*Member; }
};
template struct CounterAccess<&AnnouncementAgent::m_nextAnnouncementId>;
std::uint32_t& CounterOf(AnnouncementAgent& agent);

TEST_F(AgentPersistenceTest, AnEmptyAgentSavesAnElementWithoutChildrenThatReadsBackEmpty) {
    const std::string saved = Saved();
    EXPECT_EQ(saved, "<announcements/>");
    Start(saved);
    EXPECT_EQ(Saved(), "<announcements/>");
}

TEST_F(AgentPersistenceTest, SavesByAscendingIdAndReadsTheSameBack) {
    Start(Stored(Silent("10") + Silent("9") + Silent("2")));
    const std::string saved = Saved();
    EXPECT_EQ(saved, Stored(SilentWritten("2") + SilentWritten("9") + SilentWritten("10")));
    Start(saved);
    EXPECT_EQ(Saved(), saved);
    EXPECT_EQ(m_agent->GetNextAnnouncementID(), 1U);
}

TEST_F(AgentPersistenceTest, SavingIgnoresItsArgumentAndHasNoSideEffects) {
    Start(Stored(Silent("2")));
    EXPECT_EQ(CallsOf([&] {
                  for (const std::uint32_t reason : {0U, 1U, 4294967295U})
                      EXPECT_EQ(TextOf(m_agent->GetPersistState(reason)), Stored(SilentWritten("2")));
              }),
              Lines{});
}

TEST_F(AgentPersistenceTest, EachSaveBuildsATreeOfItsOwn) {
    Start(Stored(Silent("2")));
    const auto first = m_agent->GetPersistState(0);
    first->SetNameAndValue("changed", "text");
    EXPECT_EQ(Saved(), Stored(SilentWritten("2")));
}

TEST_F(AgentPersistenceTest, OfTwoElementsWithOneIdTheFirstIsKept) {
    Start("<announcements><a><id>4</id><name>first</name><navigators/></a><a><id>4</id><name>second</name>"
          "<navigators/></a></announcements>");
    EXPECT_NE(Saved().find("<name>first</name>"), std::string::npos);
    EXPECT_EQ(Saved().find("<name>second</name>"), std::string::npos);
}

TEST_F(AgentPersistenceTest, TheElementThatComesSecondIsDroppedWithoutAWordButItsTimersKilled) {
    EXPECT_EQ(CallsOf([&] { Load(Stored(Silent("4") + Silent("4"))); }),
              Lines{"ITimerManager.KillAllTimers()"});
}

TEST_F(AgentPersistenceTest, AChildOfAnyTagIsReadAsAnAnnouncement) {
    Start("<state><notice><id>7</id><name>7</name><rooms/><navigators/></notice></state>");
    EXPECT_EQ(Saved(), Stored(SilentWritten("7")));
}

TEST_F(AgentPersistenceTest, InitializingAgainAddsToWhatIsThere) {
    Start(Stored(Silent("1")));
    Load(Stored(Silent("2")));
    EXPECT_EQ(Saved(), Stored(SilentWritten("1") + SilentWritten("2")));
}

TEST_F(AgentPersistenceTest, TheHelperIsFetchedAnewForEachChild) {
    const Lines child{"VqBaseDriver.GetHelper()", kFindDeviceManager,
                      "IInstanceManager.QueryInterface({6AF43241-ECD9-4DFF-9F14-3E7194FFE2D4})"};
    m_host.log.ShowLookUps();
    EXPECT_EQ(CallsOf([&] { Load(Stored(Silent("1") + Silent("2"))); }), Join({child, child}));
    EXPECT_EQ(CallsOf([&] { Load(Stored("")); }), Lines{});
}

TEST_F(AgentPersistenceTest, AFailureWhileReadingKeepsWhatWasReadAndLeavesInitialize) {
    m_host.log.ThrowAtCall(5); // the second announcement's look-up of the device manager
    EXPECT_THROW(Load(Stored(Silent("1") + Silent("2") + Silent("3"))), std::string);
    EXPECT_EQ(Saved(), Stored(SilentWritten("1")));
}

TEST_F(AgentPersistenceTest, AnIdOfItsOwnIsTheKeyAfterTheNextStart) {
    EXPECT_EQ(Request("add_announcement", {{"announcement", Silent("40")}}), "<success>1</success>");
    EXPECT_EQ(Request("get_announcement", {{"id", "1"}}), SilentWritten("40"));
    EXPECT_EQ(Request("get_announcement", {{"id", "40"}}), "<announcement/>");
    Start(Saved());
    EXPECT_EQ(Request("get_announcement", {{"id", "1"}}), "<announcement/>");
    EXPECT_EQ(Request("get_announcement", {{"id", "40"}}), SilentWritten("40"));
}

TEST_F(AgentPersistenceTest, TheNextIdSkipsLoadedOnes) {
    Start(Stored(Silent("1") + Silent("2") + Silent("3")));
    EXPECT_EQ(m_agent->GetNextAnnouncementID(), 4U);
    EXPECT_EQ(m_agent->GetNextAnnouncementID(), 4U);
}

TEST_F(AgentPersistenceTest, GapsBelowALoadedIdAreFilledFirst) {
    Start(Stored(Silent("5")));
    for (const char* const id : {"1", "2", "3", "4", "6"})
        EXPECT_EQ(Request("add_announcement", {{"announcement", "<a><navigators/></a>"}}),
                  std::string("<success>") + id + "</success>");
}

TEST_F(AgentPersistenceTest, TheIdOfTheLastOneRemovedIsHandedOutAgainButNotAnEarlierOne) {
    const Parameters plain{{"announcement", "<a><navigators/></a>"}};
    for (int count = 0; count < 3; ++count)
        Request("add_announcement", plain);
    Request("remove_announcement", {{"id", "3"}});
    EXPECT_EQ(Request("add_announcement", plain), "<success>3</success>");
    Request("remove_announcement", {{"id", "1"}});
    EXPECT_EQ(Request("add_announcement", plain), "<success>4</success>");
}

TEST_F(AgentPersistenceTest, TheCounterWrapsToZeroAndWhatIsStoredThereIsNeverFound) {
    Start(Stored(Silent("4294967295")));
    CounterOf(*m_agent) = 4294967295U;
    EXPECT_EQ(Request("add_announcement", {{"announcement", Silent("0")}}), "<success>0</success>");
    EXPECT_EQ(Saved(), Stored(SilentWritten("0") + SilentWritten("4294967295")));
    EXPECT_EQ(Request("get_announcement", {{"id", "0"}}), "<announcement/>");
    EXPECT_EQ(Request("remove_announcement", {{"id", "0"}}),
              "<fail>Invalid announcement id on remove</fail>");
    EXPECT_EQ(CallsOf([&] { Execute("0"); }), Lines{});
    EXPECT_EQ(m_agent->GetNextAnnouncementID(), 1U);
}

TEST_F(AgentPersistenceTest, QueueAndPlayingAnnouncementAreNotSaved) {
    Start(Stored(Popup("1") + Silent("2")));
    const std::string saved = Saved();
    Execute("1");
    Execute("2");
    EXPECT_EQ(Saved(), saved);
    Start(saved);
    EXPECT_FALSE(m_agent->IsAnnouncementInQueue(2));
    EXPECT_EQ(CallsOf([&] { m_host.Advance(10000); }), Lines{});
}

} // namespace
