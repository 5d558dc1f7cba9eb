#include "tests/support/AnnouncementTest.h"

#include <vector>

namespace {

const std::string kRooms =
    "<rooms><room><id>12</id><volume>40</volume></room><room><id>13</id><volume>20</volume>"
    "</room></rooms>";
const std::string kNavigators = "<navigators><navigator><id>5</id></navigator></navigators>";
const std::string kAudioComplete =
    "ILogger.Log(6, Announcement audio complete - Delaying to ensure that the client has finished.)";
const std::string kRestoringAudio = "ILogger.Log(6, Announcement restoring audio)";

const std::vector<bool> kOnce{true};

/// What holds already while the host is inside a call, which is what a call that throws leaves behind.
class AnnouncementOrderTest : public AnnouncementTest {
protected:
    Pointer WithAudio() { return FromXml("<a><id>1</id>" + kAudio + kRooms + "<navigators/></a>"); }
    Pointer WithVideo(const std::string& delay) {
        return FromXml("<a><id>1</id><video><text>Hi</text><delay>" + delay +
                       "</delay><timeout>5000</timeout></video>" + kRooms + kNavigators + "</a>");
    }

    /// Whether `announcement` has no timer, asked from inside each call whose line begins so.
    const std::vector<bool>& CompleteInside(const std::string& beginning, const Pointer& announcement) {
        m_complete.clear();
        m_host.log.WhenCalled(beginning,
                              [this, &asked = *announcement] { m_complete.push_back(asked.IsComplete()); });
        return m_complete;
    }
    void ThrowIn(const std::string& beginning) {
        m_host.log.WhenCalled(beginning, [beginning] { throw "no " + beginning; });
    }

