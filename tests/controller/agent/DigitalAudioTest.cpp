#include "controller/agent/DigitalAudio.h"

#include "framework/InstanceRegistry.h"
#include "host/IAnnouncementAgent.h"
#include "tests/controller/support/EventTexts.h"
#include "tests/controller/support/FakeScheduler.h"
#include "tests/controller/support/TestLog.h"

#include <gtest/gtest.h>

namespace controller {

namespace {

using Texts = std::vector<std::string>;

class FakeEngine final : public audio::ISoundEngine {
public:
    explicit FakeEngine(Texts& calls) : m_calls(calls) {}

    void OpenStream(std::function<void()> onReady) override {
        m_calls.emplace_back("open");
        ready.push_back(std::move(onReady));
    }
    void AddRoom(std::uint32_t room) override { m_calls.push_back("add " + std::to_string(room)); }
    void RemoveRoom(std::uint32_t room) override { m_calls.push_back("remove " + std::to_string(room)); }
    void SetVolume(std::uint32_t room, unsigned volume) override {
        m_calls.push_back("volume " + std::to_string(room) + " " + std::to_string(volume));
    }
    void Play(const audio::PlayedSound& sound,
              std::function<void(const audio::PlayResult&)> onDone) override {
        m_calls.push_back("play " + sound.path +
                          (sound.gain != 0 ? " at " + std::to_string(sound.gain) : ""));
        done.push_back(std::move(onDone));
    }
    void StopPlay() override { m_calls.emplace_back("stop"); }
    void CloseStream(std::function<void()> onClosed) override {
        m_calls.emplace_back("close");
        if (onClosed)
            onClosed();
    }

    std::vector<std::function<void()>> ready;
    std::vector<std::function<void(const audio::PlayResult&)>> done;

private:
    Texts& m_calls;
};

class FakeAgentFace final : public IAnnouncementAgent {
public:
    explicit FakeAgentFace(Texts& calls) : m_calls(calls) {}
    void AudioStreamCreated() override {
        m_calls.emplace_back("agent: created");
        if (isThrowing)
            throw std::string("no");
    }
    void AudioAnnouncementComplete() override { m_calls.emplace_back("agent: complete"); }
    bool IsRoomInCurrentAnnouncement(std::uint32_t /*roomId*/) override { return false; }

    bool isThrowing = false;

private:
    Texts& m_calls;
};

class QuietStore final : public IRoomStore {
public:
    void WriteRooms(std::vector<RoomRow> /*rows*/, WriteDone done) override {
        if (isSlow)
            waiting.push_back(std::move(done));
        else
            done("");
    }

    bool isSlow = false;
    std::vector<WriteDone> waiting;
};

class DigitalAudioTest : public testing::Test {
protected:
    DigitalAudioTest() {
        m_services.RegisterInterface(IAnnouncementAgent::kGuid, static_cast<IAnnouncementAgent*>(&m_agent),
                                     1);
        m_calls.clear();
    }

    void DoPosted() { m_driver.DoPosted(); }

    Texts Calls() { return std::exchange(m_calls, {}); }

    /// A stream that is open, with room 1 at the volume of an announcement.
    void OpenStream() {
        m_audio.CreateStream();
        m_engine.ready.back()();
        DoPosted();
        m_audio.AddRoom(1);
        m_driver.Advance({});
        m_volumes.SetForAnnouncement(1, 60);
        m_calls.clear();
        (void)m_events.Take();
    }

