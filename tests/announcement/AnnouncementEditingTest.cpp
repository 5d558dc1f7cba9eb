#include "tests/support/AnnouncementTest.h"

namespace {

const std::string kOld = "<announcement><id>1</id><name>Old</name><audio><file>chime</file><delay>500</"
                         "delay></audio><video><file>o.png"
                         "</file><text>Old</text><delay>1</delay><timeout>2</timeout><displayID>9</"
                         "displayID><variableID>4</variableID>"
                         "<variableName>Menu</variableName><OKButton>false</OKButton></"
                         "video><rooms><room><id>12</id><volume>40</volume>"
                         "</room></rooms><navigators><navigator><id>5</id><room_id>12</"
                         "room_id><onscreen>true</onscreen></navigator>"
                         "</navigators></announcement>";

const Lines kInvalidated{"IDeviceManager.InvalidateDeviceState(100)"};

class AnnouncementEditingTest : public AnnouncementTest {
protected:
    std::string Targets() const {
        const std::string written = Written(m_announcement);
        return written.substr(written.find("<rooms"));
    }

    Pointer m_announcement = FromXml(kOld);
};

const std::string kOldTargets = kOld.substr(kOld.find("<rooms>"));

std::string Room(const std::string& id, const std::string& volume) {
    return "<room><id>" + id + "</id><volume>" + volume + "</volume></room>";
}

// ModifyAnnouncement

TEST_F(AnnouncementEditingTest, ModifyAnnouncementReplacesEverythingAndInvalidatesNothing) {
    const std::string replacement =
        "<announcement><id>8</id><name>New</name><audio><file>gong</file><delay>1</delay></"
        "audio><video><file>n.png"
        "</file><text>New</text><delay>3</delay><timeout>4</timeout><displayID>0</displayID><variableID>0"
        "</variableID><variableName/><OKButton>true</OKButton></video><rooms><room><id>13</id><volume>1</"
        "volume>"
        "</room></rooms><navigators><navigator><id>6</id><room_id>0</room_id><onscreen>false</onscreen></"
        "navigator>"
        "</navigators></announcement>";
    EXPECT_EQ(CallsOf([&] { EXPECT_EQ(m_announcement->ModifyAnnouncement(Described(replacement)), 0); }),
              Lines{});
    EXPECT_EQ(Written(m_announcement), replacement);
    EXPECT_EQ(m_announcement->GetID(), 8U);
}

TEST_F(AnnouncementEditingTest, ModifyAnnouncementWithoutAudioAndVideoKeepsThemButNotTheBinding) {
    EXPECT_EQ(m_announcement->ModifyAnnouncement(Described("<a><id>1</id><rooms/><navigators/></a>")), 0);
    EXPECT_EQ(
        Written(m_announcement),
        "<announcement><id>1</id><name/><audio><file>chime</file><delay>500</delay></audio><video><file>o.png"
        "</file><text>Old</text><delay>1</delay><timeout>2</timeout><displayID>0</displayID><variableID>0"
        "</variableID><variableName/><OKButton>true</OKButton></video><rooms/><navigators/></announcement>");
}

TEST_F(AnnouncementEditingTest, ModifyAnnouncementWithoutNavigatorsEndsWithNoneAndStillSucceeds) {
    EXPECT_EQ(
        CallsOf([&] { EXPECT_EQ(m_announcement->ModifyAnnouncement(Described("<a><rooms/></a>")), 0); }),
        (Lines{"vq.AssertWrite(Announcement, 473)",
               "ILogger.Log(3, Announcement is missing navigators tag)"}));
    EXPECT_EQ(Targets(), "<rooms/><navigators/></announcement>");
}

TEST_F(AnnouncementEditingTest, ModifyAnnouncementWithoutXmlLogsKeepsEverythingAndInvalidates) {
    EXPECT_EQ(CallsOf([&] { EXPECT_EQ(m_announcement->ModifyAnnouncement(Described("Dinner")), -1); }),
              (Lines{"ILogger.Log(3, Unable to modify announcement)", kInvalidated[0]}));
    EXPECT_EQ(Written(m_announcement), kOld);
}

TEST_F(AnnouncementEditingTest, AFailedModificationIsLoggedBeforeTheFormerTargetsAreBack) {
    m_host.hasDeviceManager = false;
    const auto modify = [&] {
        (void)m_announcement->ModifyAnnouncement(Described("Dinner"));
    };
    m_host.log.ThrowAtCall(2); // after the logger was looked up
    EXPECT_THROW(modify(), std::string);
    EXPECT_EQ(Targets(), "<rooms/><navigators/></announcement>");
}

TEST_F(AnnouncementEditingTest, InvalidatingNamesTheDeviceIdOfThatMoment) {
    m_host.driverHost.helper.deviceId = 4000000000U;
    EXPECT_EQ(CallsOf([&] { m_announcement->RemoveRoom(With("room_id", "12")); }),
              Lines{"IDeviceManager.InvalidateDeviceState(4000000000)"});
}

TEST_F(AnnouncementEditingTest, ATextThrownByTheMessageLeavesModifyAnnouncement) {
    EXPECT_THROW((void)m_announcement->ModifyAnnouncement(Throwing("gone")), std::string);
    EXPECT_EQ(Targets(), "<rooms/><navigators/></announcement>"); // what was set aside is not put back
}

// AddRoom

TEST_F(AnnouncementEditingTest, AddRoomAddsANewRoomAndInvalidates) {
    EXPECT_EQ(CallsOf([&] { EXPECT_EQ(m_announcement->AddRoom(With("room", Room("7", "30"))), 0); }),
              kInvalidated);
    EXPECT_EQ(Targets(), "<rooms>" + Room("7", "30") + kOldTargets.substr(std::string("<rooms>").size()));
}

TEST_F(AnnouncementEditingTest, AddRoomTwiceRewritesTheRoomAndInvalidatesOnlyTheFirstTime) {
    EXPECT_EQ(CallsOf([&] { EXPECT_EQ(m_announcement->AddRoom(With("room", Room("7", "30"))), 0); }),
              kInvalidated);
    EXPECT_EQ(CallsOf([&] { EXPECT_EQ(m_announcement->AddRoom(With("room", Room("7", "31"))), 0); }),
              Lines{});
    EXPECT_EQ(Targets(), "<rooms>" + Room("7", "31") + kOldTargets.substr(std::string("<rooms>").size()));
}

TEST_F(AnnouncementEditingTest, AddRoomMakesTwoRoomsOfAMessageThatNamesANewOne) {
    m_host.log.ShowLookUps();
    const std::string lookUp = "IInstanceManager.QueryInterface({731E9F66-23F5-4100-AA7B-C3F189BAABFD})";
    EXPECT_EQ(CallsOf([&] { m_announcement->AddRoom(With("room", Room("7", "30"))); }),
              Join({{lookUp, lookUp}, kInvalidated}));
    EXPECT_EQ(CallsOf([&] { m_announcement->AddRoom(With("room", Room("7", "30"))); }), Lines{lookUp});
}

TEST_F(AnnouncementEditingTest, ATextThrownInAddRoomIsLoggedByBothAttemptsAndGivesMinusOne) {
    EXPECT_EQ(CallsOf([&] { EXPECT_EQ(m_announcement->AddRoom(Throwing("gone")), -1); }),
              (Lines{"ILogger.Log(3, gone)", "ILogger.Log(3, gone)"}));
    EXPECT_EQ(Written(m_announcement), kOld);
}

TEST_F(AnnouncementEditingTest, AddRoomOfAMessageThatThenNamesAKnownRoomDropsTheNewOne) {
    int asked = 0;
    const TestMessage message(
        "add_room", [&](const std::string&) { return ++asked == 1 ? Room("7", "1") : Room("12", "2"); });
    EXPECT_EQ(CallsOf([&] { EXPECT_EQ(m_announcement->AddRoom(message), 0); }), Lines{});
    EXPECT_EQ(Written(m_announcement), kOld);
}

TEST_F(AnnouncementEditingTest, ARoomThatIsNotXmlLeavesAddRoomAndModifyRoomAsACharacterPointer) {
    EXPECT_EQ(CallsOf([&] {
                  EXPECT_THROW((void)m_announcement->AddRoom(With("room", "7")), const char*);
                  EXPECT_THROW((void)m_announcement->ModifyRoom(With("room", "7")), const char*);
              }),
              Lines{});
    EXPECT_EQ(Written(m_announcement), kOld);
}

// ModifyRoom

TEST_F(AnnouncementEditingTest, ModifyRoomRewritesTheNamedRoomAndInvalidatesNothing) {
    EXPECT_EQ(CallsOf([&] { EXPECT_EQ(m_announcement->ModifyRoom(With("room", Room("12", "-1"))), 0); }),
              Lines{});
    EXPECT_EQ(Targets(), "<rooms>" + Room("12", "-1") + kOldTargets.substr(kOldTargets.find("</rooms>")));
}

TEST_F(AnnouncementEditingTest, ModifyRoomOfARoomThatIsNotThereFailsAndAddsNothing) {
    EXPECT_EQ(CallsOf([&] { EXPECT_EQ(m_announcement->ModifyRoom(With("room", Room("7", "30"))), -1); }),
              Lines{});
    EXPECT_EQ(Written(m_announcement), kOld);
}

TEST_F(AnnouncementEditingTest, ATextThrownInModifyRoomIsLoggedAndGivesMinusOne) {
    EXPECT_EQ(CallsOf([&] { EXPECT_EQ(m_announcement->ModifyRoom(Throwing("gone")), -1); }),
              Lines{"ILogger.Log(3, gone)"});
    EXPECT_EQ(Written(m_announcement), kOld);
}

TEST_F(AnnouncementEditingTest, ModifyRoomIgnoresThatTheRoomCouldNotBeRewritten) {
    int asked = 0;
    const TestMessage message("modify_room",
                              [&](const std::string&) { return ++asked == 1 ? Room("12", "1") : "no XML"; });
    EXPECT_EQ(CallsOf([&] { EXPECT_EQ(m_announcement->ModifyRoom(message), 0); }), Lines{});
    EXPECT_EQ(Written(m_announcement), kOld);
}

TEST_F(AnnouncementEditingTest, ARoomWhoseIdIsRewrittenKeepsItsKey) {
    int asked = 0;
    const TestMessage message(
        "modify_room", [&](const std::string&) { return ++asked == 1 ? Room("12", "1") : Room("99", "2"); });
    EXPECT_EQ(m_announcement->ModifyRoom(message), 0);
    EXPECT_EQ(Targets(), "<rooms>" + Room("99", "2") + kOldTargets.substr(kOldTargets.find("</rooms>")));
    EXPECT_TRUE(m_announcement->IsRoomInCurrentAnnouncement(12));
    EXPECT_FALSE(m_announcement->IsRoomInCurrentAnnouncement(99));
}

// RemoveRoom

TEST_F(AnnouncementEditingTest, RemoveRoomRemovesARoomAndInvalidates) {
    EXPECT_EQ(CallsOf([&] { m_announcement->RemoveRoom(With("room_id", "12")); }), kInvalidated);
    EXPECT_EQ(Targets(), "<rooms/>" + kOldTargets.substr(kOldTargets.find("<navigators>")));
}

TEST_F(AnnouncementEditingTest, RemoveRoomReadsTheLeadingDigits) {
    EXPECT_EQ(CallsOf([&] { m_announcement->RemoveRoom(With("room_id", " +12th")); }), kInvalidated);
}

TEST_F(AnnouncementEditingTest, RemoveRoomWithLettersOnlyRemovesRoomZeroIfThereIsOne) {
    EXPECT_EQ(CallsOf([&] { m_announcement->RemoveRoom(With("room_id", "kitchen")); }), Lines{});
    m_announcement->AddRoom(With("room", Room("0", "5")));
    EXPECT_EQ(CallsOf([&] { m_announcement->RemoveRoom(With("room_id", "kitchen")); }), kInvalidated);
    EXPECT_EQ(Written(m_announcement), kOld);
}

TEST_F(AnnouncementEditingTest, RemoveRoomWithAnEmptyTextDoesNothingEvenToRoomZero) {
    m_announcement->AddRoom(With("room", Room("0", "5")));
    EXPECT_EQ(CallsOf([&] { m_announcement->RemoveRoom(With("room_id", "")); }), Lines{});
    EXPECT_EQ(CallsOf([&] { m_announcement->RemoveRoom(TestMessage("remove_room")); }), Lines{});
    EXPECT_TRUE(m_announcement->IsRoomInCurrentAnnouncement(0));
}

TEST_F(AnnouncementEditingTest, RemoveRoomOfAnUnknownIdChangesNothing) {
    for (const char* const id : {"13", "-1", "4294967308", "1 2"})
        EXPECT_EQ(CallsOf([&] { m_announcement->RemoveRoom(With("room_id", id)); }), Lines{}) << id;
    EXPECT_EQ(Written(m_announcement), kOld);
}

TEST_F(AnnouncementEditingTest, RemoveRoomTakesANegativeIdModuloTheWord) {
    m_announcement->AddRoom(With("room", Room("4294967295", "5")));
    EXPECT_EQ(CallsOf([&] { m_announcement->RemoveRoom(With("room_id", "-1")); }), kInvalidated);
    EXPECT_EQ(Written(m_announcement), kOld);
}

// AddNavigator, RemoveNavigator

TEST_F(AnnouncementEditingTest, AddNavigatorAddsANewNavigatorAndInvalidates) {
    EXPECT_EQ(CallsOf([&] {
                  m_announcement->AddNavigator(With("navigator", "<navigator><id>6</id></navigator>"));
              }),
              kInvalidated);
    EXPECT_NE(
        Targets().find("<navigator><id>6</id><room_id>0</room_id><onscreen>false</onscreen></navigator>"),
        std::string::npos);
}

TEST_F(AnnouncementEditingTest, AddNavigatorWithAKnownIdChangesNothing) {
    EXPECT_EQ(CallsOf([&] {
                  m_announcement->AddNavigator(
                      With("navigator", "<navigator><id>5</id><room_id>1</room_id><onscreen>false</onscreen>"
                                        "</navigator>"));
              }),
              Lines{});
    EXPECT_EQ(Written(m_announcement), kOld);
}

TEST_F(AnnouncementEditingTest, AddNavigatorCatchesNothing) {
    EXPECT_EQ(CallsOf([&] {
                  EXPECT_THROW(m_announcement->AddNavigator(With("navigator", "5")), const char*);
                  EXPECT_THROW(m_announcement->AddNavigator(Throwing("gone")), std::string);
              }),
              Lines{});
    EXPECT_EQ(Written(m_announcement), kOld);
}

TEST_F(AnnouncementEditingTest, RemoveNavigatorRemovesANavigatorAndInvalidates) {
    EXPECT_EQ(CallsOf([&] { m_announcement->RemoveNavigator(With("navigator_id", "5")); }), kInvalidated);
    EXPECT_EQ(Targets(),
              kOldTargets.substr(0, kOldTargets.find("<navigators>")) + "<navigators/></announcement>");
}

TEST_F(AnnouncementEditingTest, RemoveNavigatorOfAnEmptyOrUnknownIdChangesNothing) {
    for (const char* const id : {"", "6", "five", "-5"})
        EXPECT_EQ(CallsOf([&] { m_announcement->RemoveNavigator(With("navigator_id", id)); }), Lines{}) << id;
    EXPECT_EQ(Written(m_announcement), kOld);
}

TEST_F(AnnouncementEditingTest, WithoutADeviceManagerEditsAreMadeAndNothingIsInvalidated) {
    m_host.hasDeviceManager = false;
    m_announcement = FromXml(kOld);
    EXPECT_EQ(CallsOf([&] {
                  m_announcement->AddRoom(With("room", Room("7", "30")));
                  m_announcement->RemoveRoom(With("room_id", "7"));
                  m_announcement->RemoveNavigator(With("navigator_id", "5"));
              }),
              Lines{});
    EXPECT_EQ(Targets(),
              kOldTargets.substr(0, kOldTargets.find("<navigators>")) + "<navigators/></announcement>");
}

TEST_F(AnnouncementEditingTest, WithoutALoggerTheLineIsDropped) {
    m_host.hasLogger = false;
    EXPECT_EQ(CallsOf([&] { EXPECT_EQ(m_announcement->ModifyRoom(Throwing("gone")), -1); }), Lines{});
}

} // namespace
