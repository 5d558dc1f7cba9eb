#include "controller/speech/Speech.h"

#include "controller/audio/DemoSounds.h"
#include "tests/controller/speech/HeardSound.h"
#include "tests/controller/speech/SpeechHouse.h"

namespace controller {

namespace {

constexpr std::size_t kMillisecond = wave::kRate / 1000;
/// Louder than what is taken for silence, by far.
constexpr int kHeard = 1000;

class SpeechTest : public SpeechHouse {};

TEST_F(SpeechTest, TheInstalledVoiceSpeaksWhenTheHouseNamesNone) {
    Open();
    const RenderedSpeech spoken = Render(Recipe("Dinner is ready"));
    ASSERT_EQ(spoken.error, "");
    EXPECT_EQ(spoken.outcome, Outcome::Spoken);
    EXPECT_EQ(spoken.text, "Dinner is ready");
    const HeardSound heard(spoken.file);
    EXPECT_EQ(spoken.duration, heard.Duration());
    EXPECT_GT(spoken.duration, std::chrono::milliseconds(500));
    EXPECT_LT(spoken.duration, std::chrono::milliseconds(3000));
    EXPECT_GT(heard.Peak(), kHeard);
    EXPECT_EQ(m_speech->FileOf("/media/announcements/" + spoken.sound + ".wav"), spoken.file);
    EXPECT_TRUE(m_troubles.empty());
    ASSERT_EQ(m_speech->Voices().size(), 1U);
    EXPECT_EQ(m_speech->Voices()[0].voice.name, "espeak");
    EXPECT_TRUE(m_speech->Voices()[0].isDefault);
}

TEST_F(SpeechTest, SilenceIsTrimmedAtBothEnds) {
    Open();
    const HeardSound heard(Render(Recipe("Dinner is ready")).file);
    EXPECT_GT(heard.Peak(0, 20 * kMillisecond), 100);
    EXPECT_GT(heard.Peak(heard.samples.size() - 60 * kMillisecond, heard.samples.size()), 100);
}

TEST_F(SpeechTest, TheChimeStandsInFrontWith300MillisecondsOfSilenceBetween) {
    m_media.Write("gong.wav", demosounds::Gong());
    Open();
    const HeardSound alone(Render(Recipe("Dinner is ready")).file);
    const RenderedSpeech spoken = Render(Recipe("Dinner is ready", "gong"));
    const HeardSound heard(spoken.file);
    constexpr std::size_t kGong = 900 * kMillisecond;
    constexpr std::size_t kSpeech = kGong + 300 * kMillisecond;
    EXPECT_EQ(heard.samples.size(), kSpeech + alone.samples.size());
    EXPECT_GT(heard.Peak(0, kGong / 2), kHeard);
    EXPECT_EQ(heard.Peak(kGong, kSpeech), 0);
    EXPECT_GT(heard.Peak(kSpeech, kSpeech + 200 * kMillisecond), kHeard);
    EXPECT_EQ(spoken.duration, heard.Duration());
}

TEST_F(SpeechTest, WhatWasSpokenBeforeStartsNoProgram) {
    Open({Script("counting", "echo >> " + Place("count") + "; exec espeak-ng --stdin --stdout")});
    const RenderedSpeech first = Render(Recipe("The post is here"));
    const RenderedSpeech second = Render(Recipe("The post is here"));
    EXPECT_EQ(first.error, "");
    EXPECT_EQ(second.file, first.file);
    EXPECT_EQ(second.sound, first.sound);
    EXPECT_EQ(second.duration, first.duration);
    EXPECT_EQ(TemporaryFolder::Read(Place("count")), "\n");
    EXPECT_NE(Render(Recipe("The post is not here")).sound, first.sound);
    EXPECT_EQ(TemporaryFolder::Read(Place("count")), "\n\n");
}

TEST_F(SpeechTest, AFileThatWasDamagedIsRenderedAnew) {
    Open();
    const RenderedSpeech first = Render(Recipe("The post is here"));
    const std::string whole = TemporaryFolder::Read(first.file);
    std::string damaged = whole;
    damaged[whole.size() / 2] = static_cast<char>(damaged[whole.size() / 2] ^ 1);
    for (const std::string& content :
         {damaged, whole.substr(0, whole.size() / 2), std::string(), std::string("x")}) {
        std::ofstream(first.file, std::ios::binary) << content;
        EXPECT_EQ(Render(Recipe("The post is here")).file, first.file);
        EXPECT_TRUE(TemporaryFolder::Read(first.file) == whole);
    }
}

TEST_F(SpeechTest, AnotherChimeUnderTheSameNameIsAnotherSound) {
    m_media.Write("chime.wav", demosounds::Gong());
    Open();
    const RenderedSpeech first = Render(Recipe("Hello", "chime"));
    m_media.Write("chime.wav", demosounds::TestTone());
    const RenderedSpeech second = Render(Recipe("Hello", "chime"));
    EXPECT_NE(second.sound, first.sound);
    EXPECT_NE(second.duration, first.duration);
}

TEST_F(SpeechTest, VariablesAreSpokenWithTheValuesOfNow) {
    Open();
    m_values = {{"Outside", "five"}};
    const RenderedSpeech five = Render(Recipe("{Outside} degrees"));
    EXPECT_EQ(five.text, "five degrees");
    m_values["Outside"] = "six";
    const RenderedSpeech six = Render(Recipe("{Outside} degrees"));
    EXPECT_EQ(six.text, "six degrees");
    EXPECT_NE(six.sound, five.sound);
    EXPECT_EQ(six.sound, Render(Recipe("six degrees")).sound);
}

TEST_F(SpeechTest, AVariableThatTheHouseDoesNotHaveIsRefusedWithThoseThatItHas) {
    Open();
    m_values = {{"Outside", "five"}, {"Post", "here"}};
    const RenderedSpeech refused = Render(Recipe("{Inside} degrees"));
    EXPECT_EQ(refused.outcome, Outcome::Refused);
    EXPECT_EQ(refused.error, "there is no variable {Inside}; the house has {Outside}, {Post}");
    EXPECT_EQ(refused.sound, "");
}

TEST_F(SpeechTest, WhatWouldLastLongerThanASoundMayIsRefusedWithItsLength) {
    m_media.Write("gong.wav", demosounds::Gong());
    Open();
    std::string text;
    for (int count = 0; count < 40; ++count)
        text += "Somebody is at the door. ";
    const RenderedSpeech refused = Render(Recipe(text, "gong"));
    EXPECT_EQ(refused.outcome, Outcome::Refused);
    EXPECT_GT(refused.duration, std::chrono::seconds(20));
    EXPECT_NE(refused.error.find(std::to_string(refused.duration.count() / 1000) + "."), std::string::npos);
    EXPECT_NE(refused.error.find("a sound lasts 20.0 s at most"), std::string::npos) << refused.error;
    EXPECT_EQ(refused.right, "a shorter text, or a higher speed");
    EXPECT_EQ(refused.sound, "gong");
    EXPECT_TRUE(m_troubles.empty());
}

TEST_F(SpeechTest, WhatCannotBeSpokenIsRefusedWithWhatWouldBeRight) {
    Voice wyoming;
    wyoming.name = "Remote";
    wyoming.engine = Voice::Engine::Wyoming;
    Open({Script("Anna", "false"), wyoming});
    EXPECT_EQ(Render({"Hello", "Bertha", 100, ""}).error, "there is no voice Bertha");
    EXPECT_EQ(Render({"Hello", "Bertha", 100, ""}).right, "one of Anna, Remote");
    EXPECT_EQ(Render({"Hello", "Remote", 120, ""}).error, "the voice Remote has one speed");
    EXPECT_EQ(Render({"Hello", "Anna", 120, ""}).error, "the voice Anna has one speed");
    EXPECT_EQ(Render({"Hello", "", 201, ""}).right, "50 to 200");
    EXPECT_EQ(Render(Recipe(" \n")).error, "there is no text to speak");
    EXPECT_EQ(Render(Recipe(std::string(2001, 'x'))).error, "the text is too long");
    m_values = {{"Long", std::string(2000, 'x')}};
    EXPECT_EQ(Render(Recipe("{Long}!")).error, "the text is too long with the values of its variables");
    const RenderedSpeech chime = Render(Recipe("Hello", "missing"));
    EXPECT_EQ(chime.outcome, Outcome::Refused);
    EXPECT_EQ(chime.error,
              "the chime cannot be played: there is no sound file \"missing.wav\" in the media folder");
    EXPECT_EQ(chime.sound, "");
}

TEST_F(SpeechTest, ASpeedMakesTheSameTextShorterOrLonger) {
    Open();
    const auto usual = Render({"Somebody is at the door", "", 100, ""}).duration;
    EXPECT_LT(Render({"Somebody is at the door", "", 200, ""}).duration, usual * 3 / 4);
    EXPECT_GT(Render({"Somebody is at the door", "", 50, ""}).duration, usual * 5 / 4);
}

TEST_F(SpeechTest, ATextThatBeginsLikeAnOptionIsSpoken) {
    Open();
    const auto word = Render(Recipe("help"));
    EXPECT_EQ(Render(Recipe("--help")).outcome, Outcome::Spoken);
    EXPECT_EQ(word.outcome, Outcome::Spoken);
    EXPECT_EQ(Render(Recipe("-v nobody")).outcome, Outcome::Spoken);
}

} // namespace

} // namespace controller
