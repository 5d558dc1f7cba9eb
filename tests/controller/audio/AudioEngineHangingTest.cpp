#include "tests/controller/audio/PlayFixture.h"
#include "tests/controller/audio/TestSoundServer.h"
#include "tests/controller/audio/multicast/Receiver.h"

#include <algorithm>
#include <chrono>
#include <functional>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace controller::audio::test {

namespace {

using std::chrono::milliseconds;

/// A zone and a recording, beside rooms whose outputs hang.
class AudioEngineHangingTest : public PlayFixture {
protected:
    void SetUp() override {
        if (!m_receiver.CanHear())
            GTEST_SKIP() << "this machine sends no multicast to itself";
    }

    /// Healthy outputs keep them under sanitizers, too.
    static EngineLimits Limits() {
        EngineLimits limits;
        limits.readiness = milliseconds(1000);
        limits.opening = limits.stall = limits.closing = milliseconds(2000);
        return limits;
    }

    [[nodiscard]] std::vector<std::string> Beside(const std::vector<std::string>& hanging) const {
        std::vector<std::string> outputs = {FileOutput("room-%n.wav"), m_receiver.Output()};
        outputs.insert(outputs.end(), hanging.begin(), hanging.end());
        return outputs;
    }

    /// One whole announcement: 200 ms of silence, the clip, 200 ms of silence.
    void ExpectWholeZone() const {
        const auto packets = m_receiver.Take();
        ASSERT_EQ(packets.size(), 10 + 25 + 10U);
        for (std::size_t index = 0; index < packets.size(); ++index) {
            const bool isSilent = std::all_of(packets[index].begin() + 12, packets[index].end(),
                                              [](std::uint8_t byte) { return byte == 0xff; });
            EXPECT_EQ(isSilent, index < 10 || index >= 35) << index;
        }
    }

    static bool Holds(const Rooms& rooms, std::uint32_t room) {
        return std::find(rooms.begin(), rooms.end(), room) != rooms.end();
    }

    /// Plays in all rooms; `midway` comes when the clip is heard. The zone and the recording are whole.
    void Play(EngineHarness& harness, unsigned take, const std::function<void()>& midway = {}) {
        const std::string recording = "room-" + std::to_string(take) + ".wav";
        harness.OpenWithAllRooms();
        harness.Engine().Play(m_clip, [&](const PlayResult& played) { m_result = played; });
        ASSERT_TRUE(harness.RunUntil([&] { return Recorded(recording).First() >= 0; }));
        if (midway)
            midway();
        ASSERT_TRUE(harness.RunUntil([&] { return !m_result.rooms.empty(); }));
        EXPECT_EQ(m_result.error, "");
        EXPECT_TRUE(Holds(m_result.rooms, 1) && Holds(m_result.rooms, 2));
        EXPECT_TRUE(harness.CloseAndWait());
        ExpectWholeClip(recording);
        ExpectWholeZone();
        m_delays.push_back(std::exchange(m_result, {}).startDelay);
    }

    Receiver m_receiver{"239.255.83.3"};
    PlayResult m_result;
    std::vector<std::chrono::microseconds> m_delays;
};

TEST_F(AudioEngineHangingTest, RoomsThatHangInTheirOpeningTheirPlayAndTheirClosingTouchNoOtherKind) {
    // Nobody opens the one for reading, and nobody reads from the other: it is full after a sixth of a
    // second.
    const std::string unopened = m_folder.Path("unopened");
    const std::string unread = m_folder.Path("unread");
    ASSERT_EQ(mkfifo(unopened.c_str(), 0600) + mkfifo(unread.c_str(), 0600), 0);
    const int reader = open(unread.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC); // NOLINT(*-vararg)
    ASSERT_GE(reader, 0);
    EngineHarness harness(Beside({"gstreamer: filesink location=" + unopened,
                                  "gstreamer: filesink sync=true location=" + unread}),
                          Limits());
    const auto setVolumes = [&] {
        for (std::uint32_t room = 3; room <= 4; ++room)
            harness.Engine().SetVolume(room, 10);
    };
    Play(harness, 1, setVolumes);
    Play(harness, 2, setVolumes);
    ASSERT_EQ(m_delays.size(), 2U);
    // What is known to hang is waited for no more.
    EXPECT_LT(m_delays[1], Limits().readiness);
    EXPECT_TRUE(harness.HasTrouble(4, RoomTrouble::Kind::Hanging));
    close(reader);
    const int opened = open(unopened.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC); // NOLINT(*-vararg)
    close(opened);
}

TEST_F(AudioEngineHangingTest, ASoundServerThatStandsStillTouchesNoOtherKind) {
    if (!TestSoundServer::IsInstalled())
        GTEST_SKIP() << "pulseaudio is not installed; script/bootstrap installs it";
    TestSoundServer server(m_folder.Path(""));
    EngineHarness harness(Beside({"pulse: heard duck=off", "gstreamer: pulsesink device=heard"}), Limits());
    server.Start();
    ASSERT_TRUE(harness.RunUntil([&] { return server.IsListening(); })) << "the sound server's start";
    Play(harness, 1, [&] { server.Pause(); }); // hangs in its play and its closing
    Play(harness, 2);                          // and in its opening
    server.Resume();
    harness.DestroyEngine();
}

} // namespace

} // namespace controller::audio::test
