#include "controller/speech/SpokenSounds.h"

#include "controller/audio/DemoSounds.h"
#include "tests/controller/speech/HeardSound.h"
#include "tests/controller/speech/SpeechHouse.h"

namespace controller {

namespace {

using Texts = std::vector<std::string>;

/// Sounds that a counting voice speaks; fails as long as there is a file "broken".
class SpokenSoundsTest : public SpeechHouse {
protected:
    SpokenSoundsTest() {
        m_media.Write("gong.wav", demosounds::Gong());
        Open({Script("Anna", "cat > " + Place("said") + "; echo >> " + Place("count") + "; test -e " +
                                 Place("broken") + " && exit 1; espeak-ng --stdin --stdout < " +
                                 Place("said"))});
        Begin({});
    }

    void Begin(const SpokenSounds::Recipes& recipes) {
        m_sounds = std::make_unique<SpokenSounds>(
            recipes, SpokenSounds::Parts{*m_speech, m_driver, [this] { return m_values; },
                                         [this](const std::string& name, const SpeechRecipe& recipe,
                                                const SpokenSounds::WriteDone& done) {
                                             m_written.push_back(name + " " + recipe.text);
                                             done(m_writeError);
                                         },
                                         [this](const std::string& name) { m_changed.push_back(name); },
                                         [this](const std::string& line) {
                                             m_warnings.push_back(line);
                                         }});
    }

    RenderedSpeech Put(const std::string& name, const SpeechRecipe& recipe) {
        std::optional<RenderedSpeech> put;
        m_sounds->Put(name, recipe, [&](const RenderedSpeech& rendered, const std::string& notWritten) {
            put = rendered;
            EXPECT_EQ(notWritten, m_writeError);
        });
        WaitFor([&] { return put.has_value(); });
        return *put;
    }

    void WaitFor(const std::function<bool()>& isDone) {
        while (!isDone())
            m_driver.DoNextPosted();
    }

    /// The file or the reason that is told for what the agent asks for.
    std::string Find(const std::string& sound) {
        std::optional<std::string> told;
        if (!m_sounds->Find("/media/announcements/" + sound + ".wav",
                            [&](const std::string& file, const std::string& error) {
                                told = file.empty() ? "none: " + error : file;
                            }))
            return "not one of them";
        EXPECT_FALSE(told) << "told within the call";
        WaitFor([&] { return told.has_value(); });
        return *told;
    }

    void Set(const std::string& variable, const std::string& value) {
        m_values[variable] = value;
        m_sounds->VariableChanged(variable);
    }

    [[nodiscard]] std::size_t Spoken() const {
        const std::string file = Place("count");
        return std::filesystem::exists(file) ? TemporaryFolder::Read(file).size() : 0;
    }

    [[nodiscard]] std::string Gong() const { return std::filesystem::canonical(m_media.Path() / "gong.wav"); }

