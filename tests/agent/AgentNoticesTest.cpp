#include "tests/support/AgentTest.h"

namespace {

const std::string kNavigators =
    "<navigators><navigator><id>5</id><room_id>0</room_id><onscreen>false</onscreen>"
    "</navigator></navigators>";
const std::string kRooms = "<rooms><room><id>12</id><volume>40</volume></room></rooms>";

/// An announcement as the agent writes it, with these targets.
std::string With(const std::string& rooms, const std::string& navigators) {
    const std::string bare = SilentWritten("1");
    return Stored(bare.substr(0, bare.find("<rooms/>")) + rooms + navigators + "</announcement>");
}

/// A host that saves from inside each notice of a change.
class AgentNoticesTest : public AgentTest {
protected:
    AgentNoticesTest() {
        for (const char* const notice : {"VqBaseDriver.DmInvalidateState", "IDeviceManager.InvalidateDevice"})
            m_host.log.WhenCalled(notice, [this] { m_savedInNotices.push_back(Saved()); });
        Start(With(kRooms, kNavigators));
    }

    /// What the host saves in the notices that this request brings about.
    Lines SavedBy(const std::string& request, Parameters parameters) {
        m_savedInNotices.clear();
        parameters.emplace("id", "1");
        EXPECT_EQ(Request(request, parameters), "<success/>");
        return m_savedInNotices;
    }

    Lines m_savedInNotices;
};

TEST_F(AgentNoticesTest, AnAddedAnnouncementIsSavedFromInsideTheNotice) {
    Start("");
    EXPECT_EQ(Request("add_announcement", {{"announcement", Silent("0")}}), "<success>1</success>");
    const std::string named = "<name>0</name>";
    std::string added = SilentWritten("1");
    added.replace(added.find("<name>1</name>"), named.size(), named);
    EXPECT_EQ(m_savedInNotices, Lines{Stored(added)});
}

TEST_F(AgentNoticesTest, TheFormerTargetsOfAFailedModificationAreBackInsideTheNotice) {
    int asked = 0;
    const TestMessage message("modify_announcement",
                              [&](const std::string&) { return ++asked == 1 ? Silent("1") : "no XML"; });
    EXPECT_EQ(Request(message), "<fail>Unable to modify announcement</fail>");
    EXPECT_EQ(m_savedInNotices, Lines{With(kRooms, kNavigators)});
}

TEST_F(AgentNoticesTest, AnAddedRoomIsSavedFromInsideTheNotice) {
    const std::string room = "<room><id>11</id><volume>7</volume></room>";
    const std::string rooms = "<rooms>" + room + kRooms.substr(std::string("<rooms>").size());
    EXPECT_EQ(SavedBy("add_room", {{"room", room}}), Lines{With(rooms, kNavigators)});
}

TEST_F(AgentNoticesTest, ARemovedRoomIsGoneInsideTheNotice) {
    EXPECT_EQ(SavedBy("remove_room", {{"room_id", "12"}}), Lines{With("<rooms/>", kNavigators)});
}

TEST_F(AgentNoticesTest, AnAddedNavigatorIsSavedFromInsideTheNotice) {
    const std::string navigator =
        "<navigator><id>4</id><room_id>0</room_id><onscreen>true</onscreen></navigator>";
    const std::string navigators =
        "<navigators>" + navigator + kNavigators.substr(std::string("<navigators>").size());
    EXPECT_EQ(SavedBy("add_navigator", {{"navigator", navigator}}), Lines{With(kRooms, navigators)});
}

TEST_F(AgentNoticesTest, ARemovedNavigatorIsGoneInsideTheNotice) {
    EXPECT_EQ(SavedBy("remove_navigator", {{"navigator_id", "5"}}), Lines{With(kRooms, "<navigators/>")});
}

TEST_F(AgentNoticesTest, WhatIsChangedStaysWhenTheNoticeThrows) {
    m_host.log.WhenCalled("VqBaseDriver.DmInvalidateState", [] { throw std::string("no disk"); });
    m_host.log.WhenCalled("IDeviceManager.InvalidateDevice", [] { throw std::string("no disk"); });
    EXPECT_EQ(Request("add_room", {{"id", "1"}, {"room", "<room><id>12</id></room>"}}), "<success/>");
    for (const Parameters& change : {Parameters{{"room_id", "12"}}, Parameters{{"navigator_id", "5"}}}) {
        Parameters parameters = change;
        parameters.emplace("id", "1");
        const std::string request = change.count("room_id") > 0 ? "remove_room" : "remove_navigator";
        EXPECT_THROW(Request(request, parameters), std::string) << request;
    }
    EXPECT_THROW(Request("add_announcement", {{"announcement", Silent("0")}}), std::string);
    EXPECT_EQ(m_savedInNotices.back(), Saved());
    EXPECT_EQ(m_agent->GetNextAnnouncementID(), 3U);
}

} // namespace
