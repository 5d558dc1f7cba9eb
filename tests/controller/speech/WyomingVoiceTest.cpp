#include "controller/audio/DemoSounds.h"
#include "tests/controller/speech/HeardSound.h"
#include "tests/controller/speech/SpeechHouse.h"
#include "tests/controller/speech/WyomingServer.h"

namespace controller {

namespace {

using namespace std::chrono_literals;

class WyomingVoiceTest : public SpeechHouse {
protected:
    WyomingVoiceTest() { m_media.Write("gong.wav", demosounds::Gong()); }

    /// Why a server that spoils its answers like this is not heard; the chime is.
    std::string ChimeAlone(WyomingServer::Spoil spoil, std::chrono::milliseconds limit = kPatience) {
        const WyomingServer server(std::move(spoil));
        m_troubles.clear();
        Open({server.AsVoice("Remote")}, limit);
        const RenderedSpeech failed = Render(Recipe("Dinner is ready", "gong"));
        m_speech.reset();
        EXPECT_EQ(failed.outcome, Outcome::Failed);
        EXPECT_EQ(failed.sound, "gong");
        EXPECT_EQ(m_troubles, std::vector<std::string>{"Remote: " + failed.error});
        return failed.error;
    }
};

TEST_F(WyomingVoiceTest, SpeaksAsTheInstalledOneDoes) {
    WyomingServer server;
    Open({server.AsVoice("Remote"), {"Here", Voice::Engine::Espeak, "en", "", {}, "", 0}});
    const RenderedSpeech remote = Render({"Dinner is ready", "Remote", 100, "gong"});
    const RenderedSpeech here = Render({"Dinner is ready", "Here", 100, "gong"});
    EXPECT_EQ(remote.error, "");
    EXPECT_EQ(HeardSound(remote.file).samples, HeardSound(here.file).samples);
    EXPECT_NE(remote.sound, here.sound);
    EXPECT_EQ(Render({"Dinner is ready", "Remote", 100, "gong"}).sound, remote.sound);
    EXPECT_EQ(server.Asked(), std::vector<std::string>{"synthesize {\"text\":\"Dinner is ready\",\"voice\":"
                                                       "{\"language\":\"en\",\"name\":\"en_GB-test\"}}"});
}

TEST_F(WyomingVoiceTest, WhatItHasSaidIsFoundWhileItIsAwayAndSpokenAnewWhenItIsAnother) {
    Voice voice;
    RenderedSpeech first;
    {
        WyomingServer server;
        voice = server.AsVoice("Remote");
        Open({voice});
        first = Render(Recipe("The post is here"));
        server.Upgrade();
        const RenderedSpeech other = Render(Recipe("Dinner is ready"));
        EXPECT_NE(Render(Recipe("The post is here")).sound, first.sound);
        EXPECT_EQ(Render(Recipe("Dinner is ready")).sound, other.sound);
        EXPECT_EQ(server.Asked().size(), 3U);
    }
    Open({voice});
    EXPECT_EQ(Render(Recipe("The post is here")).outcome, Outcome::Spoken);
    EXPECT_EQ(Render(Recipe("Somebody else")).outcome, Outcome::Failed);
}

TEST_F(WyomingVoiceTest, AVoiceThatTheServerDoesNotHaveIsToldWithThoseThatItHas) {
    WyomingServer server;
    Voice voice = server.AsVoice("Remote");
    voice.voice = "de_DE-none";
    Open({voice});
    EXPECT_EQ(Render(Recipe("Hello")).error,
              "the voice Remote is no voice of the server, which has en_GB-test");
    EXPECT_TRUE(server.Asked().empty());
}

TEST_F(WyomingVoiceTest, OneThatBreaksOffInMidPayloadIsNotHeard) {
    EXPECT_EQ(ChimeAlone([](const std::string& answer) { return answer.substr(0, answer.size() / 2); }),
              "the voice Remote has broken off before its audio-stop");
    EXPECT_EQ(ChimeAlone([](const std::string& /*answer*/) { return std::string(); }),
              "the voice Remote has broken off before its audio-stop");
}

TEST_F(WyomingVoiceTest, OneThatSendsSomethingElseIsNotHeard) {
    EXPECT_EQ(ChimeAlone([](const std::string& /*answer*/) { return std::string("220 mail ready\r\n"); }),
              "the voice Remote sends a line that is no JSON object: not the Wyoming protocol");
    EXPECT_EQ(ChimeAlone([](const std::string& /*answer*/) {
                  return std::string("{\"type\":\"error\",\"data\":{\"text\":\"no such voice\"}}\n");
              }),
              "the voice Remote answers: no such voice");
    EXPECT_EQ(ChimeAlone([](const std::string& /*answer*/) {
                  return std::string("{\"type\":\"audio-start\",\"data\":{\"rate\":1}}\n");
              }),
              "the voice Remote sends sound whose rate is no number from 4000 to 384000");
    EXPECT_EQ(
        ChimeAlone([](const std::string& /*answer*/) { return std::string("{\"type\":\"audio-stop\"}\n"); }),
        "the voice Remote has said nothing");
}

TEST_F(WyomingVoiceTest, OneThatFloodsIsStopped) {
    EXPECT_EQ(ChimeAlone([](const std::string& answer) {
                  std::string flood = answer.substr(0, answer.rfind("{\"data_length\""));
                  constexpr const char* kHeader =
                      "{\"type\":\"audio-chunk\",\"data\":{\"rate\":22050,\"width\":2,"
                      "\"channels\":1},\"payload_length\":4194304}\n";
                  for (int count = 0; count < 9; ++count)
                      flood += kHeader + std::string(4194304, 'x');
                  return flood;
              }),
              "the voice Remote sends more than 32 MiB");
}

TEST_F(WyomingVoiceTest, OneThatIsNotThereIsTold) {
    Voice voice;
    {
        const WyomingServer server;
        voice = server.AsVoice("Remote");
    }
    Open({voice});
    EXPECT_EQ(Render(Recipe("Dinner is ready")).error, "the voice Remote cannot be reached: 127.0.0.1 port " +
                                                           std::to_string(voice.port) +
                                                           ": Connection refused");
}

TEST_F(WyomingVoiceTest, OneThatHangsIsGivenUp) {
    EXPECT_EQ(ChimeAlone(nullptr, 200ms), "the voice Remote has not spoken within 200 ms");
}

} // namespace

} // namespace controller
