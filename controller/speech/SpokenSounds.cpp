#include "controller/speech/SpokenSounds.h"

#include "controller/audio/MediaFolder.h"
#include "controller/speech/SpeechText.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace controller {

namespace {

using Outcome = RenderedSpeech::Outcome;

bool Speaks(const SpeechRecipe& recipe, const std::string& variable) {
    const auto names = speech_text::VariablesIn(recipe.text);
    return std::find(names.begin(), names.end(), variable) != names.end();
}

} // namespace

SpokenSounds::SpokenSounds(const Recipes& recipes, Parts parts) : m_parts(std::move(parts)) {
    for (const auto& [name, recipe] : recipes) {
        m_sounds[name] = {recipe, {}, std::chrono::system_clock::now()};
        m_entries[name].version = ++m_lastVersion;
    }
    for (const auto& [name, recipe] : recipes)
        Refresh(name);
}

void SpokenSounds::Put(const std::string& name, const SpeechRecipe& recipe, Done done) {
    m_driverOnly.Assert();
    m_parts.speech.Render(recipe, [this, name, recipe,
                                   done = std::move(done)](const RenderedSpeech& rendered) {
        if (rendered.outcome == Outcome::Refused) {
            done(rendered, "");
            return;
        }
        Keep(name, recipe, rendered);
        m_parts.write(name, recipe, [rendered, done](const std::string& error) { done(rendered, error); });
    });
}

void SpokenSounds::Keep(const std::string& name, const SpeechRecipe& recipe, const RenderedSpeech& rendered) {
    m_sounds[name] = {recipe, rendered, std::chrono::system_clock::now()};
    Entry& entry = m_entries[name];
    entry.version = ++m_lastVersion;
    entry.renderedAt = m_parts.driver.Now();
    m_parts.changed(name);
    // Values may have changed while the voice spoke.
    if (rendered.text != recipe.text)
        Refresh(name);
}

bool SpokenSounds::Remove(const std::string& name, WriteDone done) {
    m_driverOnly.Assert();
    if (m_sounds.erase(name) == 0)
        return false;
    m_entries.erase(name);
    m_parts.write(name, {}, std::move(done));
    return true;
}

const SpokenSounds::Sound* SpokenSounds::Get(const std::string& name) const {
    m_driverOnly.Assert();
    const auto place = m_sounds.find(name);
    return place != m_sounds.end() ? &place->second : nullptr;
}

void SpokenSounds::VariableChanged(const std::string& variable) {
    m_driverOnly.Assert();
    for (const auto& [name, sound] : m_sounds)
        if (Speaks(sound.recipe, variable))
            Refresh(name);
}

/// One rendering at a time, however fast values change.
void SpokenSounds::Refresh(const std::string& name) {
    Entry& entry = m_entries.at(name);
    if (std::exchange(entry.isRendering, true)) {
        entry.isLate = true;
        return;
    }
    Render(name, [this, name](const RenderedSpeech& /*rendered*/) {
        const auto place = m_entries.find(name);
        if (place == m_entries.end())
            return;
        place->second.isRendering = false;
        if (std::exchange(place->second.isLate, false))
            Refresh(name);
    });
}

void SpokenSounds::Render(const std::string& name, std::function<void(const RenderedSpeech&)> done) {
    m_parts.speech.Render(m_sounds.at(name).recipe, [this, name, version = m_entries.at(name).version,
                                                     done = std::move(done)](const RenderedSpeech& rendered) {
        const auto place = m_entries.find(name);
        if (place != m_entries.end() && place->second.version == version)
            Take(name, rendered);
        done(rendered);
    });
}

void SpokenSounds::Take(const std::string& name, const RenderedSpeech& rendered) {
    RenderedSpeech& last = m_sounds.at(name).rendered;
    const bool isOther = last.sound != rendered.sound || last.error != rendered.error;
    const bool isTrouble = !rendered.error.empty() && last.error != rendered.error;
    last = rendered;
    m_entries.at(name).renderedAt = m_parts.driver.Now();
    if (isTrouble)
        m_parts.warn(name + " is not spoken: " + rendered.error);
    if (isOther)
        m_parts.changed(name);
}

bool SpokenSounds::Prepare(const std::string& sound, std::function<void()> done) {
    m_driverOnly.Assert();
    const std::string name = sound + ".wav";
    if (m_sounds.count(name) == 0)
        return false;
    Render(name, [done = std::move(done)](const RenderedSpeech& /*rendered*/) { done(); });
    return true;
}

/// Whether the voice has failed just now, at the text that it would have to speak.
bool SpokenSounds::IsKnownToFail(const std::string& name) const {
    const Sound& sound = m_sounds.at(name);
    if (sound.rendered.outcome == Outcome::Spoken ||
        m_parts.driver.Now() - m_entries.at(name).renderedAt > kRemembered)
        return false;
    try {
        return sound.rendered.text == speech_text::Filled(sound.recipe.text, m_parts.variables());
    } catch (const std::invalid_argument&) {
        return false;
    }
}

bool SpokenSounds::Find(const std::string& path, const Found& found) {
    m_driverOnly.Assert();
    const std::string prefix = audio::MediaFolder::kPrefix;
    const auto rendered = m_parts.speech.FileOf(path);
    if (!rendered.empty()) {
        m_parts.driver.Post("finding what was said", [file = rendered.string(), found] { found(file, ""); });
        return true;
    }
    const std::string name = path.rfind(prefix, 0) == 0 ? path.substr(prefix.size()) : "";
    if (m_sounds.count(name) == 0)
        return false;
    if (IsKnownToFail(name))
        m_parts.driver.Post("finding what was not said",
                            [this, last = m_sounds.at(name).rendered, found] { Tell(last, found); });
    else
        Render(name, [this, found](const RenderedSpeech& now) { Tell(now, found); });
    return true;
}

void SpokenSounds::Tell(const RenderedSpeech& rendered, const Found& found) {
    found(rendered.file.string(), rendered.file.empty() ? rendered.error : "");
}

} // namespace controller
