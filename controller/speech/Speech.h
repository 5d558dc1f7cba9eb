#pragma once

#include "controller/driver/DriverOnly.h"
#include "controller/driver/IScheduler.h"
#include "controller/driver/Worker.h"
#include "controller/speech/ISpeech.h"
#include "controller/speech/Patience.h"
#include "controller/speech/SpeechCache.h"
#include "controller/speech/Voice.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace controller {

/// Speaks with the voices of the house, and keeps what they have said. Each voice has a thread of its own, so
/// that one that hangs keeps no other waiting, and none what has been spoken before.
class Speech final : public ISpeech {
public:
    /// So long a voice may take for one text.
    static constexpr std::chrono::milliseconds kLimit{10000};
    /// As many texts may wait to be spoken.
    static constexpr std::size_t kMostWaiting = 500;

    using Values = std::map<std::string, std::string>;

    struct Parts {
        std::vector<Voice>
            voices; ///< the first is the house's default; one of espeak-ng's when there is none
        std::filesystem::path mediaFolder;
        std::filesystem::path cacheFolder;
        IScheduler& driver; ///< borrowed for life
        std::function<Values()> variables;
        /// Told when a voice fails otherwise than it did, and with no reason when it speaks again.
        std::function<void(const std::string& voice, const std::string& reason)> troubled;
        std::chrono::milliseconds limit = kLimit;
        std::uintmax_t mostKept = SpeechCache::kMost;
    };

    /// A voice, and what became of what it said last.
    struct VoiceState {
        Voice voice;
        bool isDefault = false;
        std::string trouble; ///< why it has not spoken, or will not be able to; empty when all is well
    };

    explicit Speech(Parts parts);
    Speech(const Speech&) = delete;
    Speech& operator=(const Speech&) = delete;
    /// Ends what is being spoken.
    ~Speech();

    void Render(const SpeechRecipe& recipe, Done done) override;

    /// In the order of the house file.
    [[nodiscard]] std::vector<VoiceState> Voices() const;

    /// The file of a sound that has been rendered, by the path by which the agent asks for it; empty for any
    /// other sound. It may be gone. Any thread.
    [[nodiscard]] std::filesystem::path FileOf(const std::string& announcedPath) const;

private:
    /// Begins the names of sounds that have been rendered; no file of the media folder has one that begins
    /// so.
    static constexpr const char* kSound = ".speech-";

    struct Job;
    struct Speaker;
    using JobPointer = std::shared_ptr<Job>;

    [[nodiscard]] bool Accept(Job& job) const;
    [[nodiscard]] bool AcceptText(Job& job) const;
    void Look(const JobPointer& job);
    void FindChime(Job& job) const;
    void Speak(Job& job) const;
    void Join(Job& job, const std::string& spoken) const;
    void Fail(Job& job, const std::string& reason) const;
    [[nodiscard]] std::string KeyFor(const Job& job) const;
    [[nodiscard]] bool FindKept(Job& job) const;
    void Answer(JobPointer job);
    void Note(const Job& job);
    [[nodiscard]] std::string SeenTrouble(std::size_t voice) const;

    const Parts m_parts;
    const StopSignal m_stop;
    const std::unique_ptr<SpeechCache> m_cache;
    std::vector<std::optional<std::string>> m_trouble; ///< by voice; nothing before it has been asked
    std::size_t m_waiting = 0;
    const std::shared_ptr<bool> m_isThere = std::make_shared<bool>(true);
    DriverOnly m_driverOnly;
    std::vector<std::unique_ptr<Speaker>> m_speakers;
    Worker m_looking; ///< gives to the speakers, and so ends before them
};

} // namespace controller