    Texts m_calls;
    FakeScheduler m_driver;
    std::string m_file = "/real/chime.wav";
    std::string m_fileError;
    FakeEngine m_engine{m_calls};
    FakeAgentFace m_agent{m_calls};
    QuietStore m_store;
    EventFeed m_feed;
    EventTexts m_events{m_feed};
    TestLog m_log;
    InstanceRegistry m_services;
    RoomVolumes m_volumes{{{1, "Kitchen", 100, 40}, {2, "Hall", 100, 30}},
                          {[this](std::uint32_t room, unsigned volume) { m_engine.SetVolume(room, volume); },
                           m_store, m_driver, m_feed, m_log.log}};
    DigitalAudio m_audio{{m_engine, m_volumes, m_services, m_feed, m_log.log, m_driver,
                          [this](const std::string& /*path*/, const DigitalAudio::Found& found) {
                              m_driver.Post("finding", [this, found] { found(m_file, m_fileError); });
                          }}};
};

TEST_F(DigitalAudioTest, TheAgentHearsOfTheStreamByPostedWork) {
    m_audio.CreateStream();
    m_engine.ready[0]();
    EXPECT_EQ(Calls(), Texts{"open"});
    DoPosted();
    EXPECT_EQ(Calls(), Texts{"agent: created"});
}

TEST_F(DigitalAudioTest, AFileIsPlayedAndItsEndIsTold) {
    OpenStream();
    m_audio.PlayFile("/media/announcements/chime.wav");
    DoPosted();
    EXPECT_EQ(Calls(), Texts{"play /real/chime.wav"});
    EXPECT_TRUE(m_audio.IsPlaying());
    m_engine.done[0]({"", {1}, {}});
    EXPECT_TRUE(Calls().empty());
    DoPosted();
    EXPECT_EQ(Calls(), Texts{"agent: complete"});
    EXPECT_FALSE(m_audio.IsPlaying());
    EXPECT_EQ(m_events.Take(),
              (Texts{"playing /media/announcements/chime.wav", "played /media/announcements/chime.wav"}));
}

TEST_F(DigitalAudioTest, AStoppedFileFadesOutAndTheAgentIsToldOfItsEndWhenItHas) {
    OpenStream();
    m_audio.PlayFile("/media/announcements/chime.wav");
    DoPosted();
    m_audio.Stop();
    EXPECT_EQ(Calls(), (Texts{"play /real/chime.wav", "stop"}));
    EXPECT_TRUE(m_audio.IsPlaying());
    m_engine.done[0]({"", {}, {}, true});
    DoPosted();
    EXPECT_EQ(Calls(), Texts{"agent: complete"});
    EXPECT_FALSE(m_audio.IsPlaying());
    EXPECT_TRUE(m_log.lines.empty());
}

TEST_F(DigitalAudioTest, AFileThatIsStillLookedForWhenItIsStoppedIsNotPlayed) {
    OpenStream();
    m_audio.PlayFile("/media/announcements/chime.wav");
    m_audio.Stop();
    DoPosted();
    EXPECT_EQ(Calls(), (Texts{"stop", "agent: complete"}));
    EXPECT_FALSE(m_audio.IsPlaying());
    EXPECT_EQ(m_events.Take(), Texts{});
}

TEST_F(DigitalAudioTest, AFileThatIsAskedForWhenAllIsStoppedCountsAsPlayed) {
    OpenStream();
    m_audio.Stop();
    m_audio.PlayFile("/media/announcements/chime.wav");
    DoPosted();
    EXPECT_EQ(Calls(), (Texts{"stop", "agent: complete"}));
    EXPECT_EQ(m_events.Take(), Texts{});
    m_audio.ReleaseStream();
    OpenStream();
    m_audio.PlayFile("/media/announcements/chime.wav");
    DoPosted();
    EXPECT_EQ(Calls(), Texts{"play /real/chime.wav"});
}

TEST_F(DigitalAudioTest, AFileThatIsNotThereEndsThePlayingAtOnce) {
    m_fileError = "there is no such file";
    OpenStream();
    m_audio.PlayFile("/media/announcements/chime.wav");
    DoPosted();
    EXPECT_EQ(Calls(), Texts{"agent: complete"});
    EXPECT_EQ(m_events.Take(), Texts{"played /media/announcements/chime.wav: there is no such file"});
    EXPECT_EQ(m_log.lines,
              Texts{"error: /media/announcements/chime.wav could not be played: there is no such file"});
}

TEST_F(DigitalAudioTest, AFileThatTheEngineRefusesEndsThePlaying) {
    OpenStream();
    m_audio.PlayFile("/media/announcements/chime.wav");
    DoPosted();
    m_engine.done[0]({"it is cut short", {}, {}});
    DoPosted();
    EXPECT_EQ(Calls(), (Texts{"play /real/chime.wav", "agent: complete"}));
    EXPECT_EQ(m_events.Take().back(), "played /media/announcements/chime.wav: it is cut short");
}

TEST_F(DigitalAudioTest, OfTheLongestSoundsEndTheAgentIsToldOnceAndBeforeItGivesUp) {
    OpenStream();
    m_audio.PlayFile("/media/announcements/chime.wav");
    DoPosted();
    (void)Calls();
    m_driver.Advance(std::chrono::milliseconds(19'499));
    DoPosted();
    EXPECT_TRUE(Calls().empty());
    m_driver.Advance(std::chrono::milliseconds(1));
    DoPosted();
    EXPECT_EQ(Calls(), Texts{"agent: complete"});
    EXPECT_TRUE(m_audio.IsPlaying());
    m_engine.done[0]({"", {1}, {}});
    DoPosted();
    EXPECT_TRUE(Calls().empty());
    EXPECT_FALSE(m_audio.IsPlaying());
    EXPECT_EQ(m_events.Take().back(), "played /media/announcements/chime.wav");
}

TEST_F(DigitalAudioTest, NothingIsToldOfTheEndOfAStreamThatWasReleased) {
    OpenStream();
    m_audio.PlayFile("/media/announcements/chime.wav");
    DoPosted();
    m_audio.ReleaseStream();
    (void)Calls();
    m_driver.Advance(std::chrono::seconds(30));
    DoPosted();
    EXPECT_TRUE(Calls().empty());
}

TEST_F(DigitalAudioTest, LateAnswersForAReleasedStreamAreDropped) {
    OpenStream();
    m_audio.PlayFile("/media/announcements/chime.wav");
    DoPosted();
    m_audio.CreateStream();
    m_audio.ReleaseStream();
    (void)Calls();
    m_engine.ready[1]();
    m_engine.done[0]({"the stream was closed", {}, {}});
    DoPosted();
    EXPECT_TRUE(Calls().empty());
}

TEST_F(DigitalAudioTest, AnAnswerThatIsOnItsWayWhenTheStreamIsReleasedIsDropped) {
    m_audio.CreateStream();
    m_engine.ready[0]();
    m_audio.ReleaseStream();
    (void)Calls();
    DoPosted();
    EXPECT_TRUE(Calls().empty());
}

TEST_F(DigitalAudioTest, AStreamThatTheAnnouncementNeverReleasedEndsWithIt) {
    m_audio.CreateStream();
    m_audio.AnnouncementEnded();
    EXPECT_EQ(Calls(), (Texts{"open", "close"}));
    m_engine.ready[0]();
    DoPosted();
    EXPECT_TRUE(Calls().empty());
    m_audio.AnnouncementEnded();
    EXPECT_TRUE(Calls().empty());
}

TEST_F(DigitalAudioTest, ARoomOfTheStreamGoesBackToItsVolumeWhenItIsRemoved) {
    OpenStream();
    m_audio.RemoveRoom(1);
    EXPECT_EQ(Calls(), (Texts{"remove 1", "volume 1 40"}));
    m_audio.RemoveRoom(1);
    EXPECT_TRUE(Calls().empty());
}

TEST_F(DigitalAudioTest, ARoomThatTheAnnouncementForgotIsGivenBackWithTheStream) {
    OpenStream();
    m_audio.ReleaseStream();
    EXPECT_EQ(Calls(), (Texts{"close", "volume 1 40"})) << "nothing is heard at the volume of before";
    EXPECT_FALSE(m_volumes.IsTaken(1));
}

TEST_F(DigitalAudioTest, TheFirstSampleWaitsForTheVolume) {
    m_audio.CreateStream();
    m_store.isSlow = true;
    m_audio.AddRoom(1);
    m_driver.Advance({});
    m_volumes.SetForAnnouncement(1, 60);
    m_audio.PlayFile("/media/announcements/chime.wav");
    DoPosted();
    EXPECT_EQ(Calls(), (Texts{"open", "add 1"}));
    m_store.waiting[0]("");
    EXPECT_EQ(Calls(), (Texts{"volume 1 60", "play /real/chime.wav"}));
}

TEST_F(DigitalAudioTest, ASecondFileIsNotPlayedOverTheFirst) {
    OpenStream();
    m_audio.PlayFile("/media/announcements/chime.wav");
    m_audio.PlayFile("/media/announcements/gong.wav");
    DoPosted();
    EXPECT_EQ(Calls(), Texts{"play /real/chime.wav"});
    EXPECT_EQ(m_log.lines.size(), 1U);
}

TEST_F(DigitalAudioTest, ANewStreamTakesItsRoomsAnew) {
    OpenStream();
    m_audio.CreateStream();
    m_audio.AddRoom(1);
    m_audio.AddRoom(1);
    EXPECT_EQ(Calls(), (Texts{"open", "add 1"}));
}

TEST_F(DigitalAudioTest, WhatTheAgentThrowsIsLogged) {
    m_agent.isThrowing = true;
    m_audio.CreateStream();
    m_engine.ready[0]();
    DoPosted();
    EXPECT_EQ(m_log.lines, Texts{"error: The agent failed in an answer of the audio service: no"});
}

TEST_F(DigitalAudioTest, WithoutAnAgentAnAnswerGoesNowhere) {
    m_services.UnregisterInterface(IAnnouncementAgent::kGuid);
    m_audio.CreateStream();
    m_engine.ready[0]();
    DoPosted();
    EXPECT_EQ(Calls(), Texts{"open"});
}

TEST_F(DigitalAudioTest, ClosedItGivesEveryRoomBackAndSaysWhenTheOutputsAreClosed) {
    OpenStream();
    bool isClosed = false;
    m_audio.Close([&] { isClosed = true; });
    EXPECT_TRUE(isClosed);
    EXPECT_EQ(Calls(), (Texts{"close", "volume 1 40", "close"}));
}

} // namespace

} // namespace controller
