// Where sounds are found, and what is kept of how loud they are.
#include "controller/Household.h"

#include <cmath>
#include <limits>

namespace controller {

namespace {

/// Silence, and what is too quiet to be measured, have no number.
constexpr std::int64_t kSilence = -100000;

std::int64_t Hundredths(double decibels) {
    return std::isfinite(decibels) ? std::llround(decibels * 100) : kSilence;
}

double Decibels(std::int64_t hundredths) {
    return hundredths > kSilence ? static_cast<double>(hundredths) / 100
                                 : -std::numeric_limits<double>::infinity();
}

} // namespace

SoundLevelRow Household::RowOf(const SoundLevels::Entry& entry) {
    return {entry.name, entry.file, Hundredths(entry.loudness.lufs), Hundredths(entry.loudness.truePeak),
            entry.isAsItIs};
}

SoundLevels::Parts Household::LevelParts() {
    SoundLevels::Parts parts;
    for (const SoundLevelRow& row : m_opened.state.soundLevels)
        parts.entries.push_back(
            {row.name, row.file, {Decibels(row.lufs), Decibels(row.truePeak)}, row.isAsItIs});
    parts.isHouseAsItIs = m_house.isLoudnessAsItIs;
    parts.keep = [this](const SoundLevels::Entry& entry) {
        m_driver.Post("keeping how loud a sound is", [this, entry] {
            // It is tried again; and else the sound is measured again at the next start.
            m_store.WriteSoundLevel(RowOf(entry), Nobody);
        });
    };
    return parts;
}

void Household::FindSound(const std::string& path, const DigitalAudio::Found& found) {
    const auto foundSpoken = [this, path, found](const std::string& file, const std::string& error) {
        if (error.empty())
            m_sounds.FindMade(path, file, found);
        else
            found(file, error);
    };
    if (!m_speech.Sounds().Find(path, foundSpoken))
        m_sounds.Find(path, found);
}

} // namespace controller
