#include "controller/audio/FoundOutput.h"

#include "tests/controller/audio/EngineHarness.h"
#include "tests/controller/audio/Sounds.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace controller::audio::test {

TEST(FoundOutputTest, TheLineIsWhatTheHouseFileTakes) {
    EXPECT_EQ(LineFor({"auto", ""}), "output: auto");
    EXPECT_EQ(LineFor({"pulse", "alsa_output.pci-0000_00.analog-stereo"}),
              "output: {pulse: alsa_output.pci-0000_00.analog-stereo}");
    EXPECT_EQ(LineFor({"pulse", "kitchen duck=off"}), "output: {pulse: kitchen, duck: off}");
    EXPECT_EQ(LineFor({"gstreamer", "alsasink device=plughw:CARD=PCH,DEV=0"}),
              "output: {gstreamer: \"alsasink device=plughw:CARD=PCH,DEV=0\"}");
    EXPECT_EQ(LineFor({"snapcast", "kitchen server=nas:1705 buffer_ms=400"}),
              "output: {snapcast: kitchen, server: \"nas:1705\", buffer_ms: 400}");
    EXPECT_EQ(LineFor({"pulse", "12"}), "output: {pulse: \"12\"}") << "a number would be none";
    EXPECT_EQ(LineFor({"gstreamer", "fakesink name=\"a b\""}),
              "output: {gstreamer: \"fakesink name=\\\"a b\\\"\"}");
}

TEST(FoundOutputTest, ARoomIsHeardThereWhateverElseItsOutputSays) {
    const OutputDescription place{"pulse", "kitchen"};
    EXPECT_TRUE(IsAt({"pulse", "kitchen"}, place));
    EXPECT_TRUE(IsAt({"pulse", "kitchen duck=off"}, place));
    EXPECT_FALSE(IsAt({"pulse", "kitchen2"}, place));
    EXPECT_FALSE(IsAt({"gstreamer", "kitchen"}, place));
    EXPECT_FALSE(IsAt({"gstreamer", "alsasink device=b name=a"}, {"gstreamer", "alsasink device=b"}));
}

TEST(FoundOutputTest, SoundCardsAreThoseThatTheKernelTellsOfAndThatPlay) {
    const TemporaryFolder folder;
    std::filesystem::create_directories(folder.Path("card0"));
    WriteBytes(folder.Path("card0/id"), "PCH\n");
    WriteBytes(folder.Path("pcm"), "00-00: ALC295 Analog : ALC295 Analog : playback 1 : capture 1\n"
                                   "00-02: ALC295 Alt Analog : ALC295 Alt Analog : capture 1\n"
                                   "01-03: HDMI 0 : HDMI 0 : playback 1\n"
                                   "what is this\n");
    const auto cards = CardsIn(folder.Path(""));
    ASSERT_EQ(cards.size(), 2U);
    EXPECT_EQ(cards[0].kind, "sound_card");
    EXPECT_EQ(cards[0].name, "PCH: ALC295 Analog");
    EXPECT_EQ(TextOf(cards[0].output), "gstreamer: alsasink device=plughw:CARD=PCH,DEV=0");
    EXPECT_TRUE(cards[0].isDefault);
    EXPECT_EQ(cards[1].name, "HDMI 0");
    EXPECT_EQ(TextOf(cards[1].output), "gstreamer: alsasink device=plughw:CARD=1,DEV=3");
    EXPECT_FALSE(cards[1].isDefault);
    EXPECT_TRUE(CardsIn(folder.Path("nowhere")).empty());
}

} // namespace controller::audio::test
