#include "controller/audio/AudioEngine.h"
#include "tests/controller/audio/PlayFixture.h"
#include "tests/controller/audio/TestSoundServer.h"
#include "tests/controller/support/TestLog.h"

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace controller::audio::test {

namespace {

using State = Health::State;

/// An engine that tells whether its rooms would be heard.
class AudioEngineHealthTest : public PlayFixture {
protected:
    void Begin(const std::vector<std::string>& outputs) {
        std::vector<RoomConfig> rooms;
        for (const std::string& output : outputs) {
            RoomConfig room;
            room.id = static_cast<std::uint32_t>(rooms.size() + 1);
            room.output = ParseOutput(output);
            rooms.push_back(room);
        }
        EngineServices services{m_loop, m_log.log, {}};
        services.roomHealth = [this](std::uint32_t room, const Health& health) {
            m_health[room] = health;
        };
        m_engine = std::make_unique<AudioEngine>(rooms, services, EngineHarness::PatientLimits());
    }

    void TearDown() override { m_engine = nullptr; }

    [[nodiscard]] bool IsTold(std::uint32_t room) {
        return m_loop.RunUntil([&] { return m_health.count(room) != 0; });
    }

    /// Waits for what is told of the room next.
    Health Next(std::uint32_t room) {
        EXPECT_TRUE(IsTold(room)) << "nothing is told of room " << room;
        Health health = m_health[room];
        m_health.erase(room);
        return health;
    }

    void Play() {
        bool hasEnded = false;
        m_engine->OpenStream({});
        m_engine->AddRoom(1);
        m_engine->Play(m_clip, [&](const PlayResult& /*result*/) { hasEnded = true; });
        EXPECT_TRUE(m_loop.RunUntil([&] { return hasEnded; }));
        m_engine->CloseStream({});
    }

    DriverLoop m_loop;
    TestLog m_log;
    std::map<std::uint32_t, Health> m_health; ///< as told last
    std::unique_ptr<AudioEngine> m_engine;
};

TEST_F(AudioEngineHealthTest, RecordingsAndSilenceAreWhatTheyAreAndAFolderThatCannotBeMadeIsTold) {
    WriteBytes(m_folder.Path("file"), "no folder");
    Begin({FileOutput("new/room.wav"), "silent", FileOutput("file/room.wav")});
    EXPECT_EQ(Next(1).state, State::Healthy);
    const Health silent = Next(2);
    EXPECT_EQ(silent.state, State::Silent);
    EXPECT_EQ(silent.reason, "");
    const Health broken = Next(3);
    EXPECT_EQ(broken.state, State::Unheard);
    EXPECT_NE(broken.reason.find("nothing can be written to"), std::string::npos) << broken.reason;
}

TEST_F(AudioEngineHealthTest, AMachineWithoutASoundDeviceIsToldBeforeAnythingIsLost) {
    if (std::filesystem::exists("/dev/snd"))
        GTEST_SKIP() << "this machine has a sound card";
    Begin({"auto", "pulse: heard"});
    const Health machine = Next(1);
    EXPECT_EQ(machine.state, State::Silent);
    EXPECT_EQ(machine.reason, "this machine has no sound device, and no sound server runs");
    const Health server = Next(2);
    EXPECT_EQ(server.state, State::Silent);
    EXPECT_NE(server.reason.find("no sound server answers"), std::string::npos) << server.reason;
}

TEST_F(AudioEngineHealthTest, AZoneToWhichThereIsNoWayIsToldAndOfTheOthersNobodyKnows) {
    Begin({"multicast: 239.255.10.1:5004 interface=nosuch0", "multicast: 239.255.10.2:5004 interface=lo",
           FileOutput("room.wav")});
    const Health none = Next(1);
    EXPECT_EQ(none.state, State::Silent);
    EXPECT_EQ(none.reason, "nothing can be sent to 239.255.10.1:5004 through nosuch0: No such device");
    EXPECT_EQ(Next(3).state, State::Healthy);
    EXPECT_TRUE(m_health.empty());
}

TEST_F(AudioEngineHealthTest, WhatOnlyPlayingTellsIsToldByPlaying) {
    Begin({"gstreamer: fakesink sync=true"});
    m_loop.RunPosted();
    EXPECT_TRUE(m_health.empty());
    Play();
    EXPECT_EQ(Next(1).state, State::Healthy);
}

TEST_F(AudioEngineHealthTest, WhatFailsWhenItPlaysIsUnheardForThatReason) {
    Begin({"gstreamer: filesink location=" + m_folder.Path("no/such/folder")});
    Play();
    const Health health = Next(1);
    EXPECT_EQ(health.state, State::Unheard);
    EXPECT_FALSE(health.reason.empty());
}

TEST_F(AudioEngineHealthTest, ASoundServerThatGoesIsToldAtOnceAndThatItIsBackByWhatPlays) {
    if (!TestSoundServer::IsInstalled())
        GTEST_SKIP() << "pulseaudio is not installed; script/bootstrap installs it";
    TestSoundServer server(m_folder.Path(""));
    server.Start();
    ASSERT_TRUE(m_loop.RunUntil([&] { return server.IsListening(); })) << "the sound server's start";
    Begin({"pulse: heard", "pulse: bath"});
    EXPECT_EQ(Next(1).state, State::Healthy);
    EXPECT_EQ(Next(2).reason, "the sound server has no sink \"bath\"; it has heard");
    server.Kill();
    const Health gone = Next(1);
    EXPECT_EQ(gone.state, State::Silent);
    EXPECT_NE(gone.reason.find("no sound server answers"), std::string::npos) << gone.reason;
    server.Start();
    ASSERT_TRUE(m_loop.RunUntil([&] { return server.IsListening(); })) << "the sound server's start";
    Play();
    EXPECT_EQ(Next(1).state, State::Healthy);
}

} // namespace

} // namespace controller::audio::test
