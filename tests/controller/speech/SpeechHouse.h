#pragma once

#include "controller/speech/Speech.h"
#include "tests/controller/support/FakeScheduler.h"
#include "tests/controller/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace controller {

/// A house that speaks, with the voices that a test gives it.
class SpeechHouse : public testing::Test {
protected:
    using Outcome = RenderedSpeech::Outcome;

    void Open(std::vector<Voice> voices = {}, std::chrono::milliseconds limit = kPatience) {
        m_speech = std::make_unique<Speech>(
            Speech::Parts{std::move(voices), m_media.Path(), m_data.Path() / "speech", m_driver,
                          [this] { return m_values; },
                          [this](const std::string& voice, const std::string& reason) {
                              m_troubles.push_back(voice + ": " + reason);
                          },
                          limit});
    }

    RenderedSpeech Render(const SpeechRecipe& recipe) {
        std::optional<RenderedSpeech> rendered;
        m_speech->Render(recipe, [&](const RenderedSpeech& done) { rendered = done; });
        EXPECT_FALSE(rendered) << "told within the call";
        while (!rendered)
            m_driver.DoNextPosted();
        return *rendered;
    }

    static SpeechRecipe Recipe(const std::string& text, const std::string& chime = "") {
        SpeechRecipe recipe;
        recipe.text = text;
        recipe.chime = chime;
        return recipe;
    }

    /// A voice that a shell's script speaks with.
    static Voice Script(const std::string& name, const std::string& script) {
        Voice voice;
        voice.name = name;
        voice.engine = Voice::Engine::Command;
        voice.language = "en";
        voice.command = {"/bin/sh", "-c", script};
        return voice;
    }

    [[nodiscard]] std::string Place(const std::string& name) const { return (m_data.Path() / name).string(); }

    TemporaryFolder m_media;
    TemporaryFolder m_data;
    FakeScheduler m_driver;
    Speech::Values m_values;
    std::vector<std::string> m_troubles;
    std::unique_ptr<Speech> m_speech;
};

} // namespace controller
