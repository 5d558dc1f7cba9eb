#include "tests/controller/audio/PlayFixture.h"

#include <filesystem>
#include <memory>

namespace controller::audio::test {

class AudioEngineOrderTest : public PlayFixture {
protected:
    AudioEngineOrderTest() : m_harness({FileOutput("one-%n.wav"), FileOutput("two-%n.wav")}) {}

    void Play() {
        m_harness.Engine().Play(m_clip, [this](const PlayResult& result) { m_results.push_back(result); });
    }

    [[nodiscard]] bool WaitForResults(std::size_t count) {
        return m_harness.RunUntil([&] { return m_results.size() >= count; });
    }

    /// Waits until the clip is being heard.
    [[nodiscard]] bool WaitForSound(const std::string& name) {
        return m_harness.RunUntil([&] { return SizeOf(name) > 50'000; });
    }

    EngineHarness m_harness;
    std::vector<PlayResult> m_results;
};

TEST_F(AudioEngineOrderTest, PlayWithoutStreamIsAnsweredWithAnError) {
    Play();
    EXPECT_TRUE(m_results.empty()) << "no callback runs inside a call";
    ASSERT_TRUE(WaitForResults(1));
    EXPECT_EQ(m_results[0].error, "no stream is open");
    EXPECT_TRUE(m_results[0].rooms.empty());
}

TEST_F(AudioEngineOrderTest, PlayWithoutRoomsIsAnsweredWithAnError) {
    m_harness.Engine().OpenStream({});
    Play();
    ASSERT_TRUE(WaitForResults(1));
    EXPECT_EQ(m_results[0].error, "no room was added to the stream");
}

TEST_F(AudioEngineOrderTest, ASecondPlayIsRefusedAndTheFirstGoesOn) {
    m_harness.OpenWithAllRooms();
    Play();
    Play();
    ASSERT_TRUE(WaitForResults(2));
    EXPECT_EQ(m_results[0].error, "another file is still playing");
    EXPECT_EQ(m_results[1].error, "");
    EXPECT_EQ(m_results[1].rooms, (Rooms{1, 2}));
    ExpectWholeClip("one-1.wav");
    ExpectWholeClip("two-1.wav");
}

TEST_F(AudioEngineOrderTest, ClosingWhilePlayingEndsThePlayAndTheOutputsInGoodOrder) {
    m_harness.OpenWithAllRooms();
    Play();
    ASSERT_TRUE(WaitForSound("one-1.wav"));
    ASSERT_TRUE(m_harness.CloseAndWait());
    ASSERT_EQ(m_results.size(), 1U);
    EXPECT_EQ(m_results[0].error, "the stream was closed");
    const auto recording = Recorded("one-1.wav");
    EXPECT_EQ(recording.channels, kChannels) << "the recording is a whole WAV file";
    EXPECT_GT(recording.Last() - recording.First(), 0);
    EXPECT_LT(recording.Last() - recording.First() + 1, static_cast<std::int64_t>(kClipFrames));
    EXPECT_TRUE(m_harness.Troubles().empty());
}

TEST_F(AudioEngineOrderTest, ARoomRemovedWhilePlayingLeavesTheOtherPerfect) {
    m_harness.OpenWithAllRooms();
    Play();
    ASSERT_TRUE(WaitForSound("one-1.wav"));
    m_harness.Engine().RemoveRoom(2);
    ASSERT_TRUE(WaitForResults(1));
    EXPECT_EQ(m_results[0].error, "");
    EXPECT_EQ(m_results[0].rooms, (Rooms{1}));
    ExpectWholeClip("one-1.wav");
}

TEST_F(AudioEngineOrderTest, TheLastRoomsRemovalEndsThePlay) {
    m_harness.OpenWithAllRooms();
    Play();
    m_harness.Engine().RemoveRoom(2);
    m_harness.Engine().RemoveRoom(1);
    ASSERT_TRUE(WaitForResults(1));
    EXPECT_EQ(m_results[0].error, "every room was removed from the stream");
    EXPECT_TRUE(m_results[0].rooms.empty());
    m_harness.Engine().AddRoom(1);
    Play();
    ASSERT_TRUE(WaitForResults(2));
    EXPECT_EQ(m_results[1].error, "");
    EXPECT_EQ(m_results[1].rooms, (Rooms{1}));
}

TEST_F(AudioEngineOrderTest, ARoomThatIsTakenOutBeforeItsTurnIsNotOpened) {
    m_harness.OpenWithAllRooms();
    m_harness.Engine().RemoveRoom(2);
    Play();
    ASSERT_TRUE(WaitForResults(1));
    EXPECT_EQ(m_results[0].rooms, (Rooms{1}));
    EXPECT_FALSE(std::filesystem::exists(m_folder.Path("two-1.wav")));
}

TEST_F(AudioEngineOrderTest, APlayOnARoomThatWaitsForItsTurnIsNotOver) {
    m_harness.Engine().OpenStream({});
    m_harness.Engine().AddRoom(1);
    Play();
    m_harness.Engine().AddRoom(2);
    m_harness.Engine().RemoveRoom(1);
    ASSERT_TRUE(WaitForResults(1));
    EXPECT_EQ(m_results[0].error, "");
    EXPECT_EQ(m_results[0].rooms, (Rooms{2}));
}

TEST_F(AudioEngineOrderTest, OpeningWhileAStreamIsOpenClosesThatFirst) {
    m_harness.OpenWithAllRooms();
    Play();
    m_harness.OpenWithAllRooms();
    Play();
    ASSERT_TRUE(WaitForResults(2));
    EXPECT_EQ(m_results[0].error, "the stream was closed");
    EXPECT_EQ(m_results[1].error, "");
    ExpectWholeClip("one-2.wav");
    ExpectWholeClip("two-2.wav");
}

TEST_F(AudioEngineOrderTest, StreamIsReportedReadyUnlessItWasClosedBefore) {
    bool isFirstReady = false;
    bool isSecondReady = false;
    m_harness.Engine().OpenStream([&] { isFirstReady = true; });
    m_harness.Engine().CloseStream({});
    m_harness.Engine().OpenStream([&] { isSecondReady = true; });
    EXPECT_FALSE(isSecondReady) << "no callback runs inside a call";
    ASSERT_TRUE(m_harness.RunUntil([&] { return isSecondReady; }));
    EXPECT_FALSE(isFirstReady);
}

TEST_F(AudioEngineOrderTest, CallsForNothingDoNothing) {
    AudioEngine& engine = m_harness.Engine();
    engine.AddRoom(1);
    engine.RemoveRoom(1);
    engine.RemoveRoom(99);
    engine.SetVolume(99, 10);
    EXPECT_EQ(engine.Volume(99), 0U);
    EXPECT_TRUE(m_harness.CloseAndWait()) << "closing without a stream is answered";
    engine.OpenStream({});
    engine.AddRoom(99);
    engine.AddRoom(1);
    engine.AddRoom(1);
    engine.Play(m_clip, {});
    EXPECT_TRUE(m_harness.CloseAndWait());
    EXPECT_TRUE(m_harness.CloseAndWait());
    EXPECT_TRUE(m_harness.Troubles().empty());
}

TEST_F(AudioEngineOrderTest, AVolumeAboveTheScaleIsTheFullOne) {
    m_harness.Engine().SetVolume(1, 4'000'000'000U);
    EXPECT_EQ(m_harness.Engine().Volume(1), 100U);
}

TEST_F(AudioEngineOrderTest, ACallbackMayCallTheEngine) {
    AudioEngine& engine = m_harness.Engine();
    bool isClosed = false;
    const auto onClosed = [&] {
        isClosed = true;
    };
    const auto onDone = [&](const PlayResult& result) {
        m_results.push_back(result);
        engine.RemoveRoom(1);
        engine.CloseStream(onClosed);
    };
    const auto onReady = [&] {
        engine.AddRoom(1);
        engine.Play(m_clip, onDone);
    };
    engine.OpenStream(onReady);
    ASSERT_TRUE(m_harness.RunUntil([&] { return isClosed; }));
    ASSERT_EQ(m_results.size(), 1U);
    EXPECT_EQ(m_results[0].error, "");
    ExpectWholeClip("one-1.wav");
}

TEST_F(AudioEngineOrderTest, ACallbackMayDestroyTheEngine) {
    bool isDestroyed = false;
    m_harness.OpenWithAllRooms();
    m_harness.Engine().Play(m_clip, [&](const PlayResult&) {
        m_harness.DestroyEngine();
        isDestroyed = true;
    });
    ASSERT_TRUE(m_harness.RunUntil([&] { return isDestroyed; }));
    ExpectWholeClip("one-1.wav");
}

TEST_F(AudioEngineOrderTest, NoCallbackComesAfterTheEnginesDestruction) {
    bool isCalled = false;
    m_harness.Engine().OpenStream([&] { isCalled = true; });
    m_harness.Engine().AddRoom(1);
    m_harness.Engine().Play(m_clip, [&](const PlayResult&) { isCalled = true; });
    m_harness.Engine().CloseStream([&] { isCalled = true; });
    m_harness.DestroyEngine();
    m_harness.RunPosted();
    EXPECT_FALSE(isCalled);
}

} // namespace controller::audio::test
