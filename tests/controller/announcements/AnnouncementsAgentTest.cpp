#include "controller/announcements/RawRequest.h"
#include "tests/controller/announcements/AnnouncementsFixture.h"

namespace controller {

namespace {

/// What goes to the agent in its own words, and what it does by itself.
using AnnouncementsAgentTest = AnnouncementsTest;

TEST_F(AnnouncementsAgentTest, RawRequestsKeepWhatTheHouseAdds) {
    EXPECT_EQ(
        Request("modify_announcement", {{"announcement", announcement_xml::ToXml(WithId(Made("Raw"), 1))}}),
        "<success/>");
    EXPECT_EQ(m_announcements.Find(1)->name, "Raw");
    EXPECT_EQ(m_announcements.Find(1)->house.tags, Texts{"kitchen"});
    EXPECT_EQ(OnDisk(1), Record(1));
    EXPECT_EQ(Request("modify_room", {{"id", "1"}, {"room", "<room><id>2</id><volume>9</volume></room>"}}),
              "<success/>");
    EXPECT_EQ(m_announcements.Find(1)->rooms[1].volume, 9);
    EXPECT_EQ(Request("add_announcement", {{"announcement", announcement_xml::ToXml(Made("New"))}}),
              "<success>2</success>");
    EXPECT_EQ(m_announcements.Find(2)->name, "New");
    EXPECT_EQ(Request("remove_announcement", {{"id", "1"}}), "<success/>");
    EXPECT_EQ(m_events.Take(),
              (Texts{"stored 1", "saved", "stored 1", "saved", "stored 2", "saved", "removed 1", "saved"}));
}

TEST_F(AnnouncementsAgentTest, RawRequestsLeaveWhatIsUrgentUrgent) {
    Announcement urgent = *m_announcements.Find(1);
    const std::string tag = urgent.tag;
    urgent.house.isUrgent = true;
    m_announcements.Replace(urgent, Note());
    EXPECT_NE(m_announcements.Find(1)->tag, tag);
    EXPECT_EQ(
        Request("modify_announcement", {{"announcement", announcement_xml::ToXml(WithId(Made("Raw"), 1))}}),
        "<success/>");
    EXPECT_EQ(m_announcements.Find(1)->name, "Raw");
    EXPECT_TRUE(m_announcements.Find(1)->house.isUrgent);
    EXPECT_NE(OnDisk(1).find("<urgent/>"), std::string::npos);
    EXPECT_EQ(m_events.Take(), (Texts{"stored 1", "saved", "stored 1", "saved"}));
}

TEST_F(AnnouncementsAgentTest, RawRequestsThatChangeNothingWriteNothing) {
    EXPECT_EQ(Request("get_announcements", {}), m_host.agent.State());
    EXPECT_EQ(Request("get_announcement", {{"id", "1"}}), announcement_xml::ToXml(*m_announcements.Find(1)));
    (void)Request("no_such_request", {});
    EXPECT_EQ(m_outcome.answer.kind, AgentAnswer::Kind::Unknown);
    (void)Request("modify_announcement", {{"announcement", "no xml"}});
    EXPECT_EQ(m_outcome.answer.kind, AgentAnswer::Kind::Failed);
    (void)Request("add_announcement", {{"announcement", "no xml"}});
    (void)Request("add_navigator", {{"id", "1"}, {"navigator", "no xml"}});
    (void)Request("add_room", {{"id", "77"}, {"room", "<room><id>5</id></room>"}});
    EXPECT_EQ(m_answers, 7);
    EXPECT_EQ(m_store.writes, 0);
    EXPECT_TRUE(m_events.Take().empty());
}

TEST_F(AnnouncementsAgentTest, WhatIsAcknowledgedIsThereAfterTheNextStartWhateverIdItsDescriptionCarries) {
    int added = 1;
    for (const char* carried : {"1", "9", " 2x", "-1", "0", ""})
        EXPECT_EQ(
            Request("add_announcement",
                    {{"announcement", std::string("<announcement><id>") + carried + "</id><name>Carried " +
                                          carried + "</name><rooms/><navigators/></announcement>"}}),
            "<success>" + std::to_string(++added) + "</success>");
    const Texts all{"1 One",        "2 Carried 1", "3 Carried 9", "4 Carried  2x",
                    "5 Carried -1", "6 Carried 0", "7 Carried "};
    EXPECT_EQ(Names(), all);
    EXPECT_EQ(OnDisk(2).find("<announcement><id>2</id>"), 0U);
    EXPECT_EQ(Request("get_announcement", {{"id", "3"}}).find("<announcement><id>3</id>"), 0U);

    m_host.agent.Stop();
    Announcements again({m_host.agent, m_store, m_host.scheduler, m_feed, m_host.log.log});
    again.Begin(m_store.Rows(), true);

    Texts names;
    for (const auto& one : *again.All())
        names.push_back(std::to_string(one->id) + " " + one->name);
    EXPECT_EQ(names, all);
}

TEST_F(AnnouncementsAgentTest, ADescriptionWithoutAnotherIdGoesToTheAgentAsItIs) {
    const std::string text =
        "<announcement ><name>A &amp; B</name><audio>x</audio><navigators/></announcement>";
    const Parameters parameters{{"announcement", text}, {"other", "<announcement><id>5</id></announcement>"}};
    EXPECT_EQ(raw_request::WithoutOwnId(parameters), parameters);
    EXPECT_EQ(raw_request::WithoutOwnId({{"announcement", "no xml"}}),
              (Parameters{{"announcement", "no xml"}}));
    EXPECT_EQ(
        raw_request::WithoutOwnId(
            {{"announcement",
              "<announcement><name>A</name><id>5</id><id>6</id><rooms> x </rooms></announcement>"}}),
        (Parameters{{"announcement",
                     "<announcement><name>A</name><id>0</id><id>6</id><rooms> x </rooms></announcement>"}}));
}

TEST_F(AnnouncementsAgentTest, WhatIsRemovedNoLongerWaitsAndNothingElseIsPlayedInItsPlace) {
    const std::uint32_t two = Add("Two");
    m_announcements.Play(1, Note());
    m_announcements.Play(two, Note());
    m_announcements.Remove(two, Note());
    const std::uint32_t next = Add("Next");
    EXPECT_EQ(next, 3U);
    m_announcements.Remove(next, Note());
    EXPECT_EQ(Request("add_announcement", {{"announcement", announcement_xml::ToXml(Made("Raw"))}}),
              "<success>4</success>");
    EXPECT_EQ(Names(), (Texts{"1 One", "4 Raw"}));
    m_host.scheduler.Advance(std::chrono::minutes(2));
    EXPECT_EQ(m_fired, (Ids{1}));
    m_announcements.Play(4, Note());
    m_host.scheduler.Advance(std::chrono::minutes(2));
    EXPECT_EQ(m_fired, (Ids{1, 4}));
}

TEST_F(AnnouncementsAgentTest, TheIdOfWhatPlaysIsNotGivenToAnother) {
    m_announcements.Play(1, Note());
    EXPECT_EQ(Request("remove_announcement", {{"id", "1"}}), "<success/>");
    EXPECT_EQ(Add("Next"), 2U);
    m_announcements.Play(2, Note());
    m_host.scheduler.Advance(std::chrono::minutes(2));
    EXPECT_EQ(m_fired, (Ids{1, 2}));
}

TEST_F(AnnouncementsAgentTest, AnUnknownIdDoesNotWaitForSomethingToBeGivenIt) {
    m_announcements.Play(1, Note());
    (void)m_events.Take();
    m_announcements.Command("execute_announcement", {{"id", "2"}}, Note());
    EXPECT_EQ(m_outcome.answer.kind, AgentAnswer::Kind::Unknown);
    EXPECT_EQ(m_outcome.answer.text, "there is no announcement 2");
    EXPECT_TRUE(m_events.Take().empty());
    EXPECT_EQ(Add("Two"), 2U);
    m_host.scheduler.Advance(std::chrono::minutes(2));
    EXPECT_EQ(m_fired, (Ids{1}));
    m_announcements.Command("execute_announcement", {{"id", "0"}}, Note());
    EXPECT_EQ(m_outcome.answer.kind, AgentAnswer::Kind::Done);
}

TEST_F(AnnouncementsAgentTest, AllThatWereRemovedArePassedOver) {
    for (int id = 2; id <= 300; ++id)
        (void)Add("Many");
    m_host.agent.Stop();
    Announcements again({m_host.agent, m_store, m_host.scheduler, m_feed, m_host.log.log});
    again.Begin(m_store.Rows(), true);
    for (std::uint32_t id = 1; id <= 300; ++id)
        again.Remove(id, Note());
    const auto added = [&] {
        again.Add(Made("New"), Note());
        return m_outcome.announcement->id;
    };
    EXPECT_EQ(added(), 301U);
    EXPECT_EQ(added(), 302U);
    EXPECT_EQ(again.All()->size(), 2U);
    EXPECT_EQ(announcement_xml::ToXml(*again.All()), m_host.agent.State());
    m_isMirrored = false; // by another one than the fixture's
}

TEST_F(AnnouncementsAgentTest, OnlyWhatIsThereIsPlayed) {
    m_announcements.Play(77, Note());
    EXPECT_EQ(m_outcome.answer.kind, AgentAnswer::Kind::Unknown);
    EXPECT_EQ(m_outcome.answer.text, "there is no announcement 77");
    EXPECT_TRUE(m_events.Take().empty());
    m_announcements.Play(1, Note());
    EXPECT_EQ(m_outcome.answer.kind, AgentAnswer::Kind::Done);
    EXPECT_EQ(m_events.Take(), Texts{"asked for 1"});
    m_announcements.Dismiss(Note());
    EXPECT_EQ(m_outcome.answer.kind, AgentAnswer::Kind::Done);
    EXPECT_EQ(m_answers, 3);
}

TEST_F(AnnouncementsAgentTest, TheTimeoutThatPlayingGivesIsWrittenAndIsNoChangeToPeople) {
    const std::string tag = m_announcements.Find(1)->tag;
    m_announcements.Play(1, Note());
    m_host.scheduler.Advance(std::chrono::seconds(1));
    m_feed.Publish(events::PopupShown{1, 11, "", "", std::chrono::seconds(0), true});
    EXPECT_EQ(m_store.writes, 0);
    m_host.scheduler.Advance(std::chrono::milliseconds(0));
    EXPECT_EQ(m_announcements.Find(1)->video.timeoutMs, 30000U);
    EXPECT_EQ(m_announcements.Find(1)->tag, tag);
    EXPECT_EQ(OnDisk(1), Record(1));
    EXPECT_EQ(m_store.writes, 1);
    m_feed.Publish(events::AnnouncementEnded{1});
    m_host.scheduler.Advance(std::chrono::milliseconds(0));
    EXPECT_EQ(m_store.writes, 1);
}

TEST_F(AnnouncementsAgentTest, TheNameOfWhatPlaysIsKnownWhenItHasBeenRemoved) {
    m_feed.Publish(events::AnnouncementStarted{1});
    m_announcements.Remove(1, Note());
    EXPECT_EQ(m_announcements.NameOf(1), "One");
    m_feed.Publish(events::AnnouncementStarted{2});
    EXPECT_EQ(m_announcements.NameOf(1), "");
}

TEST_F(AnnouncementsAgentTest, WhatDiffersFromTheAgentIsToldAsAMistakeAndMended) {
    const std::uint32_t two = Add("Two");
    const std::uint32_t three = Add("Three");
    (void)m_events.Take();
    const auto behindItsBack = [this] {
        (void)m_host.agent.Request("remove_room", {{"id", "1"}, {"room_id", "1"}});
        (void)m_host.agent.Request("remove_announcement", {{"id", "2"}});
        (void)m_host.agent.Request("add_announcement",
                                   {{"announcement", announcement_xml::ToXml(Made("New"))}});
        (void)m_host.agent.Request("add_announcement",
                                   {{"announcement", announcement_xml::ToXml(Made("New"))}});
    };
    behindItsBack();
    m_announcements.Check();
    EXPECT_EQ(std::count_if(m_host.log.lines.begin(), m_host.log.lines.end(),
                            [](const std::string& line) { return line.find("error: Announcement") == 0; }),
              4);
    EXPECT_EQ(announcement_xml::ToXml(*m_announcements.All()), m_host.agent.State());
    EXPECT_EQ(state_text::ForAgent(m_store.Rows()), m_host.agent.State());
    EXPECT_FALSE(m_announcements.Find(two));
    EXPECT_EQ(m_announcements.Find(three + 1)->name, "New");
    EXPECT_EQ(m_announcements.Find(three)->name, "Three");
    m_host.log.lines.clear();
    behindItsBack();
    m_announcements.StateInvalidated();
    m_host.scheduler.Advance(Announcements::kSoon);
    EXPECT_EQ(announcement_xml::ToXml(*m_announcements.All()), m_host.agent.State());
    behindItsBack();
    m_host.scheduler.Advance(Announcements::kRound);
    EXPECT_EQ(announcement_xml::ToXml(*m_announcements.All()), m_host.agent.State());
    m_host.log.lines.clear();
}

TEST_F(AnnouncementsAgentTest, WhatTheAgentHasFarBehindAKnownIdIsFoundWhenIdle) {
    for (int count = 0; count < 300; ++count)
        (void)m_host.agent.Request("add_announcement",
                                   {{"announcement", announcement_xml::ToXml(Made("New"))}});
    for (int id = 2; id < 301; ++id)
        (void)m_host.agent.Request("remove_announcement", {{"id", std::to_string(id)}});
    m_host.scheduler.Advance(Announcements::kRound);
    EXPECT_EQ(Names(), (Texts{"1 One", "301 New"}));
    EXPECT_EQ(announcement_xml::ToXml(*m_announcements.All()), m_host.agent.State());
    m_host.log.lines.clear();
}

TEST_F(AnnouncementsAgentTest, ARawRequestForAllIsAnsweredFromTheRecords) {
    m_announcements.Request("get_announcements", {}, Note());
    EXPECT_EQ(m_outcome.answer.kind, AgentAnswer::Kind::Reply);
    EXPECT_EQ(m_outcome.answer.text, m_host.agent.State());
    EXPECT_EQ(m_outcome.answer.text, m_host.agent.Request("get_announcements", {}).text);
    (void)m_host.agent.Request("remove_announcement", {{"id", "1"}});
    m_announcements.Request("get_announcements", {}, Note());
    EXPECT_NE(m_outcome.answer.text, m_host.agent.State());
    m_announcements.Check();
    m_host.log.lines.clear();
}

TEST_F(AnnouncementsAgentTest, WithoutAnAgentWhatIsThereCanStillBeRead) {
    m_host.agent.Stop();
    EXPECT_EQ(Names(), Texts{"1 One"});
    m_announcements.Remove(1, Note());
    EXPECT_EQ(m_outcome.answer.kind, AgentAnswer::Kind::NoAgent);
    m_announcements.Request("get_announcements", {}, Note());
    EXPECT_EQ(m_outcome.answer.kind, AgentAnswer::Kind::NoAgent);
    m_announcements.Check();
    EXPECT_EQ(Names(), Texts{"1 One"});
    EXPECT_EQ(m_store.writes, 0);
    m_host.agent.Start(state_text::ForAgent(m_store.Rows()));
}

} // namespace

} // namespace controller
