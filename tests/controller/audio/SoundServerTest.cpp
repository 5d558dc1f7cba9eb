#include "tests/controller/audio/PlayFixture.h"
#include "tests/controller/audio/TestSoundServer.h"

#include <cstdlib>
#include <filesystem>

namespace controller::audio::test {

namespace {

/// A room with the output "auto", on a machine whose sound servers are those of the test.
class SoundServerTest : public PlayFixture {
protected:
    void SetUp() override {
        if (!TestSoundServer::IsInstalled())
            GTEST_SKIP() << "pulseaudio is not installed; script/bootstrap installs it";
        if (std::filesystem::exists("/dev/snd"))
            GTEST_SKIP() << "this machine has a sound card, which stands in for a missing server";
    }

    /// Plays, and gives the play's error.
    std::string Play() {
        m_harness.OpenWithAllRooms();
        const auto result = m_harness.PlayToEnd(m_clip);
        EXPECT_TRUE(m_harness.CloseAndWait());
        return result ? result->error : "no end";
    }

    void ExpectHeard() {
        m_server.Start();
        ASSERT_TRUE(m_harness.RunUntil([this] { return m_server.IsListening(); }))
            << "the sound server's start";
        m_server.Record();
        ASSERT_TRUE(m_harness.RunUntil([this] { return m_server.IsRecording(); })) << "the recording's start";
        const auto troubles = m_harness.Troubles().size();
        EXPECT_EQ(Play(), "");
        EXPECT_GT(m_server.EndRecording(), kClipFrames);
        EXPECT_EQ(m_harness.Troubles().size(), troubles);
    }

    void ExpectTrouble() {
        const auto troubles = m_harness.Troubles().size();
        EXPECT_NE(Play().find("no sound server runs"), std::string::npos);
        ASSERT_EQ(m_harness.Troubles().size(), troubles + 1);
        EXPECT_EQ(m_harness.Troubles().back().kind, RoomTrouble::Kind::Silent);
    }

    TestSoundServer m_server{m_folder.Path("")};
    EngineHarness m_harness{std::vector<std::string>{"auto"}};
};

TEST_F(SoundServerTest, AServerThatStartsLateIsFoundByTheNextAnnouncement) {
    ExpectTrouble();
    ExpectHeard();
}

TEST_F(SoundServerTest, AServerThatWasKilledAndComesBackIsFoundByTheNextAnnouncement) {
    ExpectHeard();
    m_server.Kill();
    ExpectTrouble();
    ExpectHeard();
}

} // namespace

} // namespace controller::audio::test
