#include "tests/controller/audio/PlayFixture.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace controller::audio::test {

namespace {

using std::chrono::milliseconds;

/// What hangs is given up soon; a healthy output keeps these bounds under sanitizers too.
EngineLimits ShortLimits() {
    EngineLimits limits;
    limits.readiness = milliseconds(400);
    limits.opening = milliseconds(2000);
    limits.stall = milliseconds(1500);
    limits.closing = milliseconds(1500);
    return limits;
}

} // namespace

class AudioEngineFaultTest : public PlayFixture {
protected:
    [[nodiscard]] std::string MakeFifo(const std::string& name) const {
        std::string path = m_folder.Path(name);
        EXPECT_EQ(mkfifo(path.c_str(), 0600), 0);
        return path;
    }

    /// Opens the other end of a FIFO for a moment, so that whoever hangs in it comes back.
    static void Release(const std::string& fifo) {
        const int descriptor = open(fifo.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC); // NOLINT(*-vararg)
        if (descriptor >= 0)
            close(descriptor);
    }

    /// Plays in a healthy room and one that is not; expects the healthy one to be perfect.
    void ExpectOtherRoomPerfect(EngineHarness& harness, RoomTrouble::Kind kind) {
        harness.OpenWithAllRooms();
        const auto result = harness.PlayToEnd(m_clip);
        ASSERT_TRUE(result);
        EXPECT_EQ(result->error, "");
        EXPECT_EQ(result->rooms, (Rooms{1}));
        ExpectWholeClip("good.wav");
        EXPECT_TRUE(harness.RunUntil([&] { return harness.HasTrouble(2, kind); }));
        EXPECT_EQ(harness.Troubles().size(), 1U);
        EXPECT_FALSE(harness.Troubles().front().reason.empty());
    }
};

TEST_F(AudioEngineFaultTest, ARefusedOutputIsReportedAndLeavesTheOtherRoomPerfect) {
    EngineHarness harness(
        {FileOutput("good.wav"), "gstreamer: filesink location=" + m_folder.Path("no/such/folder")});
    ExpectOtherRoomPerfect(harness, RoomTrouble::Kind::Refused);
}

TEST_F(AudioEngineFaultTest, NobodyWaitsForTheSilenceThatARefusedOutputWouldHaveHad) {
    std::vector<RoomConfig> rooms(2);
    rooms[0] = {1, "Good", ParseOutput(FileOutput("good.wav"))};
    rooms[1] = {2, "Gone", ParseOutput("gstreamer: filesink location=" + m_folder.Path("no/such/folder")),
                std::chrono::seconds(20)};
    EngineHarness harness(rooms);
    harness.OpenWithAllRooms();
    ASSERT_TRUE(harness.RunUntil([&] { return harness.HasTrouble(2, RoomTrouble::Kind::Refused); }));
    const auto result = harness.PlayToEnd(m_clip);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->rooms, Rooms{1});
    EXPECT_LT(result->startDelay, std::chrono::seconds(20));
    ExpectWholeClip("good.wav");
}

TEST_F(AudioEngineFaultTest, ARecordingWhoseFolderCannotBeMadeIsRefused) {
    WriteBytes(m_folder.Path("file"), "no folder");
    EngineHarness harness({FileOutput("good.wav"), FileOutput("file/room.wav")});
    ExpectOtherRoomPerfect(harness, RoomTrouble::Kind::Refused);
}

TEST_F(AudioEngineFaultTest, ARecordingIntoAFifoIsRefusedWithoutHanging) {
    EngineHarness harness({FileOutput("good.wav"), "file: " + MakeFifo("fifo")});
    ExpectOtherRoomPerfect(harness, RoomTrouble::Kind::Refused);
}

TEST_F(AudioEngineFaultTest, AnOutputThatFailsWhilePlayingLeavesTheOtherRoomPerfect) {
    EngineHarness harness(
        {FileOutput("good.wav"), "gstreamer: identity error-after=60 ! fakesink sync=true"});
    ExpectOtherRoomPerfect(harness, RoomTrouble::Kind::Failed);
}

