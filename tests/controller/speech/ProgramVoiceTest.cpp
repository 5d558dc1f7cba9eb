#include "controller/audio/DemoSounds.h"
#include "tests/controller/speech/HeardSound.h"
#include "tests/controller/speech/SpeechHouse.h"

#include <chrono>

namespace controller {

namespace {

using namespace std::chrono_literals;

/// What a voice that fails leaves: the chime alone, and the reason.
class ProgramVoiceTest : public SpeechHouse {
protected:
    ProgramVoiceTest() { m_media.Write("gong.wav", demosounds::Gong()); }

    std::string ChimeAlone(const std::string& script, std::chrono::milliseconds limit = kPatience) {
        m_troubles.clear();
        Open({Script("Anna", script)}, limit);
        const RenderedSpeech failed = Render(Recipe("Dinner is ready", "gong"));
        EXPECT_EQ(failed.outcome, Outcome::Failed);
        EXPECT_EQ(failed.sound, "gong");
        EXPECT_EQ(failed.file, std::filesystem::canonical(m_media.Path() / "gong.wav"));
        EXPECT_EQ(m_troubles, std::vector<std::string>{"Anna: " + failed.error});
        EXPECT_EQ(m_speech->Voices()[0].trouble, failed.error);
        return failed.error;
    }
};

TEST_F(ProgramVoiceTest, OneThatHangsIsGivenUp) {
    EXPECT_EQ(ChimeAlone("sleep 1000 & sleep 1000", 200ms), "the voice Anna has not spoken within 200 ms");
}

TEST_F(ProgramVoiceTest, OneThatPrintsGarbageIsNotHeard) {
    EXPECT_EQ(ChimeAlone("echo garbage, garbage, garbage"), "the voice Anna gives what is no WAV file");
    EXPECT_EQ(ChimeAlone("head -c 100000 /dev/urandom"), "the voice Anna gives what is no WAV file");
    EXPECT_EQ(ChimeAlone("printf 'RIFF....WAVEdata....abcd'"),
              "the voice Anna gives a WAV file without sound");
}

TEST_F(ProgramVoiceTest, OneThatDiesSaysOfWhat) {
    EXPECT_EQ(ChimeAlone("echo first >&2; echo 'no voice data' >&2; exit 3"),
              "the voice Anna failed with status 3: no voice data");
    EXPECT_EQ(ChimeAlone("kill -SEGV $$"), "the voice Anna was ended by signal 11");
}

TEST_F(ProgramVoiceTest, OneThatFloodsIsStopped) {
    EXPECT_EQ(ChimeAlone("cat /dev/zero"), "the voice Anna has printed more than 32 MiB");
}

TEST_F(ProgramVoiceTest, OneThatSaysNothingIsTold) {
    EXPECT_EQ(ChimeAlone("true"), "the voice Anna has said nothing");
}

TEST_F(ProgramVoiceTest, OneThatIsNotInstalledIsTold) {
    Voice voice = Script("Anna", "");
    voice.command = {"no-such-engine"};
    Open({voice});
    const std::string why = "the voice Anna is not there: no program no-such-engine is installed";
    EXPECT_EQ(m_speech->Voices()[0].trouble, why) << "before anybody has asked it";
    EXPECT_TRUE(m_troubles.empty());
    const RenderedSpeech failed = Render(Recipe("Dinner is ready"));
    EXPECT_EQ(failed.error, why);
    EXPECT_EQ(failed.sound, "");
    EXPECT_EQ(m_speech->Voices()[0].trouble, why);
    EXPECT_EQ(m_troubles, std::vector<std::string>{"Anna: " + why});
}

TEST_F(ProgramVoiceTest, OneThatIsInstalledMeanwhileIsNoTroubleAnyMore) {
    Voice voice = Script("Anna", "");
    voice.command = {Place("engine")};
    Open({voice, Script("Bert", "true")});
    EXPECT_NE(m_speech->Voices()[0].trouble, "");
    EXPECT_EQ(m_speech->Voices()[1].trouble, "");
    m_data.Write("engine", "#!/bin/sh\nexec espeak-ng --stdin --stdout\n");
    EXPECT_NE(m_speech->Voices()[0].trouble, "") << "nobody may start it";
    std::filesystem::permissions(Place("engine"), std::filesystem::perms::owner_all);
    EXPECT_EQ(m_speech->Voices()[0].trouble, "");
}

TEST_F(ProgramVoiceTest, OneThatSpeaksAgainIsNoTroubleAnyMore) {
    Open({Script("Anna", "test -e " + Place("well") + " || exit 1; exec espeak-ng --stdin --stdout")});
    EXPECT_EQ(Render(Recipe("Hello")).outcome, Outcome::Failed);
    EXPECT_EQ(Render(Recipe("Hello")).outcome, Outcome::Failed);
    m_data.Write("well", "");
    EXPECT_EQ(Render(Recipe("Hello")).outcome, Outcome::Spoken);
    EXPECT_EQ(m_troubles, (std::vector<std::string>{"Anna: the voice Anna failed with status 1", "Anna: "}));
    EXPECT_EQ(m_speech->Voices()[0].trouble, "");
}

TEST_F(ProgramVoiceTest, OneThatHangsKeepsNoOtherWaiting) {
    Open({Script("Slow", "sleep 1000"), Script("Quick", "exec espeak-ng --stdin --stdout")});
    m_speech->Render({"Hello", "Slow", 100, ""}, [](const RenderedSpeech& /*never*/) { FAIL(); });
    EXPECT_EQ(Render({"Hello", "Quick", 100, ""}).outcome, Outcome::Spoken);
    // Ends at once, with what hangs.
    m_speech.reset();
    m_driver.DoPosted();
}

TEST_F(ProgramVoiceTest, ItIsGivenVoiceLanguageAndSpeedWhereItsWordsSaySo) {
    Voice voice = Script("Anna", "echo \"$0 $*\" > " + Place("words") + "; exec espeak-ng --stdin --stdout");
    voice.command.insert(voice.command.end(), {"{voice}", "lang={language}", "{speed}", "{wpm}"});
    voice.voice = "slt; rm -r /";
    Open({voice});
    EXPECT_EQ(Render({"Hello", "", 120, ""}).outcome, Outcome::Spoken);
    EXPECT_EQ(TemporaryFolder::Read(Place("words")), "slt; rm -r / lang=en 120 210\n");
}

} // namespace

} // namespace controller
