#include "tests/support/AnnouncementTest.h"

namespace {

const std::string kVideo = "<video><text>Hi</text><timeout>5000</timeout></video>";
const std::string kRoom = "<rooms><room><id>12</id><volume>40</volume></room></rooms>";
const std::string kNavigator = "<navigators><navigator><id>5</id></navigator></navigators>";
const std::string kShown =
    "IDeviceManager.SendCommandToDevice(5, SHOW_POPUP MESSAGE:STRING=Hi IMGURL:STRING= "
    "DELAY:NUMBER=5000 SHOWOK:BOOLEAN=true SIZE:NUMBER=0, 0, 0)";
const Lines kStarted{"ILogger.Log(6, Executing announcement )", "ILogger.Log(6, A)"};

class AnnouncementPlaybackTest : public AnnouncementTest {
protected:
    Pointer Make(const std::string& content) {
        return FromXml("<a><id>1</id><name>A</name>" + content + "</a>");
    }
    Pointer WithAudio() { return Make(kAudio + kRoom + "<navigators/>"); }
    Pointer WithVideo() { return Make(kVideo + kRoom + kNavigator); }
};

TEST_F(AnnouncementPlaybackTest, NoStageReportsAnythingToItsCaller) {
    const auto isSilent = [](auto stage) {
        return std::is_same_v<void, std::invoke_result_t<decltype(stage), Announcement&>>;
    };
    EXPECT_TRUE(isSilent(&Announcement::Execute));
    EXPECT_TRUE(isSilent(&Announcement::AudioStreamCreated));
    EXPECT_TRUE(isSilent(&Announcement::AudioAnnouncementComplete));
    EXPECT_TRUE(isSilent(&Announcement::Dismiss));
}

TEST_F(AnnouncementPlaybackTest, OneWithNeitherAudioNorVideoIsCompleteRightAfterExecute) {
    const Pointer announcement = Make("<rooms/><navigators/>");
    EXPECT_TRUE(announcement->IsComplete());
    EXPECT_EQ(CallsOf([&] { announcement->Execute(); }), kStarted);
    EXPECT_TRUE(announcement->IsComplete());
}

TEST_F(AnnouncementPlaybackTest, EachOfTheFourTimersKeepsItFromBeingComplete) {
    const Pointer announcement = Make("<audio><file>f</file><delay>10</delay></audio><video><text>Hi</text>"
                                      "<delay>20000</delay><timeout>9</timeout></video>" +
                                      kRoom + kNavigator);
    announcement->Execute(); // audio stage and display timers
    EXPECT_FALSE(announcement->IsComplete());
    m_host.Advance(19999); // the stream's watchdog has expired, only the display timer runs
    EXPECT_FALSE(announcement->IsComplete());
    m_host.Advance(1); // the dismiss timer runs
    EXPECT_FALSE(announcement->IsComplete());
    m_host.Advance(9);
    EXPECT_TRUE(announcement->IsComplete());
    announcement->AudioStreamCreated(); // the play timer runs
    EXPECT_FALSE(announcement->IsComplete());

    const Pointer audioOnly = WithAudio();
    audioOnly->Execute(); // the audio stage timer runs
    EXPECT_FALSE(audioOnly->IsComplete());
}

TEST_F(AnnouncementPlaybackTest, AnAudioThatIsStillSetUpDoesNotKeepItFromBeingComplete) {
    m_host.hasTimerManager = false;
    const Pointer announcement = WithAudio();
    announcement->Execute();
    announcement->AudioStreamCreated();
    EXPECT_TRUE(announcement->IsComplete());
}

TEST_F(AnnouncementPlaybackTest, WithoutATimerManagerNothingIsArmedOrCancelledAndTheRestIsDone) {
    m_host.hasTimerManager = false;
    const Pointer announcement = Make(kAudio + kVideo + kRoom + kNavigator);
    m_host.hasTimerManager = true;
    EXPECT_EQ(CallsOf([&] { announcement->Execute(); }),
              Join({kStarted,
                    {"IDigitalAudio.CreateStream()", "ILogger.Log(6, Announcement setting up video)",
                     "IRoomProxy.SetUpVideo(12)", "ILogger.Log(6, Announcement displaying video)", kShown}}));
    EXPECT_EQ(CallsOf([&] { announcement->AudioStreamCreated(); }), Lines{"IRoomProxy.SetUpAudio(12)"});
    EXPECT_EQ(CallsOf([&] { announcement->AudioAnnouncementComplete(); }),
              Lines{"ILogger.Log(6, Announcement audio complete - Delaying to ensure that the client has "
                    "finished.)"});
    EXPECT_EQ(CallsOf([&] { announcement->Dismiss(); }), Lines{});
    EXPECT_TRUE(announcement->IsComplete());
}

TEST_F(AnnouncementPlaybackTest, IsRoomInCurrentAnnouncementKnowsItsRoomsOnly) {
    const Pointer announcement = WithAudio();
    EXPECT_TRUE(announcement->IsRoomInCurrentAnnouncement(12));
    EXPECT_FALSE(announcement->IsRoomInCurrentAnnouncement(5));
    EXPECT_FALSE(announcement->IsRoomInCurrentAnnouncement(0));
}

TEST_F(AnnouncementPlaybackTest, ATimerThatIsNotItsOwnIsIgnored) {
    const Pointer announcement = Make(kAudio + kVideo + kRoom + kNavigator);
    announcement->Execute();
    EXPECT_EQ(CallsOf([&] { announcement->OnTimerExpired(77, 0); }), Lines{});
    EXPECT_FALSE(announcement->IsComplete());
}

TEST_F(AnnouncementPlaybackTest, ATimerCountsOnceOnlyWhateverItsSecondArgument) {
    const Pointer announcement = WithVideo();
    announcement->Execute();
    EXPECT_EQ(CallsOf([&] { announcement->OnTimerExpired(1, -5); }),
              (Lines{"ILogger.Log(6, Announcement restoring video)", "IRoomProxy.RestoreVideoState(12)"}));
    EXPECT_TRUE(announcement->IsComplete());
    EXPECT_EQ(CallsOf([&] { announcement->OnTimerExpired(1, -5); }), Lines{});
}

TEST_F(AnnouncementPlaybackTest, ExecutedAgainTheFormerTimersFireWithoutEffect) {
    const Pointer announcement = WithVideo();
    announcement->Execute(); // dismiss timer 1
    m_host.Advance(1000);
    announcement->Execute(); // dismiss timer 2
    EXPECT_EQ(CallsOf([&] { m_host.Advance(4000); }), Lines{"timer 1"});
    EXPECT_EQ(CallsOf([&] { m_host.Advance(1000); }),
              (Lines{"timer 2", "ILogger.Log(6, Announcement restoring video)",
                     "IRoomProxy.RestoreVideoState(12)"}));
}

TEST_F(AnnouncementPlaybackTest, CancellingIsAskedForAlsoWhenNoTimerRuns) {
    const Pointer announcement = WithAudio();
    EXPECT_EQ(CallsOf([&] { announcement->AudioAnnouncementComplete(); }),
              (Lines{"ILogger.Log(6, Announcement audio complete - Delaying to ensure that the client has "
                     "finished.)",
                     "ITimerManager.KillTimer(0)", "ITimerManager.AddTimer(2, 2) = 1"}));
}

TEST_F(AnnouncementPlaybackTest, DismissTestsTheTimerBeforeItCancels) {
    const Pointer announcement = WithVideo();
    EXPECT_EQ(CallsOf([&] { announcement->Dismiss(); }), Lines{});
    announcement->Execute();
    EXPECT_EQ(CallsOf([&] { announcement->Dismiss(); }),
              (Lines{"ITimerManager.KillTimer(1)", "IDeviceManager.SendCommandToDevice(5, HIDE_POPUP, 0, 0)",
                     "ILogger.Log(6, Announcement restoring video)", "IRoomProxy.RestoreVideoState(12)"}));
    EXPECT_EQ(CallsOf([&] { announcement->Dismiss(); }), Lines{});
}

TEST_F(AnnouncementPlaybackTest, AnEmptyFileNameIsPlayedWhenTheHostCreatesAStreamUnasked) {
    const Pointer announcement = Make(kRoom + "<navigators/>");
    announcement->AudioStreamCreated();
    EXPECT_EQ(
        CallsOf([&] { m_host.Advance(1000); }),
        (Lines{"timer 1", "IRoomProxy.SetAudioVolume(12, 40)", "ILogger.Log(6, Announcement playing audio)",
               "IDigitalAudio.PlayFile(/media/announcements/.wav)", "ITimerManager.AddTimer(20, 2) = 2"}));
}

TEST_F(AnnouncementPlaybackTest, AServiceThatVanishesBeforePlayingRestoresTheAudioAtOnce) {
    const Pointer announcement = WithAudio();
    announcement->Execute();
    announcement->AudioStreamCreated();
    m_host.hasDigitalAudio = false;
    EXPECT_EQ(
        CallsOf([&] { m_host.Advance(500); }),
        (Lines{"timer 2", "IRoomProxy.SetAudioVolume(12, 40)", "ILogger.Log(6, Announcement playing audio)",
               "ILogger.Log(6, Announcement restoring audio)", "IRoomProxy.RestoreAudioState(12)"}));
    EXPECT_TRUE(announcement->IsComplete());
}

TEST_F(AnnouncementPlaybackTest, LoggerAudioAndRoomAreLookedUpAtEveryUse) {
    const Pointer announcement = WithAudio();
    m_host.log.ShowLookUps();
    const std::string logger = "IInstanceManager.QueryInterface({6B6BF865-B6E0-44EE-B253-27897C1CADF0})";
    const std::string audio = "IInstanceManager.QueryInterface({3C11AB22-A8E6-45c7-9C22-1EC400C6AF45})";
    const std::string room = "IDeviceManager.GetDeviceInterface(12, {258A9CD0-5596-4c89-BBD4-C7489BA8494B})";
    EXPECT_EQ(CallsOf([&] { announcement->Execute(); }),
              (Lines{logger, kStarted[0], logger, kStarted[1], audio, "IDigitalAudio.CreateStream()",
                     "ITimerManager.AddTimer(3, 2) = 1"}));
    announcement->AudioStreamCreated();
    EXPECT_EQ(CallsOf([&] { m_host.Advance(500); }),
              (Lines{"timer 2", room, "IRoomProxy.SetAudioVolume(12, 40)", logger,
                     "ILogger.Log(6, Announcement playing audio)", audio,
                     "IDigitalAudio.PlayFile(/media/announcements/chime.wav)",
                     "ITimerManager.AddTimer(20, 2) = 3"}));
    EXPECT_EQ(CallsOf([&] { m_host.Advance(20000); }),
              (Lines{"timer 3", logger, "ILogger.Log(6, Announcement restoring audio)", room,
                     "IRoomProxy.RestoreAudioState(12)", audio, "IDigitalAudio.ReleaseStream()"}));
}

TEST_F(AnnouncementPlaybackTest, DestroyedInMidPlayItIsCalledNoMore) {
    Pointer announcement = Make(kAudio + kVideo + kRoom + kNavigator);
    announcement->Execute();
    EXPECT_EQ(CallsOf([&] { announcement.reset(); }), Lines{"ITimerManager.KillAllTimers()"});
    EXPECT_EQ(m_host.timers.AnnouncementTimerCount(), 0U);
    EXPECT_EQ(CallsOf([&] { m_host.Advance(60000); }), Lines{});
}

} // namespace