    std::vector<bool> m_complete;
};

// Each timer is over before its action begins.

TEST_F(AnnouncementOrderTest, TheAudioStageTimerIsOverBeforeTheAudioIsRestored) {
    const Pointer announcement = WithAudio();
    announcement->Execute();
    const auto& complete = CompleteInside(kRestoringAudio, announcement);
    m_host.Advance(3000);
    EXPECT_EQ(complete, kOnce);
}

TEST_F(AnnouncementOrderTest, ThePlayTimerIsOverBeforeTheVolumesAreSet) {
    const Pointer announcement = WithAudio();
    announcement->AudioStreamCreated();
    const auto& complete = CompleteInside("IRoomProxy.SetAudioVolume(12", announcement);
    m_host.Advance(500);
    EXPECT_EQ(complete, kOnce);
}

TEST_F(AnnouncementOrderTest, TheDismissTimerIsOverBeforeTheVideoIsRestored) {
    const Pointer announcement = WithVideo("0");
    announcement->Execute();
    const auto& complete = CompleteInside("ILogger.Log(6, Announcement restoring video)", announcement);
    m_host.Advance(5000);
    EXPECT_EQ(complete, kOnce);
}

TEST_F(AnnouncementOrderTest, TheDisplayTimerIsOverBeforeThePopupIsShown) {
    const Pointer announcement = WithVideo("70");
    announcement->Execute();
    const auto& complete = CompleteInside("ILogger.Log(6, Announcement displaying video)", announcement);
    m_host.Advance(70);
    EXPECT_EQ(complete, kOnce);
}

TEST_F(AnnouncementOrderTest, AnActionThatThrowsLeavesNoTimerBehind) {
    const Pointer audio = WithAudio();
    audio->AudioStreamCreated();
    ThrowIn("IRoomProxy.SetAudioVolume(12");
    EXPECT_EQ(CallsOf([&] { m_host.Advance(60000); }), (Lines{"timer 1", "IRoomProxy.SetAudioVolume(12, 40)",
                                                              "thrown: no IRoomProxy.SetAudioVolume(12"}));
    EXPECT_TRUE(audio->IsComplete());

    const Pointer video = WithVideo("70");
    video->Execute();
    ThrowIn("ILogger.Log(6, Announcement displaying");
    EXPECT_EQ(CallsOf([&] { m_host.Advance(60000); }),
              (Lines{"timer 2", "ILogger.Log(6, Announcement displaying video)",
                     "thrown: no ILogger.Log(6, Announcement displaying"}));
    EXPECT_TRUE(video->IsComplete());
}

// The rooms' audio counts as set up when all are, and as restored before the first is.

TEST_F(AnnouncementOrderTest, ARoomThatCannotBeSetUpLeavesNothingToRestore) {
    const Pointer announcement = WithAudio();
    announcement->Execute();
    ThrowIn("IRoomProxy.SetUpAudio(13)");
    EXPECT_EQ(
        CallsOf([&] { EXPECT_THROW(announcement->AudioStreamCreated(), std::string); }),
        (Lines{"ITimerManager.KillTimer(1)", "IRoomProxy.SetUpAudio(12)", "IRoomProxy.SetUpAudio(13)"}));
    EXPECT_TRUE(announcement->IsComplete());

    announcement->AudioAnnouncementComplete();
    EXPECT_EQ(CallsOf([&] { m_host.Advance(2000); }), (Lines{"timer 2", kRestoringAudio}));
}

TEST_F(AnnouncementOrderTest, AudioThatIsSetUpIsRestoredThoughThePlayTimerCouldNotBeArmed) {
    const Pointer announcement = WithAudio();
    int armed = 0;
    m_host.log.WhenCalled("ITimerManager.AddTimer(500, 1)", [&] {
        if (++armed == 1)
            throw std::string("no timers");
    });
    EXPECT_THROW(announcement->AudioStreamCreated(), std::string);

    announcement->AudioAnnouncementComplete();
    EXPECT_EQ(CallsOf([&] { m_host.Advance(2000); }),
              (Lines{"timer 1", kRestoringAudio, "IRoomProxy.RestoreAudioState(12)",
                     "IRoomProxy.RestoreAudioState(13)", "IDigitalAudio.ReleaseStream()"}));
}

TEST_F(AnnouncementOrderTest, ARoomThatCannotBeRestoredIsNotRestoredAgain) {
    const Pointer announcement = WithAudio();
    announcement->AudioStreamCreated();
    m_host.Advance(500); // the file plays, watched for 20 s
    ThrowIn("IRoomProxy.RestoreAudioState(12)");
    EXPECT_EQ(CallsOf([&] { m_host.Advance(20000); }),
              (Lines{"timer 2", kRestoringAudio, "IRoomProxy.RestoreAudioState(12)",
                     "thrown: no IRoomProxy.RestoreAudioState(12)"}));
    EXPECT_TRUE(announcement->IsComplete());

    announcement->AudioAnnouncementComplete();
    EXPECT_EQ(CallsOf([&] { m_host.Advance(2000); }), (Lines{"timer 3", kRestoringAudio}));
}

// Cancelling.

TEST_F(AnnouncementOrderTest, TheHostIsHandedTheAnnouncementsOwnTimerIdToCancel) {
    // The host stores 0 in it, and the announcement has no other timer.
    const Pointer audio = WithAudio();
    audio->Execute();
    const auto& complete = CompleteInside("ITimerManager.KillTimer", audio);
    audio->AudioStreamCreated();
    EXPECT_EQ(complete, kOnce);
    m_host.Advance(500); // the play timer is over, the file is watched
    audio->AudioAnnouncementComplete();
    EXPECT_EQ(complete, (std::vector<bool>{true, true}));

    const Pointer video = WithVideo("0");
    video->Execute();
    (void)CompleteInside("ITimerManager.KillTimer(5)", video);
    video->Dismiss();
    EXPECT_EQ(complete, (std::vector<bool>{false, true})); // the former's settling, and its own
}

TEST_F(AnnouncementOrderTest, WhatTheHostStoresInACancelledIdIsTheAnnouncementsTimer) {
    m_host.timers.idLeftByKill = 77;
    const Pointer announcement = WithAudio();
    announcement->Execute();
    ThrowIn("IRoomProxy.SetUpAudio(12)");
    EXPECT_THROW(announcement->AudioStreamCreated(), std::string);
    EXPECT_FALSE(announcement->IsComplete());
    EXPECT_EQ(CallsOf([&] { announcement->OnTimerExpired(77, 0); }), Lines{kRestoringAudio});
    EXPECT_TRUE(announcement->IsComplete());
}

TEST_F(AnnouncementOrderTest, DismissClearsItsTimerItselfBeforeThePopupsAreHidden) {
    m_host.timers.idLeftByKill = 77;
    const Pointer announcement = WithVideo("0");
    announcement->Execute();
    const auto& complete = CompleteInside("IDeviceManager.SendCommandToDevice(5, HIDE", announcement);
    EXPECT_EQ(CallsOf([&] { announcement->Dismiss(); }),
              (Lines{"ITimerManager.KillTimer(1)", "IDeviceManager.SendCommandToDevice(5, HIDE_POPUP, 0, 0)",
                     "ILogger.Log(6, Announcement restoring video)", "IRoomProxy.RestoreVideoState(12)",
                     "IRoomProxy.RestoreVideoState(13)"}));
    EXPECT_EQ(complete, kOnce);
    EXPECT_EQ(CallsOf([&] { announcement->Dismiss(); }), Lines{});
    EXPECT_EQ(CallsOf([&] { announcement->OnTimerExpired(77, 0); }), Lines{});
}

// Answers that the host gives from inside its own calls come before the watchdog, which knows nothing of
// them.

TEST_F(AnnouncementOrderTest, AStreamReportedInsideCreateStreamIsStillWatchedAndTheAudioRestoredTooSoon) {
    const Pointer announcement =
        FromXml("<a><audio><file>f</file><delay>4000</delay></audio>" + kRooms + "<navigators/></a>");
    m_host.log.WhenCalled("IDigitalAudio.CreateStream", [&] { announcement->AudioStreamCreated(); });
    announcement->Execute();
    EXPECT_EQ(CallsOf([&] { m_host.Advance(3000); }),
              (Lines{"timer 2", kRestoringAudio, "IRoomProxy.RestoreAudioState(12)",
                     "IRoomProxy.RestoreAudioState(13)", "IDigitalAudio.ReleaseStream()"}));
    EXPECT_EQ(
        CallsOf([&] { m_host.Advance(1000); }),
        (Lines{"timer 1", "IRoomProxy.SetAudioVolume(12, 40)", "IRoomProxy.SetAudioVolume(13, 20)",
               "ILogger.Log(6, Announcement playing audio)",
               "IDigitalAudio.PlayFile(/media/announcements/f.wav)", "ITimerManager.AddTimer(20, 2) = 3"}));
}

TEST_F(AnnouncementOrderTest, AnEndReportedInsidePlayFileSettlesAsLongAsTheFileIsWatched) {
    const Pointer announcement = WithAudio();
    m_host.log.WhenCalled("IDigitalAudio.PlayFile", [&] { announcement->AudioAnnouncementComplete(); });
    announcement->AudioStreamCreated();
    m_host.Advance(500);
    EXPECT_EQ(CallsOf([&] { m_host.Advance(19999); }), Lines{"timer 2"}); // the 2 s, for nobody
    EXPECT_EQ(CallsOf([&] { m_host.Advance(1); }),
              (Lines{"timer 3", kRestoringAudio, "IRoomProxy.RestoreAudioState(12)",
                     "IRoomProxy.RestoreAudioState(13)", "IDigitalAudio.ReleaseStream()"}));
}

// A timer that does not run has the id 0, and so does this expiry.

TEST_F(AnnouncementOrderTest, AnExpiryOfTimerZeroIsTakenByTheFirstTimerThatDoesNotRun) {
    const Pointer announcement = WithAudio();
    EXPECT_EQ(CallsOf([&] { announcement->OnTimerExpired(0, 0); }), Lines{kRestoringAudio});
    announcement->Execute(); // the audio stage timer runs, the play timer does not
    EXPECT_EQ(CallsOf([&] { announcement->OnTimerExpired(0, 0); }),
              (Lines{"IRoomProxy.SetAudioVolume(12, 40)", "IRoomProxy.SetAudioVolume(13, 20)",
                     "ILogger.Log(6, Announcement playing audio)",
                     "IDigitalAudio.PlayFile(/media/announcements/chime.wav)",
                     "ITimerManager.AddTimer(20, 2) = 2"}));
}

} // namespace