TEST_F(AudioEngineFaultTest, AnOutputThatHangsWhileOpeningLeavesTheOtherRoomPerfect) {
    const auto fifo = MakeFifo("fifo");
    EngineHarness harness({FileOutput("good.wav"), "gstreamer: filesink location=" + fifo}, ShortLimits());
    ExpectOtherRoomPerfect(harness, RoomTrouble::Kind::Hanging);
    Release(fifo);
}

TEST_F(AudioEngineFaultTest, AnOutputThatHangsWhilePlayingLeavesTheOtherRoomPerfect) {
    // Its reader never reads: the pipe is full after a sixth of a second.
    const auto fifo = MakeFifo("fifo");
    const int reader = open(fifo.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC); // NOLINT(*-vararg)
    ASSERT_GE(reader, 0);
    EngineHarness harness({FileOutput("good.wav"), "gstreamer: filesink sync=true location=" + fifo},
                          ShortLimits());
    ExpectOtherRoomPerfect(harness, RoomTrouble::Kind::Hanging);
    close(reader);
}

TEST_F(AudioEngineFaultTest, AnOutputWithoutAPaceOfItsOwnIsFedInRealTime) {
    EngineHarness harness({FileOutput("good.wav"), "gstreamer: filesink location=" + m_folder.Path("raw")});
    harness.OpenWithAllRooms();
    const auto result = harness.PlayToEnd(m_clip);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->rooms, (Rooms{1, 2}));
    ExpectWholeClip("good.wav");
    // 8 bytes a frame; the first room's recording holds the same time.
    const auto frames = static_cast<std::int64_t>(SizeOf("raw") / 8);
    EXPECT_LE(frames, Recorded("good.wav").Frames());
    EXPECT_GE(frames, static_cast<std::int64_t>(kClipFrames) + kTailFrames);
}

TEST_F(AudioEngineFaultTest, WhenEveryRoomFailsThePlayEndsWithTheReasons) {
    EngineHarness harness({"gstreamer: filesink location=" + m_folder.Path("no/folder"),
                           "gstreamer: identity error-after=5 ! fakesink sync=true"});
    harness.OpenWithAllRooms();
    const auto result = harness.PlayToEnd(m_clip);
    ASSERT_TRUE(result);
    EXPECT_NE(result->error.find("room1"), std::string::npos) << result->error;
    EXPECT_NE(result->error.find("room2"), std::string::npos) << result->error;
    EXPECT_TRUE(result->rooms.empty());
    EXPECT_EQ(harness.Troubles().size(), 2U);
    const auto again = harness.PlayToEnd(m_clip);
    ASSERT_TRUE(again);
    EXPECT_NE(again->error, "");
}

TEST_F(AudioEngineFaultTest, TheOnlyRoomHangingEndsThePlayWithAnError) {
    const auto fifo = MakeFifo("fifo");
    EngineHarness harness({"gstreamer: filesink location=" + fifo}, ShortLimits());
    harness.OpenWithAllRooms();
    const auto result = harness.PlayToEnd(m_clip);
    ASSERT_TRUE(result);
    EXPECT_NE(result->error.find("did not open"), std::string::npos) << result->error;
    EXPECT_TRUE(harness.HasTrouble(1, RoomTrouble::Kind::Hanging));
    Release(fifo);
}

TEST_F(AudioEngineFaultTest, ARoomThatHungIsTriedAgainByTheNextAnnouncement) {
    const auto fifo = MakeFifo("fifo");
    EngineHarness harness({"gstreamer: filesink sync=true location=" + fifo}, ShortLimits());
    harness.OpenWithAllRooms();
    const auto hung = harness.PlayToEnd(m_clip);
    ASSERT_TRUE(hung);
    EXPECT_NE(hung->error, "");
    ASSERT_TRUE(harness.CloseAndWait());
    // A pipe that somebody reads and that holds the whole clip.
    const int reader = open(fifo.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC); // NOLINT(*-vararg)
    ASSERT_GE(reader, 0);
    ASSERT_GT(fcntl(reader, F_SETPIPE_SZ, 1 << 20), 0); // NOLINT(*-vararg)
    harness.OpenWithAllRooms();
    const auto result = harness.PlayToEnd(m_clip);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->error, "");
    EXPECT_EQ(result->rooms, (Rooms{1}));
    close(reader);
}

