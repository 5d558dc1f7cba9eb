#include "controller/audio/AudioEngine.h"
#include "controller/audio/FoundOutput.h"
#include "tests/controller/audio/PlayFixture.h"
#include "tests/controller/audio/TestSoundServer.h"

#include <optional>
#include <string>
#include <vector>

namespace controller::audio::test {

namespace {

/// A place that is no room is tried in a house with one room.
class AudioEngineOutputsTest : public PlayFixture {
protected:
    void Try(const std::string& output) {
        m_harness.Engine().TryOutput(ParseOutput(output), m_clip, 100,
                                     [this](const std::string& trouble) { m_told.push_back(trouble); });
    }
    [[nodiscard]] bool IsTold(std::size_t count = 1) {
        return m_harness.RunUntil([this, count] { return m_told.size() >= count; });
    }

    EngineHarness m_harness{std::vector<std::string>{FileOutput("room.wav")}};
    std::vector<std::string> m_told;
};

TEST_F(AudioEngineOutputsTest, APlaceIsHeardWholeAndNoRoomIs) {
    Try(FileOutput("place.wav"));
    ASSERT_TRUE(IsTold());
    EXPECT_EQ(m_told.front(), "");
    EXPECT_TRUE(m_harness.CloseAndWait());
    ExpectWholeClip("place.wav");
    EXPECT_EQ(SizeOf("room.wav"), 0U);
    EXPECT_TRUE(m_harness.Troubles().empty());
}

TEST_F(AudioEngineOutputsTest, WhyAPlaceIsNotHeardIsToldAndIsNoRoomsTrouble) {
    Try("gstreamer: filesink location=" + m_folder.Path("no/such/folder"));
    ASSERT_TRUE(IsTold());
    EXPECT_NE(m_told.front(), "");
    EXPECT_EQ(m_told.front().find("no room can be heard"), std::string::npos) << m_told.front();
    EXPECT_TRUE(m_harness.Troubles().empty());
}

TEST_F(AudioEngineOutputsTest, NothingIsTriedWhileAnAnnouncementPlaysOrAnotherPlaceIsTried) {
    Try(FileOutput("place.wav"));
    Try(FileOutput("other.wav"));
    ASSERT_TRUE(IsTold(2));
    EXPECT_EQ(m_told, (std::vector<std::string>{"another output is being tested", ""}));
    EXPECT_TRUE(m_harness.CloseAndWait());
    m_harness.OpenWithAllRooms();
    Try(FileOutput("other.wav"));
    ASSERT_TRUE(IsTold(3));
    EXPECT_EQ(m_told.back(), "an announcement is playing");
    EXPECT_EQ(SizeOf("other.wav"), 0U);
}

TEST_F(AudioEngineOutputsTest, AnAnnouncementThatBeginsEndsTheTrialAndIsHeardWhole) {
    Try(FileOutput("place.wav"));
    ASSERT_TRUE(m_harness.RunUntil([this] { return SizeOf("place.wav") > 0; })) << "the trial's beginning";
    m_harness.OpenWithAllRooms();
    const auto result = m_harness.PlayToEnd(m_clip);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->error, "");
    EXPECT_EQ(m_told, (std::vector<std::string>{"an announcement has begun"}));
    EXPECT_TRUE(m_harness.CloseAndWait());
    ExpectWholeClip("room.wav");
}

TEST_F(AudioEngineOutputsTest, SinksOfTheSoundServerAreFoundWithTheirNames) {
    if (!TestSoundServer::IsInstalled())
        GTEST_SKIP() << "pulseaudio is not installed; script/bootstrap installs it";
    TestSoundServer server(m_folder.Path(""));
    server.Start();
    ASSERT_TRUE(m_harness.RunUntil([&] { return server.IsListening(); })) << "the sound server's start";
    std::optional<std::vector<FoundOutput>> found;
    m_harness.Engine().FindOutputs([&](const std::vector<FoundOutput>& places) { found = places; });
    ASSERT_TRUE(m_harness.RunUntil([&] { return found.has_value(); }));
    ASSERT_FALSE(found->empty());
    EXPECT_EQ(found->front().kind, "sound_server");
    EXPECT_EQ(TextOf(found->front().output), "pulse: heard");
    EXPECT_FALSE(found->front().name.empty());
    EXPECT_TRUE(found->front().isDefault);
}

} // namespace

} // namespace controller::audio::test
