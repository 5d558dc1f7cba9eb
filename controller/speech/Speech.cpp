#include "controller/speech/Speech.h"

#include "controller/audio/MediaFolder.h"
#include "controller/driver/Text.h"
#include "controller/speech/SpeechJob.h"
#include "controller/speech/SpeechText.h"
#include "controller/speech/Wave.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace controller {

namespace fs = std::filesystem;

namespace {

std::vector<Voice> OrEspeak(std::vector<Voice> voices) {
    if (voices.empty()) {
        Voice voice;
        voice.name = "espeak";
        voice.language = "en";
        voices.push_back(std::move(voice));
    }
    return voices;
}

Speech::Parts WithVoices(Speech::Parts parts) {
    parts.voices = OrEspeak(std::move(parts.voices));
    return parts;
}

std::string NamesOf(const std::vector<Voice>& voices) {
    std::string names;
    for (const Voice& voice : voices)
        names += (names.empty() ? "" : ", ") + voice.name;
    return names;
}

} // namespace

Speech::Speech(Parts parts)
    : m_parts(WithVoices(std::move(parts)))
    , m_cache(std::make_unique<SpeechCache>(m_parts.cacheFolder, m_parts.mostKept))
    , m_trouble(m_parts.voices.size()) {
    for (const Voice& voice : m_parts.voices) {
        m_speakers.push_back(std::make_unique<Speaker>());
        m_speakers.back()->engine = MakeSpeechEngine(voice, m_parts.cacheFolder);
    }
}

Speech::~Speech() {
    m_stop.Give();
}

void Speech::Render(const SpeechRecipe& recipe, Done done) {
    m_driverOnly.Assert();
    auto job = std::make_shared<Job>();
    job->recipe = recipe;
    job->done = std::move(done);
    ++m_waiting;
    if (!Accept(*job)) {
        Answer(std::move(job));
        return;
    }
    m_looking.Submit([this, job = std::move(job)]() mutable { Look(std::exchange(job, nullptr)); });
}

/// Whether the recipe can be spoken, as far as that is known before.
bool Speech::Accept(Job& job) const {
    const SpeechRecipe& recipe = job.recipe;
    const auto voice = std::find_if(m_parts.voices.begin(), m_parts.voices.end(), [&](const Voice& one) {
        return recipe.voice.empty() || one.name == recipe.voice;
    });
    if (voice == m_parts.voices.end()) {
        job.Refuse("there is no voice " + recipe.voice, "one of " + NamesOf(m_parts.voices));
        return false;
    }
    job.voice = static_cast<std::size_t>(voice - m_parts.voices.begin());
    if (recipe.speed < SpeechRecipe::kSlowest || recipe.speed > SpeechRecipe::kFastest) {
        job.Refuse("a speed of " + std::to_string(recipe.speed) + " % is none",
                   std::to_string(SpeechRecipe::kSlowest) + " to " + std::to_string(SpeechRecipe::kFastest));
        return false;
    }
    if (recipe.speed != 100 && !HasSpeeds(*voice)) {
        job.Refuse("the voice " + voice->name + " has one speed", "100");
        return false;
    }
    return AcceptText(job);
}

bool Speech::AcceptText(Job& job) const {
    const std::string right = "a text of 1 to " + std::to_string(SpeechRecipe::kMaxText) + " bytes";
    if (speech_text::IsBlank(job.recipe.text) || job.recipe.text.size() > SpeechRecipe::kMaxText) {
        job.Refuse(speech_text::IsBlank(job.recipe.text) ? "there is no text to speak"
                                                         : "the text is too long",
                   right);
        return false;
    }
    try {
        job.result.text = PlainLines(speech_text::Filled(job.recipe.text, m_parts.variables()));
    } catch (const std::invalid_argument& error) {
        job.Refuse(error.what(), "names of variables of the house in { }");
        return false;
    }
    if (job.result.text.size() > SpeechRecipe::kMaxText) {
        job.Refuse("the text is too long with the values of its variables", right);
        return false;
    }
    if (m_waiting <= kMostWaiting)
        return true;
    Fail(job, "has " + std::to_string(kMostWaiting) + " texts before it");
    return false;
}

/// Any thread.
void Speech::Answer(JobPointer job) {
    const bool isSpoken = job->result.outcome == RenderedSpeech::Outcome::Spoken;
    if (!isSpoken && !job->chime.empty()) {
        job->result.sound = job->recipe.chime;
        job->result.file = job->chime;
    }
    m_parts.driver.Post("what has been spoken",
                        [this, job = std::move(job), isThere = std::weak_ptr<bool>(m_isThere)] {
                            if (isThere.expired())
                                return;
                            --m_waiting;
                            Note(*job);
                            job->done(job->result);
                        });
}

void Speech::Note(const Job& job) {
    if (!job.isAsked)
        return;
    const bool isFailed = job.result.outcome == RenderedSpeech::Outcome::Failed;
    const std::string now = isFailed ? job.result.error : "";
    if (std::exchange(m_trouble[job.voice], now).value_or("") != now && m_parts.troubled)
        m_parts.troubled(m_parts.voices[job.voice].name, now);
}

std::string Speech::SeenTrouble(std::size_t voice) const {
    const std::string trouble = m_speakers[voice]->engine->Trouble();
    return trouble.empty() ? "" : "the voice " + m_parts.voices[voice].name + " " + trouble;
}

std::vector<Speech::VoiceState> Speech::Voices() const {
    m_driverOnly.Assert();
    std::vector<VoiceState> states;
    states.reserve(m_parts.voices.size());
    for (std::size_t index = 0; index < m_parts.voices.size(); ++index)
        states.push_back({m_parts.voices[index], index == 0, m_trouble[index].value_or(SeenTrouble(index))});
    return states;
}

fs::path Speech::FileOf(const std::string& announcedPath) const {
    const std::string begin = std::string(audio::MediaFolder::kPrefix) + kSound;
    constexpr std::size_t kKey = 64;
    if (announcedPath.rfind(begin, 0) != 0)
        return {};
    const std::string key = announcedPath.substr(begin.size(), kKey);
    const bool isKey = key.size() == kKey && key.find_first_not_of("0123456789abcdef") == std::string::npos &&
                       announcedPath.substr(begin.size() + kKey) == wave::kEnding;
    return isKey ? m_cache->FileOf(key) : fs::path();
}

} // namespace controller
