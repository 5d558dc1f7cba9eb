#pragma once

#include "controller/driver/DriverThread.h"
#include "controller/driver/Log.h"
#include "controller/events/EventFeed.h"
#include "controller/house/House.h"
#include "controller/rooms/Variables.h"
#include "controller/speech/Speech.h"
#include "controller/speech/SpokenSounds.h"
#include "controller/state/StateStore.h"

#include <filesystem>
#include <string>
#include <vector>

namespace controller {

/// The voices of a house and its spoken sounds, with what they need of the rest of it.
class HouseSpeech {
public:
    /// Borrowed for life.
    struct Parts {
        DriverThread& driver;
        EventFeed& feed;
        Log& log;
        Variables& variables;
        StateStore& store;
    };

    /// Begins to render what is not ready.
    HouseSpeech(const House& house,
                const std::filesystem::path& dataFolder,
                const std::vector<SpokenSoundRow>& sounds,
                Parts parts);

    /// Says of each voice that cannot speak on this machine why; asks none of them.
    [[nodiscard]] static std::vector<std::string> TroublesOf(const House& house);

    [[nodiscard]] Speech& Voices() noexcept { return m_speech; }
    [[nodiscard]] SpokenSounds& Sounds() noexcept { return m_sounds; }

private:
    [[nodiscard]] Speech::Values Values() const;
    [[nodiscard]] Speech::Parts SpeechParts(const House& house, const std::filesystem::path& dataFolder);
    [[nodiscard]] SpokenSounds::Parts SoundParts();
    void Changed(const events::VariableChanged& change);

    Parts m_parts;
    Speech m_speech;
    SpokenSounds m_sounds;
    EventFeed::Subscription m_subscription;
};

} // namespace controller
