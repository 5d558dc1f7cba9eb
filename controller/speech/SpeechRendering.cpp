// What is done for a recipe away from the driver thread.
#include "controller/audio/MediaFolder.h"
#include "controller/audio/SoundFile.h"
#include "controller/speech/Digest.h"
#include "controller/speech/Joining.h"
#include "controller/speech/SpeechError.h"
#include "controller/speech/SpeechJob.h"
#include "controller/speech/SpeechText.h"
#include "controller/speech/Wave.h"

#include <system_error>
#include <utility>
#include <vector>

#include <sys/stat.h>

namespace controller {

namespace {

/// A part of every key: one more when the same would be rendered otherwise.
constexpr const char* kManner = "1";
constexpr auto kLongest = audio::kLongestClip;

std::string SecondsOf(std::chrono::milliseconds time) {
    const auto tenths = (time.count() + 99) / 100;
    return std::to_string(tenths / 10) + "." + std::to_string(tenths % 10) + " s";
}

/// With lengths, so that nothing can move from one text to the next unseen.
std::string KeyOf(const std::vector<std::string>& texts) {
    std::string all;
    for (const std::string& text : texts)
        all += std::to_string(text.size()) + ':' + text;
    return digest::Of(all);
}

} // namespace

void Speech::Look(const JobPointer& job) {
    FindChime(*job);
    if (!job->result.error.empty() || speech_text::IsBlank(job->result.text) || FindKept(*job)) {
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
    if (job.recipe.chime.empty())
        return;
    try {
        job.chime = audio::MediaFolder(m_parts.mediaFolder)
                        .Find(audio::MediaFolder::kPrefix + job.recipe.chime + wave::kEnding);
    } catch (const audio::MediaNameError& error) {
        job.Refuse(std::string("the chime cannot be played: ") + error.what(),
                   "the name of a sound file, without \".wav\"");
        return;
    }
    struct stat status {};
    if (::stat(job.chime.c_str(), &status) == 0)
        job.chimeVersion = std::to_string(status.st_size) + ' ' + std::to_string(status.st_mtim.tv_sec) +
                           ' ' + std::to_string(status.st_mtim.tv_nsec);
}

/// By what the sound is kept; another one when the engine has turned out to be another than was known.
std::string Speech::KeyFor(const Job& job) const {
    const Voice& voice = m_parts.voices[job.voice];
    return KeyOf({kManner, std::to_string(static_cast<int>(voice.engine)),
                  m_speakers[job.voice]->engine->Version(), voice.language, voice.voice,
                  std::to_string(job.recipe.speed), job.result.text, job.recipe.chime, job.chimeVersion});
}

bool Speech::FindKept(Job& job) const {
    const std::string key = KeyFor(job);
    const auto kept = m_cache->Find(key);
    if (!kept)
        return false;
    job.result.sound = kSound + key;
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
    job.result.duration = wave::DurationOf(sound.size());
    if (job.result.duration > kLongest) {
        job.Refuse("the speech would last " + SecondsOf(job.result.duration) + ", and a sound lasts " +
                       SecondsOf(kLongest) + " at most",
                   "a shorter text, or a higher speed");
        return;
    }
    const std::string key = KeyFor(job);
    const SpeechCache::Entry kept = m_cache->Keep(key, wave::Sealed(sound));
    job.result.sound = kSound + key;
    job.result.file = kept.file;
}

/// `reason` goes on from "the voice NAME".
void Speech::Fail(Job& job, const std::string& reason) const {
    job.result.outcome = RenderedSpeech::Outcome::Failed;
    job.result.error = "the voice " + m_parts.voices[job.voice].name + " " + reason;
}

} // namespace controller
