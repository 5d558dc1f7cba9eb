#include "controller/speech/Speech.h"

#include "controller/audio/MediaFolder.h"
#include "controller/audio/SoundFile.h"
#include "controller/driver/Text.h"
#include "controller/speech/Digest.h"
#include "controller/speech/ISpeechEngine.h"
#include "controller/speech/Joining.h"
#include "controller/speech/SpeechError.h"
#include "controller/speech/SpeechText.h"
#include "controller/speech/Wave.h"

#include <algorithm>
#include <optional>
#include <stdexcept>
#include <system_error>
#include <utility>

#include <sys/stat.h>

namespace controller {

namespace fs = std::filesystem;

namespace {

/// Begins the names of sounds that have been rendered; no file of the media folder has one that begins so.
constexpr const char* kSound = ".speech-";
constexpr const char* kEnding = ".wav";
/// A part of every key: one more when the same would be rendered otherwise.
constexpr const char* kManner = "1";
constexpr auto kLongest = audio::kLongestClip;

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

bool IsBlank(const std::string& text) {
    return text.find_first_not_of(" \t\r\n") == std::string::npos;
}

std::string SecondsOf(std::chrono::milliseconds time) {
    const auto tenths = (time.count() + 99) / 100;
    return std::to_string(tenths / 10) + "." + std::to_string(tenths % 10) + " s";
}

std::chrono::milliseconds DurationOf(std::size_t samples) {
    return std::chrono::milliseconds((samples * 1000 + wave::kRate - 1) / wave::kRate);
}

/// With lengths, so that nothing can move from one text to the next unseen.
std::string KeyOf(const std::vector<std::string>& texts) {
    std::string all;
    for (const std::string& text : texts)
        all += std::to_string(text.size()) + ':' + text;
    return digest::Of(all);
}

} // namespace

struct Speech::Job {
    SpeechRecipe recipe;
    Done done;
    std::size_t voice = 0;
    fs::path chime; ///< its file
    std::string key;
    RenderedSpeech result;
    bool isAsked = false; ///< the engine has been