TEST_F(AudioEngineFaultTest, AKnownTroubleHoldsUpTheOtherRoomsOnlyOnce) {
    const auto fifo = MakeFifo("fifo");
    auto limits = ShortLimits();
    limits.readiness = milliseconds(1000);
    limits.opening = milliseconds(60'000);
    EngineHarness harness({FileOutput("good-%n.wav"), "gstreamer: filesink location=" + fifo}, limits);
    std::vector<std::chrono::microseconds> delays;
    for (int round = 1; round <= 3; ++round) {
        harness.OpenWithAllRooms();
        const auto result = harness.PlayToEnd(m_clip);
        ASSERT_TRUE(result);
        EXPECT_EQ(result->rooms, (Rooms{1}));
        delays.push_back(result->startDelay);
        ASSERT_TRUE(harness.CloseAndWait());
        ExpectWholeClip("good-" + std::to_string(round) + ".wav");
    }
    EXPECT_GT(delays[0], limits.readiness / 2);
    EXPECT_LT(delays[1], limits.readiness / 2);
    EXPECT_LT(delays[2], limits.readiness / 2);
    Release(fifo);
}

TEST_F(AudioEngineFaultTest, ARoomIsRefusedAtOnceWhileTooManyOfItsOutputsHang) {
    const auto fifo = MakeFifo("fifo");
    auto limits = ShortLimits();
    limits.opening = milliseconds(100);
    limits.hangingPerRoom = 2;
    EngineHarness harness({"gstreamer: filesink location=" + fifo}, limits);
    for (int round = 0; round < 3; ++round) {
        harness.OpenWithAllRooms();
        const auto result = harness.PlayToEnd(m_clip);
        ASSERT_TRUE(result);
        EXPECT_NE(result->error, "");
        ASSERT_TRUE(harness.CloseAndWait());
    }
    ASSERT_EQ(harness.Troubles().size(), 3U);
    EXPECT_EQ(harness.Troubles()[1].kind, RoomTrouble::Kind::Hanging);
    EXPECT_EQ(harness.Troubles()[2].kind, RoomTrouble::Kind::Refused);
    Release(fifo);
}

TEST_F(AudioEngineFaultTest, TheEngineEndsWithinItsBoundAlthoughAnOutputHangs) {
    const auto fifo = MakeFifo("fifo");
    EngineHarness harness({FileOutput("good.wav"), "gstreamer: filesink location=" + fifo}, ShortLimits());
    harness.OpenWithAllRooms();
    const auto begin = std::chrono::steady_clock::now();
    harness.DestroyEngine();
    EXPECT_LT(std::chrono::steady_clock::now() - begin, ShortLimits().closing + std::chrono::seconds(2));
    Release(fifo);
}

TEST_F(AudioEngineFaultTest, ARoomThatOpensAfterTheStartPlaysInStepAndIsReported) {
    const auto fifo = MakeFifo("fifo");
    EngineHarness harness({FileOutput("good.wav"), "gstreamer: filesink sync=true location=" + fifo},
                          ShortLimits());
    harness.OpenWithAllRooms();
    std::optional<PlayResult> result;
    harness.Engine().Play(m_clip, [&](const PlayResult& played) { result = played; });
    ASSERT_TRUE(
        harness.RunUntil([&] { return Recorded("good.wav").First() >= 0 || SizeOf("good.wav") > 150'000; }));
    const int reader = open(fifo.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC); // NOLINT(*-vararg)
    ASSERT_GE(reader, 0);
    ASSERT_GT(fcntl(reader, F_SETPIPE_SZ, 1 << 20), 0); // NOLINT(*-vararg)
    ASSERT_TRUE(harness.RunUntil([&] { return result.has_value(); }));
    EXPECT_EQ(result->error, "");
    EXPECT_EQ(result->rooms, (Rooms{1, 2}));
    EXPECT_TRUE(harness.HasTrouble(2, RoomTrouble::Kind::Late));
    ExpectWholeClip("good.wav");
    close(reader);
}

TEST_F(AudioEngineFaultTest, FilesThatCannotBePlayedEndThePlayAtOnceWithTheReason) {
    const std::string whole = ReadBytes(m_clip);
    WriteBytes(m_folder.Path("half.wav"), whole.substr(0, whole.size() / 2));
    WriteBytes(m_folder.Path("header.wav"), whole.substr(0, 44));
    WriteBytes(m_folder.Path("empty.wav"), "");
    WriteBytes(m_folder.Path("text.wav"),
               "This is not a sound, but a text that somebody gave the wrong name.");
    EngineHarness harness({FileOutput("room-%n.wav")});
    harness.OpenWithAllRooms();
    const std::vector<std::pair<std::string, std::string>> cases = {{"half.wav", "truncated"},
                                                                    {"header.wav", "truncated"},
                                                                    {"empty.wav", "empty"},
                                                                    {"text.wav", "not a playable sound file"},
                                                                    {"missing.wav", "there is no such"},
                                                                    {".", "not a regular file"}};
    for (const auto& [name, reason] : cases) {
        const auto result = harness.PlayToEnd(m_folder.Path(name));
        ASSERT_TRUE(result) << name;
        EXPECT_NE(result->error.find(reason), std::string::npos) << name << ": " << result->error;
        EXPECT_TRUE(result->rooms.empty()) << name;
        EXPECT_EQ(result->startDelay.count(), -1) << name;
    }
    // The stream is as good as before.
    const auto result = harness.PlayToEnd(m_clip);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->error, "");
    ExpectWholeClip("room-1.wav");
    EXPECT_TRUE(harness.Troubles().empty());
}

TEST_F(AudioEngineFaultTest, WithoutASoundDeviceAutoIsSilentInRealTimeWhichIsTroubleEachTime) {
    if (std::filesystem::exists("/dev/snd"))
        GTEST_SKIP() << "this machine has a sound card";
    // No sound server is found here, whatever the machine has.
    setenv("PULSE_SERVER", m_folder.Path("nowhere").c_str(), 1);
    EngineHarness harness({"auto", "auto", FileOutput("good-%n.wav")});
    for (std::size_t round = 1; round <= 2; ++round) {
        harness.OpenWithAllRooms();
        const auto result = harness.PlayToEnd(m_clip);
        ASSERT_TRUE(result);
        EXPECT_EQ(result->error, "");
        EXPECT_EQ(result->rooms, (Rooms{3}));
        ASSERT_TRUE(harness.CloseAndWait());
        ExpectWholeClip("good-" + std::to_string(round) + ".wav");
        EXPECT_EQ(harness.Troubles().size(), round * 2);
    }
    EXPECT_TRUE(harness.HasTrouble(1, RoomTrouble::Kind::Silent));
    EXPECT_TRUE(harness.HasTrouble(2, RoomTrouble::Kind::Silent));
    EXPECT_EQ(
        std::count(harness.Log().begin(), harness.Log().end(),
                   "warning: room 1 (room1): its output is silent: this machine has no sound device, and no "
                   "sound server runs"),
        2);
}

TEST_F(AudioEngineFaultTest, SilenceForWantOfADeviceIsNoSuccess) {
    if (std::filesystem::exists("/dev/snd"))
        GTEST_SKIP() << "this machine has a sound card";
    setenv("PULSE_SERVER", m_folder.Path("nowhere").c_str(), 1);
    EngineHarness harness(std::vector<std::string>{"auto"});
    harness.OpenWithAllRooms();
    const auto begin = std::chrono::steady_clock::now();
    const auto result = harness.PlayToEnd(m_clip);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->error,
              "no room can be heard: room1: this machine has no sound device, and no sound server runs");
    EXPECT_TRUE(result->rooms.empty());
    EXPECT_GE(std::chrono::steady_clock::now() - begin, milliseconds(500)) << "in real time";
}

} // namespace controller::audio::test
