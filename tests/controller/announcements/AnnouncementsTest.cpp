#include "tests/controller/announcements/AnnouncementsFixture.h"

namespace controller {

namespace {

TEST_F(AnnouncementsTest, WhatIsThereIsFoundAndListed) {
    ASSERT_TRUE(m_announcements.Find(1));
    EXPECT_EQ(m_announcements.Find(1)->name, "One");
    EXPECT_EQ(m_announcements.Find(1)->house.tags, Texts{"kitchen"});
    EXPECT_FALSE(m_announcements.Find(2));
    EXPECT_FALSE(m_announcements.Find(0));
    EXPECT_EQ(Names(), Texts{"1 One"});
    EXPECT_EQ(m_announcements.NameOf(1), "One");
    EXPECT_EQ(m_announcements.NameOf(2), "");
}

TEST_F(AnnouncementsTest, WhatIsAddedIsToldAndWrittenUnderTheIdThatTheAgentChose) {
    Announcement wanted = Made("Two");
    wanted.rooms = {{2, 40}, {1, -1}};
    wanted.house.tags = {"hall"};
    m_announcements.Add(wanted, Note());
    EXPECT_EQ(m_answers, 1);
    EXPECT_EQ(m_outcome.answer.tag, "success");
    EXPECT_EQ(m_outcome.notSaved, "");
    ASSERT_TRUE(m_outcome.announcement);
    EXPECT_EQ(m_outcome.announcement->id, 2U);
    EXPECT_EQ(m_outcome.announcement->rooms.front().id, 1U);
    EXPECT_EQ(m_outcome.announcement, m_announcements.Find(2));
    EXPECT_EQ(m_store.TakeWritten(), std::vector<std::int64_t>{2});
    EXPECT_EQ(OnDisk(2), Record(2));
    EXPECT_NE(OnDisk(2).find("<house><tag>hall</tag></house>"), std::string::npos);
    EXPECT_EQ(m_events.Take(), (Texts{"stored 2", "saved"}));
    EXPECT_EQ(Names(), (Texts{"1 One", "2 Two"}));
}

TEST_F(AnnouncementsTest, AListThatSomebodyHasDoesNotChange) {
    const auto before = m_announcements.All();
    const auto one = m_announcements.Find(1);
    m_announcements.Replace(WithId(Made("Other"), 1), Note());
    (void)Add("Two");
    EXPECT_EQ(before->size(), 1U);
    EXPECT_EQ(before->front(), one);
    EXPECT_EQ(one->name, "One");
    EXPECT_EQ(Names(), (Texts{"1 Other", "2 Two"}));
    EXPECT_EQ(m_announcements.All(), m_announcements.All());
}

TEST_F(AnnouncementsTest, WhatIsReplacedIsAsGivenAndHasAnotherTag) {
    const std::string tag = m_announcements.Find(1)->tag;
    m_announcements.Replace(WithId(Made("Other"), 1), Note());
    EXPECT_EQ(m_outcome.announcement->name, "Other");
    EXPECT_TRUE(m_outcome.announcement->house.tags.empty());
    EXPECT_NE(m_outcome.announcement->tag, tag);
    EXPECT_EQ(OnDisk(1), Record(1));
    EXPECT_EQ(m_events.Take(), (Texts{"stored 1", "saved"}));
    Announcement again = WithId(Made("One"), 1);
    again.house.tags = {"kitchen"};
    m_announcements.Replace(again, Note());
    EXPECT_EQ(m_outcome.announcement->tag, tag);
}

TEST_F(AnnouncementsTest, WhatStaysAsItIsIsNotWrittenAgain) {
    Announcement same = *m_announcements.Find(1);
    m_announcements.Replace(same, Note());
    EXPECT_EQ(m_answers, 1);
    EXPECT_EQ(m_outcome.answer.tag, "success");
    EXPECT_EQ(m_store.writes, 0);
    EXPECT_EQ(m_events.Take(), Texts{"stored 1"});
}

TEST_F(AnnouncementsTest, WhatIsRemovedIsGone) {
    m_announcements.Remove(1, Note());
    EXPECT_EQ(m_outcome.answer.tag, "success");
    EXPECT_FALSE(m_outcome.announcement);
    EXPECT_EQ(OnDisk(1), "");
    EXPECT_EQ(m_events.Take(), (Texts{"removed 1", "saved"}));
    m_announcements.Remove(1, Note());
    EXPECT_EQ(m_outcome.answer.value, "Invalid announcement id on remove");
    EXPECT_TRUE(m_events.Take().empty());
    EXPECT_EQ(m_store.TakeWritten(), std::vector<std::int64_t>{1});
    EXPECT_EQ(m_answers, 2);
}

TEST_F(AnnouncementsTest, RoomsAndNavigatorsArePutAndRemoved) {
    m_announcements.PutRoom(1, {5, 70}, Note());
    m_announcements.PutRoom(1, {1, 20}, Note());
    m_announcements.RemoveRoom(1, 2, Note());
    m_announcements.PutNavigator(1, {12, 2, false}, Note());
    m_announcements.PutNavigator(1, {11, 3, false}, Note());
    const auto one = m_announcements.Find(1);
    ASSERT_EQ(one->rooms.size(), 2U);
    EXPECT_EQ(one->rooms[0].volume, 20);
    EXPECT_EQ(one->rooms[1].id, 5U);
    ASSERT_EQ(one->navigators.size(), 2U);
    EXPECT_EQ(one->navigators[0].room, 3U);
    EXPECT_FALSE(one->navigators[0].isOnscreen);
    EXPECT_EQ(m_answers, 5);
    m_announcements.RemoveNavigator(1, 11, Note());
    EXPECT_EQ(m_announcements.Find(1)->navigators.size(), 1U);
    EXPECT_EQ(m_announcements.Find(1)->house.tags, Texts{"kitchen"});
    EXPECT_EQ(OnDisk(1), Record(1));
    EXPECT_EQ(m_store.TakeWritten().size(), 6U);
    EXPECT_EQ(m_events.Take().size(), 12U);
    m_announcements.PutRoom(7, {5, 70}, Note());
    EXPECT_EQ(m_outcome.answer.tag, "fail");
}

TEST_F(AnnouncementsTest, AWriteThatFailsIsToldOnceWhicheverItIs) {
    for (int failing = 1; failing <= 4; ++failing) {
        m_store.failing = failing;
        m_store.writes = 0;
        m_answers = 0;
        Texts told;
        const auto note = [&](const Announcements::Outcome& outcome) {
            told.push_back(outcome.notSaved);
        };
        const std::string name = std::to_string(failing);
        m_announcements.Add(Made("Two " + name), note);
        m_announcements.Replace(WithId(Made("One " + name), 1), note);
        m_announcements.PutRoom(1, {9, 9}, note);
        m_announcements.Remove(m_announcements.All()->back()->id, note);
        Texts expected(4);
        expected[static_cast<std::size_t>(failing - 1)] = "full";
        EXPECT_EQ(told, expected);
        m_announcements.Save([&](const std::string& error) { told.push_back(error); });
        EXPECT_EQ(told.size(), 5U);
        m_store.listener("");
        (void)m_events.Take();
    }
    m_store.failing = 0;
}

TEST_F(AnnouncementsTest, WhatHasNotReachedTheDiskIsWrittenAgainWhenItIsAskedForAgain) {
    m_store.failing = 1;
    Announcement other = WithId(Made("Other"), 1);
    m_announcements.Replace(other, Note());
    EXPECT_EQ(m_outcome.notSaved, "full");
    EXPECT_EQ(m_events.Take(), (Texts{"stored 1", "not saved: full"}));
    EXPECT_EQ(m_announcements.Find(1)->name, "Other");
    m_announcements.Replace(other, Note());
    EXPECT_EQ(m_store.writes, 2);
    EXPECT_EQ(m_outcome.notSaved, "");
    m_store.failed.clear();
    m_store.failing = 0;
}

TEST_F(AnnouncementsTest, TheReplyComesWhenTheChangeStandsOnTheDiskAndNotBefore) {
    m_store.isAnswering = false;
    m_announcements.Replace(WithId(Made("Other"), 1), Note());
    m_announcements.PutRoom(1, {9, 9}, Note());
    EXPECT_EQ(m_answers, 0);
    EXPECT_EQ(m_announcements.Find(1)->rooms.size(), 3U);
    m_store.Answer();
    EXPECT_EQ(m_answers, 2);
}

} // namespace

} // namespace controller
