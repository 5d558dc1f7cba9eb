#include "controller/announcements/PlayProgress.h"

#include "tests/controller/announcements/AnnouncementsFixture.h"

#include <algorithm>

namespace controller {

namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

/// Announcement 1 has a sound, 10 ms after its beginning, and a popup.
class PlayProgressTest : public AnnouncementsTest {
protected:
    void Store(std::uint32_t audioDelay, std::uint32_t timeout) {
        Announcement announcement = WithId(Made("One"), 1);
        announcement.audio.delayMs = audioDelay;
        announcement.video.timeoutMs = timeout;
        m_announcements.Replace(announcement, Note());
    }

    void Publish(EventData data) { m_feed.Publish(std::move(data)); }

    [[nodiscard]] seconds Expected() const {
        return std::chrono::round<seconds>(m_progress.Now()->ends - m_progress.Now()->since);
    }

    PlayProgress m_progress{m_announcements, m_feed};
};

TEST_F(PlayProgressTest, ItsEndIsExpectedWhenSoundAndPopupAndTheRoomsRestAreOver) {
    Store(500, 1000);
    Publish(events::AnnouncementStarted{1});
    ASSERT_TRUE(m_progress.Now());
    EXPECT_EQ(m_progress.Now()->announcement, 1U);
    EXPECT_EQ(m_progress.Now()->name, "One");
    EXPECT_FALSE(m_progress.Now()->sound);
    EXPECT_EQ(Expected(), seconds(3)) << "half a second, two for the rooms, at the next poll";
    m_progress.SoundMeasured(m_progress.Now()->since, milliseconds(4200));
    EXPECT_EQ(Expected(), seconds(7));
    Publish(events::SoundStarted{"/media/announcements/gong.wav"});
    ASSERT_TRUE(m_progress.Now()->sound);
    EXPECT_EQ(m_progress.Now()->sound->lengthMs, 4200);
    EXPECT_EQ(Expected(), seconds(7));
    Publish(events::SoundEnded{"/media/announcements/gong.wav", ""});
    EXPECT_FALSE(m_progress.Now()->sound);
    Publish(events::AnnouncementEnded{1});
    EXPECT_FALSE(m_progress.Now());
    EXPECT_EQ(m_events.Take().back(), "now nothing");
}

TEST_F(PlayProgressTest, OfAPopupThatStandsLongerItsEndCounts) {
    Store(10, 60'000);
    Publish(events::AnnouncementStarted{1});
    EXPECT_EQ(Expected(), seconds(60));
    EXPECT_FALSE(m_progress.Now()->canBeDismissed);
    Publish(events::PopupShown{7, 11, "One", "", seconds(60), true});
    EXPECT_TRUE(m_progress.Now()->canBeDismissed);
    Publish(events::PopupHidden{7, 11, events::PopupEnd::Dismissed});
    EXPECT_FALSE(m_progress.Now()->canBeDismissed);
    EXPECT_EQ(Expected(), seconds(3));
}

TEST_F(PlayProgressTest, OfManyPopupsTheFirstAndTheLastAreTold) {
    const auto told = [this] {
        const auto texts = m_events.Take();
        return std::count_if(texts.begin(), texts.end(),
                             [](const std::string& text) { return text.rfind("now ", 0) == 0; });
    };
    Store(10, 60'000);
    Publish(events::AnnouncementStarted{1});
    (void)told();
    for (std::uint32_t screen = 1; screen <= 100; ++screen)
        Publish(events::PopupShown{screen, screen, "One", "", seconds(60), true});
    EXPECT_EQ(told(), 1) << "it can be dismissed";
    for (std::uint32_t screen = 1; screen <= 100; ++screen)
        Publish(events::PopupHidden{screen, screen, events::PopupEnd::TimeIsUp});
    EXPECT_FALSE(m_progress.Now()->canBeDismissed);
    EXPECT_EQ(told(), 1) << "it cannot any more";
}

TEST_F(PlayProgressTest, WhatIsStoppedIsOverWhenTheRoomsHaveSettled) {
    Store(10, 60'000);
    Publish(events::AnnouncementStarted{1});
    Publish(events::SoundStarted{"/media/announcements/gong.wav"});
    m_progress.SoundMeasured(m_progress.Now()->since, seconds(15));
    Publish(events::AnnouncementStopped{1});
    EXPECT_TRUE(m_progress.Now()->isStopped);
    EXPECT_EQ(Expected(), seconds(3));
}

TEST_F(PlayProgressTest, TheLengthOfAFormerSoundIsNoneOfThisOne) {
    Publish(events::AnnouncementStarted{1});
    const auto former = m_progress.Now()->since;
    Publish(events::AnnouncementEnded{1});
    m_progress.SoundMeasured(former, seconds(15));
    EXPECT_FALSE(m_progress.Now());
    Publish(events::PopupShown{7, 11, "Test", "", seconds(60), true});
    EXPECT_FALSE(m_progress.Now());
}

} // namespace

} // namespace controller
