// Where sounds are found, and what is kept of how loud they are.
#include "controller/Household.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <functional>
#include <limits>
#include <system_error>

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

/// What was said of files that have been taken out of the media folder. An empty one may be a disk that is
/// not there yet.
void Household::ForgetGoneSounds(Opened& opened) const {
    std::error_code error;
    if (std::filesystem::is_empty(m_house.mediaFolder, error) || error)
        return;
    const auto& spoken = opened.state.spokenSounds;
    const auto isGone = [&](const SoundLevelRow& row) {
        const bool isSpoken = std::any_of(spoken.begin(), spoken.end(),
                                          [&row](const SpokenSoundRow& one) { return one.name == row.name; });
        return !isSpoken && !std::filesystem::exists(m_house.mediaFolder / row.name, error);
    };
    auto& levels = opened.state.soundLevels;
    const auto gone = std::stable_partition(levels.begin(), levels.end(), std::not_fn(isGone));
    if (gone == levels.end())
        return;
    opened.database->Together([&](StateDatabase& together) {
        for (auto row = gone; row != levels.end(); ++row)
            together.RemoveSound(row->name);
    });
    levels.erase(gone, levels.end());
}

/// What cannot be removed now is tried again at the next start.
void Household::RemoveFile(const std::string& name) {
    m_measuring.Submit([this, name] {
        std::error_code error;
        std::filesystem::remove(m_house.mediaFolder / name, error);
        if (!error)
            m_driver.Post("the end of a sound that was heard once",
                          [this, name] { m_feed.Publish(events::MediaRemoved{name}); });
    });
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
