#include "controller/announcements/PlayStop.h"

#include "controller/agent/DeviceManager.h"
#include "tests/controller/announcements/AnnouncementsFixture.h"
#include "tests/controller/support/NoStore.h"

namespace controller {

namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

/// Plays until it is stopped.
class LastingEngine final : public audio::ISoundEngine {
public:
    explicit LastingEngine(IScheduler& driver) : m_driver(driver) {}

    void OpenStream(OnReady onReady) override { m_driver.Post("ready", std::move(onReady)); }
    void AddRoom(std::uint32_t /*roomId*/) override {}
    void RemoveRoom(std::uint32_t /*roomId*/) override {}
    void SetVolume(std::uint32_t /*roomId*/, unsigned /*volume*/) override {}
    void Play(const audio::PlayedSound& sound, OnDone onDone) override {
        played.push_back(sound.path);
        m_onDone = std::move(onDone);
    }
    void StopPlay() override {
        if (m_onDone)
            m_driver.Post("faded", [done = std::exchange(m_onDone, {})] { done({"", {}, {}, true}); });
    }
    void CloseStream(OnClosed /*onClosed*/) override {}

    Texts played;

private:
    IScheduler& m_driver;
    OnDone m_onDone;
};

/// The agent in a house with sound, of one room, and a screen.
class PlayStopTest : public AnnouncementsTest {
protected:
    PlayStopTest() {
        m_host.services.RegisterInterface(IDigitalAudio::kGuid, static_cast<IDigitalAudio*>(&m_audio), 1);
        m_host.services.RegisterInterface(IDeviceManager::kGuid, static_cast<IDeviceManager*>(&m_devices), 1);
        m_devices.AddRoom(1, m_room);
        m_host.fired = [this](std::uint32_t id) {
            m_playing.EventFired(id);
        };
        m_host.timers.SetDriverTimerListener([this] { m_playing.DriverTimerDone(); });
    }

    /// Plays it, after it was given these delays, as far as it comes in this time.
    void Play(std::uint32_t audioDelay, std::uint32_t videoDelay, milliseconds time) {
        Announcement announcement = WithId(Made("One"), 1);
        announcement.audio.delayMs = audioDelay;
        announcement.video.delayMs = videoDelay;
        announcement.video.timeoutMs = 600'000;
        m_announcements.Replace(announcement, Note());
        m_announcements.Play(1, Note());
        Pass(time);
        (void)m_events.Take();
    }

    void Pass(milliseconds time) {
        m_host.scheduler.DoPosted();
        for (milliseconds passed{0}; passed < time; passed += milliseconds(50)) {
            m_host.scheduler.Advance(milliseconds(50));
            m_host.scheduler.DoPosted();
        }
    }

    [[nodiscard]] bool Has(const Texts& events, const std::string& text) const {
        return std::find(events.begin(), events.end(), text) != events.end();
    }

    NoStore m_rooms;
    LastingEngine m_engine{m_host.scheduler};
    Variables m_variables{{}, m_rooms, m_feed};
    Popups m_popups{m_host.scheduler, m_variables, m_feed};
    RoomVolumes m_volumes{{{1, "Kitchen", 100, 40}},
                          {[](std::uint32_t /*room*/, unsigned /*volume*/) {}, m_rooms, m_host.scheduler,
                           m_feed, m_host.log.log}};
    DigitalAudio m_audio{{m_engine, m_volumes, m_host.services, m_feed, m_host.log.log, m_host.scheduler,
                          [](const std::string& path, const DigitalAudio::Found& found) {
                              found(path, "");
                          }}};
    RoomProxy m_room{1, m_audio, m_volumes, m_feed};
    NowPlaying m_playing{m_host.timers, m_feed};
    PlayQueue m_queue{{m_announcements, m_playing, m_rooms, m_feed, m_host.scheduler, {}}};
    PlayStop m_stop{{m_playing, m_audio, m_announcements, m_queue, m_feed, m_host.scheduler}};
    DeviceManager m_devices{{11},
                            m_popups,
                            m_host.log.log,
                            {[] {}, [this] { return m_playing.Current() ? m_playing.Current()->show : 0; },
                             [this] {
                                 return m_stop.RefusePopup();
                             }}};
};

TEST_F(PlayStopTest, WhatPlaysFallsSilentItsPopupGoesAndItIsOverWhenTheRoomsHaveSettled) {
    Play(10, 0, milliseconds(100));
    ASSERT_EQ(m_engine.played.size(), 1U);
    ASSERT_EQ(m_popups.Standing().size(), 1U);

    EXPECT_TRUE(m_stop.Stop());
    EXPECT_TRUE(m_popups.Standing().empty());
    m_host.scheduler.DoPosted();
    EXPECT_FALSE(m_audio.IsPlaying());
    EXPECT_EQ(m_events.Take(), (Texts{"stopped 1", "gone 1 on 11 dismissed", "rested 1",
                                      "played /media/announcements/gong.wav"}));
    Pass(seconds(4));
    EXPECT_FALSE(m_playing.Current());
    EXPECT_EQ(m_events.Take(), (Texts{"restored 1 40", "ended 1"}));
}

TEST_F(PlayStopTest, WithNothingPlayingThereIsNothingToStop) {
    EXPECT_FALSE(m_stop.Stop());
    EXPECT_FALSE(m_stop.RefusePopup());
    EXPECT_EQ(m_events.Take(), Texts{});
}

TEST_F(PlayStopTest, StoppedBeforeItsStreamIsThereNothingIsHeard) {
    Announcement silent = WithId(Made("One"), 1);
    silent.video.text.clear();
    m_announcements.Replace(silent, Note());
    m_announcements.Play(1, Note());
    EXPECT_TRUE(m_stop.Stop());
    Pass(seconds(4));
    EXPECT_EQ(m_engine.played, Texts{});
    EXPECT_FALSE(m_playing.Current());
}

TEST_F(PlayStopTest, StoppedWhileItsDelaysRunItIsNeitherHeardNorSeen) {
    Play(5000, 5000, milliseconds(200));
    EXPECT_TRUE(m_stop.Stop());
    Pass(seconds(10));
    const Texts events = m_events.Take();
    EXPECT_EQ(m_engine.played, Texts{});
    EXPECT_FALSE(Has(events, "shown 1 on 11 \"One & more\"  600000"));
    EXPECT_TRUE(m_popups.Standing().empty());
    EXPECT_TRUE(Has(events, "restored 1 40"));
    EXPECT_EQ(events.back(), "ended 1");
}

TEST_F(PlayStopTest, StoppedTwiceItIsStoppedOnce) {
    Play(10, 0, milliseconds(100));
    EXPECT_TRUE(m_stop.Stop());
    EXPECT_TRUE(m_stop.Stop());
    const Texts events = m_events.Take();
    EXPECT_EQ(std::count(events.begin(), events.end(), "stopped 1"), 1);
}

TEST_F(PlayStopTest, WhatPlaysNextIsHeardAndSeen) {
    Play(10, 0, milliseconds(100));
    EXPECT_TRUE(m_stop.Stop());
    Pass(seconds(4));
    Play(10, 10, milliseconds(100));
    EXPECT_EQ(m_engine.played.size(), 2U);
    EXPECT_EQ(m_popups.Standing().size(), 1U);
}

} // namespace

} // namespace controller
