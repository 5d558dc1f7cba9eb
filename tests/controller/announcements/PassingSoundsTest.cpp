#include "controller/announcements/PassingSounds.h"

#include "tests/controller/announcements/AnnouncementsFixture.h"

#include <memory>

namespace controller {

namespace {

using std::chrono::minutes;
using std::chrono::seconds;

class PassingSoundsTest : public AnnouncementsTest {
protected:
    PassingSoundsTest() { Open({}); }

    void Open(const std::vector<std::string>& left) {
        m_passing = std::make_unique<PassingSounds>(
            left,
            PassingSounds::Parts{m_announcements, m_feed, m_host.scheduler, [this](const std::string& file) {
                                     m_removed.push_back(file);
                                 }});
    }

    /// One that plays the sound, and is forgotten by who asked for it.
    std::uint32_t Say(const std::string& sound) {
        Announcement announcement = Made("Now");
        announcement.audio.file = sound;
        return m_announcements.AddPassing(announcement).announcement->id;
    }

    void Forget(std::uint32_t id) { m_announcements.Remove(id, Note()); }

    Texts m_removed;
    std::unique_ptr<PassingSounds> m_passing;
};

TEST_F(PassingSoundsTest, OneThatWasHeardGoesWhenThatIsOver) {
    m_passing->Add("recording.wav");
    m_passing->Add("other.wav");
    const std::uint32_t id = Say("recording");
    m_feed.Publish(events::AnnouncementStarted{id});
    m_feed.Publish(events::AnnouncementEnded{id});
    EXPECT_TRUE(m_removed.empty());
    Forget(id);
    m_host.scheduler.Advance(seconds(1));
    EXPECT_EQ(m_removed, Texts{"recording.wav"});
}

TEST_F(PassingSoundsTest, OneThatNobodyComesToPlayGoesAfterSomeMinutes) {
    m_passing->Add("recording.wav");
    m_host.scheduler.Advance(minutes(9));
    EXPECT_TRUE(m_removed.empty());
    m_host.scheduler.Advance(minutes(1));
    EXPECT_EQ(m_removed, Texts{"recording.wav"});
}

TEST_F(PassingSoundsTest, OneThatStillWaitsToBePlayedStays) {
    m_passing->Add("recording.wav");
    const std::uint32_t id = Say("recording");
    m_host.scheduler.Advance(minutes(25));
    EXPECT_TRUE(m_removed.empty());
    Forget(id);
    m_host.scheduler.Advance(minutes(10));
    EXPECT_EQ(m_removed, Texts{"recording.wav"});
}

TEST_F(PassingSoundsTest, WhatAFormerRunHasLeftGoesAtTheStartUnlessItWaits) {
    const std::uint32_t id = Say("waiting");
    Open({"left.wav", "waiting.wav"});
    m_host.scheduler.Advance(seconds(0));
    EXPECT_EQ(m_removed, Texts{"left.wav"});
    m_feed.Publish(events::AnnouncementStarted{id});
    m_feed.Publish(events::AnnouncementEnded{id});
    Forget(id);
    m_host.scheduler.Advance(seconds(1));
    EXPECT_EQ(m_removed, (Texts{"left.wav", "waiting.wav"}));
}

TEST_F(PassingSoundsTest, OneThatIsKeptOrRemovedByOthersIsLeftAlone) {
    m_passing->Add("kept.wav");
    m_passing->Add("removed.wav");
    EXPECT_TRUE(m_passing->Keep("kept.wav"));
    EXPECT_FALSE(m_passing->Keep("other.wav"));
    m_feed.Publish(events::MediaRemoved{"removed.wav"});
    m_host.scheduler.Advance(minutes(20));
    EXPECT_TRUE(m_removed.empty());
}

} // namespace

} // namespace controller