    Texts m_written;
    Texts m_changed;
    Texts m_warnings;
    std::string m_writeError;
    std::unique_ptr<SpokenSounds> m_sounds;
};

TEST_F(SpokenSoundsTest, WhatIsStoredIsSpokenThenAndNotWhenItIsPlayed) {
    const RenderedSpeech put = Put("post.wav", Recipe("The post is here"));
    EXPECT_EQ(put.outcome, Outcome::Spoken);
    EXPECT_EQ(m_written, Texts{"post.wav The post is here"});
    EXPECT_EQ(m_changed, Texts{"post.wav"});
    EXPECT_EQ(Spoken(), 1U);
    EXPECT_EQ(Find("post"), put.file);
    EXPECT_EQ(Find("post"), put.file);
    EXPECT_EQ(Spoken(), 1U);
    EXPECT_EQ(m_sounds->Get("post.wav")->rendered.duration, HeardSound(put.file).Duration());
    EXPECT_EQ(Find("doorbell"), "not one of them");
    EXPECT_EQ(Find(put.sound), put.file);
}

TEST_F(SpokenSoundsTest, OneThatIsRefusedIsNotStored) {
    EXPECT_EQ(Put("post.wav", Recipe("{Post}")).outcome, Outcome::Refused);
    EXPECT_TRUE(m_written.empty());
    EXPECT_EQ(m_sounds->Get("post.wav"), nullptr);
    EXPECT_EQ(Find("post"), "not one of them");
}

TEST_F(SpokenSoundsTest, OneThatIsRemovedIsGone) {
    (void)Put("post.wav", Recipe("The post is here"));
    bool isDone = false;
    EXPECT_TRUE(m_sounds->Remove("post.wav", [&](const std::string& /*error*/) { isDone = true; }));
    EXPECT_TRUE(isDone);
    EXPECT_EQ(m_written.back(), "post.wav ");
    EXPECT_EQ(Find("post"), "not one of them");
    EXPECT_FALSE(m_sounds->Remove("post.wav", [](const std::string& /*error*/) { FAIL(); }));
}

TEST_F(SpokenSoundsTest, WhenAVariableChangesItIsSpokenAnewBeforeAnybodyWaits) {
    m_values = {{"Outside", "five"}, {"Other", ""}};
    const RenderedSpeech five = Put("out.wav", Recipe("{Outside} degrees"));
    m_driver.DoPosted();
    m_changed.clear();
    Set("Outside", "six");
    WaitFor([&] { return !m_changed.empty(); });
    EXPECT_EQ(Spoken(), 2U);
    EXPECT_EQ(m_sounds->Get("out.wav")->rendered.text, "six degrees");
    EXPECT_NE(Find("out"), five.file);
    EXPECT_EQ(Spoken(), 2U);
    Set("Other", "x");
    EXPECT_FALSE(m_driver.HasPosted());
}

TEST_F(SpokenSoundsTest, HoweverFastValuesChangeTheLastOneIsSpoken) {
    m_values = {{"Outside", "0"}};
    (void)Put("out.wav", Recipe("{Outside} degrees"));
    for (int value = 1; value <= 50; ++value)
        Set("Outside", std::to_string(value));
    WaitFor([&] { return m_sounds->Get("out.wav")->rendered.text == "50 degrees"; });
    EXPECT_LE(Spoken(), 4U);
}

TEST_F(SpokenSoundsTest, AnOldTextIsNeverPlayedWhenTheNewOneCannotBeSpoken) {
    m_values = {{"Outside", "five"}};
    (void)Put("out.wav", Recipe("{Outside} degrees", "gong"));
    m_data.Write("broken", "");
    Set("Outside", "six");
    EXPECT_EQ(Find("out"), Gong());
    EXPECT_EQ(m_sounds->Get("out.wav")->rendered.error, "the voice Anna failed with status 1");
    EXPECT_EQ(m_warnings, Texts{"out.wav is not spoken: the voice Anna failed with status 1"});
    // The former text has its file still, and is played when it is the text of now.
    Set("Outside", "five");
    WaitFor([&] { return m_sounds->Get("out.wav")->rendered.outcome == Outcome::Spoken; });
    EXPECT_NE(Find("out"), Gong());
}

TEST_F(SpokenSoundsTest, WithoutAChimeNothingIsHeardOfWhatCannotBeSpoken) {
    m_data.Write("broken", "");
    EXPECT_EQ(Put("post.wav", Recipe("The post is here")).outcome, Outcome::Failed);
    EXPECT_EQ(m_written, Texts{"post.wav The post is here"});
    EXPECT_EQ(Find("post"), "none: the voice Anna failed with status 1");
}

TEST_F(SpokenSoundsTest, AVoiceThatHasJustFailedIsNotAskedAgainWhileTheRoomsWait) {
    m_data.Write("broken", "");
    (void)Put("post.wav", Recipe("The post is here", "gong"));
    EXPECT_EQ(Find("post"), Gong());
    EXPECT_EQ(Spoken(), 1U);
    m_driver.Advance(std::chrono::seconds(31));
    EXPECT_EQ(Find("post"), Gong());
    EXPECT_EQ(Spoken(), 2U);
}

TEST_F(SpokenSoundsTest, BeforeItIsPlayedAVoiceThatHasFailedIsAskedAgain) {
    m_data.Write("broken", "");
    (void)Put("post.wav", Recipe("The post is here", "gong"));
    std::filesystem::remove(Place("broken"));
    bool isPrepared = false;
    EXPECT_TRUE(m_sounds->Prepare("post", [&] { isPrepared = true; }));
    WaitFor([&] { return isPrepared; });
    EXPECT_NE(Find("post"), Gong());
    EXPECT_FALSE(m_sounds->Prepare("gong", [] { FAIL(); }));
}

TEST_F(SpokenSoundsTest, AfterAStartEverySoundIsMadeReady) {
    m_values = {{"Outside", "five"}};
    Begin({{"out.wav", Recipe("{Outside} degrees")}, {"odd.wav", Recipe("{Gone}")}});
    WaitFor([&] { return m_changed.size() == 2; });
    EXPECT_EQ(m_sounds->Get("out.wav")->rendered.text, "five degrees");
    EXPECT_EQ(m_warnings,
              Texts{"odd.wav is not spoken: there is no variable {Gone}; the house has {Outside}"});
    EXPECT_EQ(Find("odd"), "none: there is no variable {Gone}; the house has {Outside}");
    EXPECT_TRUE(m_written.empty());
}

TEST_F(SpokenSoundsTest, WhatTheDiskDoesNotTakeIsTold) {
    m_writeError = "full";
    EXPECT_EQ(Put("post.wav", Recipe("The post is here")).outcome, Outcome::Spoken);
}

} // namespace

} // namespace controller
