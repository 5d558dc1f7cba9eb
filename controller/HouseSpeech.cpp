#include "controller/HouseSpeech.h"

#include "controller/speech/ISpeechEngine.h"

#include <utility>

namespace controller {

namespace {

constexpr const char* kFolder = "speech";

Voice VoiceOf(const House::Voice& one) {
    Voice voice;
    voice.name = one.name;
    voice.language = one.language;
    voice.voice = one.voice;
    voice.command = one.command;
    voice.host = one.host;
    voice.port = one.port;
    if (one.engine == "command")
        voice.engine = Voice::Engine::Command;
    else if (one.engine == "wyoming")
        voice.engine = Voice::Engine::Wyoming;
    return voice;
}

std::vector<Voice> VoicesOf(const House& house) {
    std::vector<Voice> voices;
    voices.reserve(house.voices.size());
    for (const House::Voice& voice : house.voices)
        voices.push_back(VoiceOf(voice));
    return voices;
}

SpokenSounds::Recipes RecipesOf(const std::vector<SpokenSoundRow>& rows) {
    SpokenSounds::Recipes recipes;
    for (const SpokenSoundRow& row : rows)
        recipes[row.name] = {row.text, row.voice, row.speed, row.chime};
    return recipes;
}

} // namespace

HouseSpeech::HouseSpeech(const House& house,
                         const std::filesystem::path& dataFolder,
                         const std::vector<SpokenSoundRow>& sounds,
                         Parts parts)
    : m_parts(parts)
    , m_speech(SpeechParts(house, dataFolder))
    , m_sounds(RecipesOf(sounds), SoundParts())
    , m_subscription(m_parts.feed.Subscribe([this](const Event& event) {
        if (const auto* change = std::get_if<events::VariableChanged>(&event.data))
            Changed(*change);
    })) {
    for (const std::string& trouble : TroublesOf(house))
        m_parts.log.Warning(trouble);
}

std::vector<std::string> HouseSpeech::TroublesOf(const House& house) {
    std::vector<std::string> troubles;
    for (const Voice& voice : VoicesOf(house)) {
        const std::string trouble = MakeSpeechEngine(voice, {})->Trouble();
        if (!trouble.empty())
            troubles.push_back("the voice " + voice.name + " " + trouble);
    }
    return troubles;
}

Speech::Parts HouseSpeech::SpeechParts(const House& house, const std::filesystem::path& dataFolder) {
    return {VoicesOf(house),
            house.mediaFolder,
            dataFolder / kFolder,
            m_parts.driver,
            [this] { return Values(); },
            [this](const std::string& voice, const std::string& reason) {
                if (reason.empty())
                    m_parts.feed.Publish(events::VoiceRecovered{voice});
                else
                    m_parts.feed.Publish(events::VoiceFailed{voice, reason});
            }};
}

SpokenSounds::Parts HouseSpeech::SoundParts() {
    return {m_speech,
            m_parts.driver,
            [this] { return Values(); },
            [this](const std::string& name, const SpeechRecipe& recipe, SpokenSounds::WriteDone done) {
                m_parts.store.WriteSpokenSound({name, recipe.text, recipe.voice, recipe.speed, recipe.chime},
                                               std::move(done));
            },
            [this](const std::string& name) { m_parts.feed.Publish(events::MediaStored{name}); },
            [this](const std::string& line) {
                m_parts.log.Warning(line);
            }};
}

/// Of several with one name the first speaks.
Speech::Values HouseSpeech::Values() const {
    Speech::Values values;
    for (const Variables::Variable& variable : m_parts.variables.All())
        values.emplace(variable.name, variable.value);
    return values;
}

void HouseSpeech::Changed(const events::VariableChanged& change) {
    for (const Variables::Variable& variable : m_parts.variables.All())
        if (variable.device == change.device && variable.variable == change.variable)
            m_sounds.VariableChanged(variable.name);
}

} // namespace controller
