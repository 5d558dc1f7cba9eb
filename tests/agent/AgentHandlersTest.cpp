#include "tests/support/AgentTest.h"

namespace {

using ReturnCode = AnnouncementAgent::ReturnCode;

const std::string kPlain = "<announcement><name>A</name><rooms/><navigators/></announcement>";

class AgentHandlersTest : public AgentTest {
protected:
    /// A request whose parameter of this name throws, and whose "id" is 1.
    static TestMessage Throwing(const std::string& request, const std::string& parameter) {
        return {request, [parameter](const std::string& name) -> std::string {
                    if (name == parameter)
                        throw std::string("the host is out of " + parameter);
                    return "1";
                }};
    }
};

// Replies

TEST_F(AgentHandlersTest, CodeZeroMakesASuccessAndEveryOtherAFail) {
    EXPECT_EQ(TextOf(AnnouncementAgent::CreateReturn(ReturnCode::Success, "7")), "<success>7</success>");
    EXPECT_EQ(TextOf(AnnouncementAgent::CreateReturn(ReturnCode::Failure, "a < b & c")),
              "<fail>a &lt; b &amp; c</fail>");
    for (const int code : {-1, 2, 2147483647})
        EXPECT_EQ(TextOf(AnnouncementAgent::CreateReturn(static_cast<ReturnCode>(code), "")), "<fail/>")
            << code;
}

TEST_F(AgentHandlersTest, AReplyWithAnElementHoldsItAsItsOnlyChildAndHasNoText) {
    const auto element = VqXML::CreateXmlNode("detail", "text");
    EXPECT_EQ(TextOf(AnnouncementAgent::CreateReturn(ReturnCode::Success, element)),
              "<success><detail>text</detail></success>");
    EXPECT_EQ(TextOf(AnnouncementAgent::CreateReturn(ReturnCode::Failure, element)),
              "<fail><detail>text</detail></fail>");
    EXPECT_EQ(TextOf(element), "<detail>text</detail>");
}

TEST_F(AgentHandlersTest, AReplyWithAnEmptyHolderHasNoChildAndIsReported) {
    const Lines reported = CallsOf([] {
        EXPECT_EQ(TextOf(AnnouncementAgent::CreateReturn(ReturnCode::Success, vq::auto_com<VqXML::INode>())),
                  "<success/>");
    });
    ASSERT_EQ(reported.size(), 1U);
    EXPECT_EQ(reported[0].find("vq.AssertWrite("), 0U) << reported[0];
}

// add_announcement

TEST_F(AgentHandlersTest, AddAnnouncementInvalidatesTheDriversStateAndAnswersWithTheId) {
    EXPECT_EQ(CallsOf([&] {
                  EXPECT_EQ(Request("add_announcement", {{"announcement", kPlain}}), "<success>1</success>");
              }),
              Lines{"VqBaseDriver.DmInvalidateState()"});
    EXPECT_EQ(Request("add_announcement", {{"announcement", kPlain}}), "<success>2</success>");
}

TEST_F(AgentHandlersTest, ATextThrownWhileTheAnnouncementIsBuiltIsLoggedAndAnswered) {
    EXPECT_EQ(CallsOf([&] {
                  EXPECT_EQ(Request(Throwing("add_announcement", "announcement")),
                            "<fail>the host is out of announcement</fail>");
              }),
              Lines{"VqBaseDriver.LogMessage(3, the host is out of announcement)"});
    EXPECT_EQ(Saved(), "<announcements/>");
    EXPECT_EQ(Request("add_announcement", {{"announcement", kPlain}}), "<success>1</success>");
}

TEST_F(AgentHandlersTest, ADescriptionThatIsNotXmlLeavesAddAsACharacterPointerAndTheIdFree) {
    EXPECT_EQ(CallsOf([&] {
                  EXPECT_THROW(Request("add_announcement", {{"announcement", "Dinner"}}), const char*);
              }),
              Lines{"vq.AssertWrite(Announcement, 37)"});
    EXPECT_EQ(Saved(), "<announcements/>");
    EXPECT_EQ(Request("add_announcement", {{"announcement", kPlain}}), "<success>1</success>");
}

TEST_F(AgentHandlersTest, FailuresOfOtherKindsAreNotCaught) {
    const TestMessage message("add_announcement", [](const std::string&) -> std::string { throw 5; });
    EXPECT_THROW(Request(message), int);
    const TestMessage other("modify_announcement", [](const std::string&) -> std::string { throw 5; });
    EXPECT_THROW(Request(other), int);
    EXPECT_EQ(Saved(), "<announcements/>");
}

// remove_announcement

TEST_F(AgentHandlersTest, RemoveAnnouncementNeitherInvalidatesNorLogs) {
    Start(Stored(Silent("12")));
    EXPECT_EQ(CallsOf([&] {
                  EXPECT_EQ(Request("remove_announcement", {{"id", "12abc"}}), "<success/>");
              }),
              Lines{"ITimerManager.KillAllTimers()"});
    EXPECT_EQ(Saved(), "<announcements/>");
}

TEST_F(AgentHandlersTest, RemoveAnnouncementOfNoIdFailsWithoutALog) {
    Start(Stored(Silent("0") + Silent("12")));
    EXPECT_EQ(CallsOf([&] {
                  for (const char* const id : {"0", "", "abc", "13", "x12", "4294967308", "--12"})
                      EXPECT_EQ(Request("remove_announcement", {{"id", id}}),
                                "<fail>Invalid announcement id on remove</fail>")
                          << id;
                  EXPECT_EQ(Request("remove_announcement"), "<fail>Invalid announcement id on remove</fail>");
              }),
              Lines{});
    EXPECT_EQ(Saved(), Stored(SilentWritten("0") + SilentWritten("12")));
}

// modify_announcement

TEST_F(AgentHandlersTest, ModifyAnnouncementThatFailsAlthoughTheTemporaryWasBuiltIsLoggedAndAnswered) {
    Start(Stored(Silent("1")));
    int asked = 0;
    const TestMessage message("modify_announcement",
                              [&](const std::string&) { return ++asked == 1 ? Popup("1") : "no XML"; });
    EXPECT_EQ(
        CallsOf([&] { EXPECT_EQ(Request(message), "<fail>Unable to modify announcement</fail>"); }),
        (Lines{"ILogger.Log(3, Unable to modify announcement)", "IDeviceManager.InvalidateDeviceState(100)",
               "VqBaseDriver.LogMessage(3, Unable to modify announcement)",
               "ITimerManager.KillAllTimers()"}));
    EXPECT_EQ(Saved(), Stored(SilentWritten("1")));
}

TEST_F(AgentHandlersTest, ATextThrownWhileTheTemporaryIsBuiltIsLoggedAndAnswered) {
    Start(Stored(Silent("1")));
    EXPECT_EQ(CallsOf([&] {
                  EXPECT_EQ(Request(Throwing("modify_announcement", "announcement")),
                            "<fail>the host is out of announcement</fail>");
              }),
              Lines{"VqBaseDriver.LogMessage(3, the host is out of announcement)"});
    EXPECT_EQ(Saved(), Stored(SilentWritten("1")));
}

TEST_F(AgentHandlersTest, ATextThrownByTheModificationIsLoggedAndAnsweredAfterTheTemporaryIsGone) {
    Start(Stored(Silent("1")));
    int asked = 0;
    const TestMessage message("modify_announcement", [&](const std::string&) -> std::string {
        if (++asked == 2)
            throw std::string("gone");
        return Silent("1");
    });
    EXPECT_EQ(CallsOf([&] { EXPECT_EQ(Request(message), "<fail>gone</fail>"); }),
              (Lines{"ITimerManager.KillAllTimers()", "VqBaseDriver.LogMessage(3, gone)"}));
}

TEST_F(AgentHandlersTest, ADescriptionThatIsNotXmlLeavesModifyAsACharacterPointer) {
    Start(Stored(Silent("1")));
    EXPECT_EQ(
        CallsOf([&] {
            EXPECT_THROW(Request("modify_announcement", {{"announcement", "<a>"}, {"id", "1"}}), const char*);
        }),
        Lines{"vq.AssertWrite(Announcement, 37)"});
    EXPECT_EQ(Saved(), Stored(SilentWritten("1")));
}

TEST_F(AgentHandlersTest, ModifyTakesItsIdFromTheDescriptionOnly) {
    Start(Stored(Silent("1")));
    for (const char* const id : {"", "0", "2", "x"})
        EXPECT_EQ(CallsOf([&] {
                      EXPECT_EQ(Request("modify_announcement", {{"id", "1"}, {"announcement", Silent(id)}}),
                                "<fail>Invalid announcement id on modify</fail>");
                  }),
                  Lines{"ITimerManager.KillAllTimers()"})
            << id;
    EXPECT_EQ(Saved(), Stored(SilentWritten("1")));
}

// Rooms and navigators

TEST_F(AgentHandlersTest, ARoomThatCannotBeAddedIsLoggedAndAnswered) {
    Start(Stored(Silent("1")));
    EXPECT_EQ(CallsOf([&] {
                  EXPECT_EQ(Request(Throwing("add_room", "room")),
                            "<fail>Unable to add room to announcement</fail>");
              }),
              (Lines{"ILogger.Log(3, the host is out of room)", "ILogger.Log(3, the host is out of room)",
                     "VqBaseDriver.LogMessage(3, Unable to add room to announcement)"}));
}

TEST_F(AgentHandlersTest, ARoomThatCannotBeModifiedIsLoggedAndAnswered) {
    Start(Stored(Silent("1")));
    EXPECT_EQ(CallsOf([&] {
                  EXPECT_EQ(Request(Throwing("modify_room", "room")),
                            "<fail>Unable to modify room in announcement</fail>");
              }),
              (Lines{"ILogger.Log(3, the host is out of room)",
                     "VqBaseDriver.LogMessage(3, Unable to modify room in announcement)"}));
}

TEST_F(AgentHandlersTest, EachRoomAndNavigatorRequestHasItsOwnWordsForAnUnknownIdAndLogsNothing) {
    const std::map<std::string, std::string> words = {{"add_room", "add room"},
                                                      {"modify_room", "modify room"},
                                                      {"remove_room", "remove room"},
                                                      {"add_navigator", "add navigator"},
                                                      {"remove_navigator", "remove navigator"}};
    Start(Stored(Silent("0") + Silent("1")));
    for (const auto& [request, text] : words)
        EXPECT_EQ(CallsOf([&, &name = request, &what = text] {
                      for (const char* const id : {"", "0", "2", "one", "-2", "4294967297"})
                          EXPECT_EQ(Request(name, {{"id", id}}),
                                    "<fail>Invalid announcement id on " + what + "</fail>");
                  }),
                  Lines{})
            << request;
}

TEST_F(AgentHandlersTest, RemovingAndAddingNavigatorsSucceedsWhateverComesOfIt) {
    Start(Stored(Popup("1")));
    EXPECT_EQ(CallsOf([&] {
                  EXPECT_EQ(Request("add_navigator", {{"id", "1"}, {"navigator", "<n><id>5</id></n>"}}),
                            "<success/>");
                  EXPECT_EQ(Request("remove_navigator", {{"id", "1"}, {"navigator_id", "6"}}), "<success/>");
                  EXPECT_EQ(Request("remove_navigator", {{"id", "1"}}), "<success/>");
                  EXPECT_EQ(Request("remove_room", {{"id", "1"}, {"room_id", "6"}}), "<success/>");
                  EXPECT_EQ(Request("remove_room", {{"id", "1"}}), "<success/>");
              }),
              Lines{});
}

TEST_F(AgentHandlersTest, NoRoomOrNavigatorRequestCatchesWhatItsIdThrows) {
    Start(Stored(Silent("1")));
    for (const char* const request : {"add_room", "modify_room", "remove_room", "add_navigator",
                                      "remove_navigator", "get_announcement", "remove_announcement"})
        EXPECT_EQ(CallsOf([&] { EXPECT_THROW(Request(Throwing(request, "id")), std::string) << request; }),
                  Lines{});
}

TEST_F(AgentHandlersTest, WhatTheOwnParameterOfRemoveAndAddNavigatorThrowsIsNotCaught) {
    Start(Stored(Silent("1")));
    EXPECT_EQ(CallsOf([&] {
                  EXPECT_THROW(Request(Throwing("remove_room", "room_id")), std::string);
                  EXPECT_THROW(Request(Throwing("remove_navigator", "navigator_id")), std::string);
                  EXPECT_THROW(Request(Throwing("add_navigator", "navigator")), std::string);
              }),
              Lines{});
}

TEST_F(AgentHandlersTest, RoomsAndNavigatorsThatAreNotXmlLeaveAsCharacterPointersWithoutALog) {
    Start(Stored(Silent("1")));
    EXPECT_EQ(CallsOf([&] {
                  EXPECT_THROW(Request("add_room", {{"id", "1"}, {"room", "12"}}), const char*);
                  EXPECT_THROW(Request("modify_room", {{"id", "1"}, {"room", "12"}}), const char*);
                  EXPECT_THROW(Request("add_navigator", {{"id", "1"}, {"navigator", "5"}}), const char*);
              }),
              Lines{});
}

// Reading back

TEST_F(AgentHandlersTest, IdsAreReadAsSignedNumbersAndUsedAsUnsignedOnes) {
    Start(Stored(Silent("1") + Silent("4294967295")));
    EXPECT_EQ(Request("get_announcement", {{"id", "-1"}}), SilentWritten("4294967295"));
    EXPECT_EQ(Request("get_announcement", {{"id", "4294967295"}}), SilentWritten("4294967295"));
    EXPECT_EQ(Request("get_announcement", {{"id", " +1st"}}), SilentWritten("1"));
    EXPECT_EQ(Request("get_announcement", {{"id", "\t\n01"}}), SilentWritten("1"));
    // Beyond the range the nearest end counts, so that no id comes round to a small one.
    EXPECT_EQ(Request("get_announcement", {{"id", "4294967297"}}), SilentWritten("4294967295"));
    EXPECT_EQ(Request("get_announcement", {{"id", "99999999999999999999999"}}), SilentWritten("4294967295"));
    EXPECT_EQ(Request("get_announcement", {{"id", "-4294967295"}}), "<announcement/>");
    EXPECT_EQ(Request("get_announcement", {{"id", "0x1"}}), "<announcement/>");
    EXPECT_EQ(Request("get_announcement", {{"id", "+ 1"}}), "<announcement/>");
}

TEST_F(AgentHandlersTest, GetAnnouncementOfAnUnknownIdIsAnEmptyElement) {
    EXPECT_EQ(CallsOf([&] {
                  for (const char* const id : {"", "0", "1", "abc"})
                      EXPECT_EQ(Request("get_announcement", {{"id", id}}), "<announcement/>") << id;
              }),
              Lines{});
}

TEST_F(AgentHandlersTest, GetAnnouncementsAnswersWhatASaveGives) {
    EXPECT_EQ(Request("get_announcements"), "<announcements/>");
    Start(Stored(Silent("3") + Popup("2")));
    EXPECT_EQ(Request("get_announcements"), Saved());
}

} // namespace