    void Refuse(const std::string& error, const std::string& right) {
        result.outcome = RenderedSpeech::Outcome::Refused;
        result.error = error;
        result.right = right;
    }
};

struct Speech::Speaker {
    std::unique_ptr<ISpeechEngine> engine;
    Worker worker;
};

Speech::Speech(Parts parts)
    : m_parts(WithVoices(std::move(parts)))
    , m_cache(std::make_unique<SpeechCache>(m_parts.cacheFolder, m_parts.mostKept))
    , m_trouble(m_parts.voices.size()) {
    for (const Voice& voice : m_parts.voices) {
        m_speakers.push_back(std::make_unique<Speaker>());
        m_speakers.back()->engine = MakeSpeechEngine(voice);
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
    if (IsBlank(job.recipe.text) || job.recipe.text.size() > SpeechRecipe::kMaxText) {
        job.Refuse(IsBlank(job.recipe.text) ? "there is no text to speak" : "the text is too long", right);
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

void Speech::Look(const JobPointer& job) {
    FindChime(*job);
    if (!job->result.error.empty() || IsBlank(job->result.text) || FindKept(*job)) {
        if (job->result.error.empty() && job->result.sound.empty())
            Fail(*job, "has nothing to say");
        Answer(job);
        return;
    }
    m_speakers[job->voice]->worker.Submit([this, job = job]() mutable {
        // The same may have been spoken while this waited.
        if (!FindKept(*job))
            Speak(*job);
        Answer(std::exchange(job, nullptr));
    });
}

void Speech::FindChime(Job& job) const {
    std::string version;
    if (!job.recipe.chime.empty()) {
        try {
            job.chime = audio::MediaFolder(m_parts.mediaFolder)
                            .Find(audio::MediaFolder::kPrefix + job.recipe.chime + kEnding);
        } catch (const audio::MediaNameError& error) {
            job.Refuse(std::string("the chime cannot be played: ") + error.what(),
                       "the name of a sound file, without \".wav\"");
            return;
        }
        struct stat status {};
        if (::stat(job.chime.c_str(), &status) == 0)
            version = std::to_string(status.st_size) + ' ' + std::to_string(status.st_mtim.tv_sec) + ' ' +
                      std::to_string(status.st_mtim.tv_nsec);
    }
    const Voice& voice = m_parts.voices[job.voice];
    job.key = KeyOf({kManner, std::to_string(static_cast<int>(voice.engine)),
                     m_speakers[job.voice]->engine->Version(), voice.language, voice.voice,
                     std::to_string(job.recipe.speed), job.result.text, job.recipe.chime, version});
}

bool Speech::FindKept(Job& job) const {
    const auto kept = m_cache->Find(job.key);
    if (!kept)
        return false;
    job.result.sound = kSound + job.key;
    job.result.file = kept->file;
    job.result.duration = kept->duration;
    return true;
}

void Speech::Speak(Job& job) const {
    job.isAsked = true;
    try {
        Join(job, m_speakers[job.voice]->engine->Speak(job.result.text, job.recipe.speed,
                                                       Patience(m_stop, m_parts.limit)));
    } catch (const SpeechError& error) {
        Fail(job, error.what());
    } catch (const std::system_error& error) {
        Fail(job, std::string("has spoken, which cannot be kept: ") + error.what());
    }
}

void Speech::Join(Job& job, const std::string& spoken) const {
    const wave::Samples speech = joining::Trimmed(wave::Decode(spoken));
    if (speech.empty())
        throw SpeechError("has said nothing");
    wave::Samples chime;
    try {
        if (!job.chime.empty())
            chime = wave::DecodeFile(job.chime.string());
    } catch (const SpeechError& error) {
        job.Refuse("the chime " + job.recipe.chime + " " + error.what(), "a sound file that can be played");
        return;
    }
    const wave::Samples sound = joining::Joined(std::move(chime), speech);
    job.result.duration = DurationOf(sound.size());
    if (job.result.duration > kLongest) {
        job.Refuse("the speech would last " + SecondsOf(job.result.duration) + ", and a sound lasts " +
                       SecondsOf(kLongest) + " at most",
                   "a shorter text, or a higher speed");
        return;
    }
    const SpeechCache::Entry kept = m_cache->Keep(job.key, wave::Sealed(sound));
    job.result.sound = kSound + job.key;
    job.result.file = kept.file;
}

/// `reason` goes on from "the voice NAME".
void Speech::Fail(Job& job, const std::string& reason) const {
    job.result.outcome = RenderedSpeech::Outcome::Failed;
    job.result.error = "the voice " + m_parts.voices[job.voice].name + " " + reason;
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
    std::string& trouble = m_trouble[job.voice];
    const std::string now = isFailed ? job.result.error : "";
    if (std::exchange(trouble, now) != now && m_parts.troubled)
        m_parts.troubled(m_parts.voices[job.voice].name, now);
}

std::vector<Speech::VoiceState> Speech::Voices() const {
    m_driverOnly.Assert();
    std::vector<VoiceState> states;
    for (std::size_t index = 0; index < m_parts.voices.size(); ++index)
        states.push_back({m_parts.voices[index], index == 0, m_trouble[index]});
    return states;
}

fs::path Speech::FileOf(const std::string& announcedPath) const {
    const std::string begin = std::string(audio::MediaFolder::kPrefix) + kSound;
    constexpr std::size_t kKey = 64;
    if (announcedPath.rfind(begin, 0) != 0)
        return {};
    const std::string key = announcedPath.substr(begin.size(), kKey);
    const bool isKey = key.size() == kKey && key.find_first_not_of("0123456789abcdef") == std::string::npos &&
                       announcedPath.substr(begin.size() + kKey) == kEnding;
    return isKey ? m_cache->FileOf(key) : fs::path();
}

} // namespace controller
