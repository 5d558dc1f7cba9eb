// What of the house plays, and what waits for that.
#include "controller/Household.h"
#include "controller/audio/MediaFolder.h"
#include "controller/audio/SoundFile.h"
#include "controller/state/UtcText.h"

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace controller {

namespace {

/// Why a sound has none, since it cannot be played, is said by whoever plays it.
std::optional<std::chrono::milliseconds> LengthOf(const std::string& file) {
    try {
        return audio::SoundFile(file).Duration();
    } catch (const audio::SoundFileError&) {
        return std::nullopt;
    }
}

} // namespace

DigitalAudio::Parts Household::AudioParts() {
    return {m_engine,
            m_volumes,
            m_services,
            m_feed,
            m_log,
            m_driver,
            [this](const std::string& path, const DigitalAudio::Found& found) {
                FindSound(path, [this, found](const audio::PlayedSound& sound, const std::string& error) {
                    Measure(sound.path);
                    found(sound, error);
                });
            }};
}

PlayQueue::Parts Household::QueueParts() {
    return {m_announcements,
            m_playing,
            m_store,
            m_feed,
            m_driver,
            [this](const Announcement& announcement, const std::function<void()>& ready) {
                PrepareSound(announcement, ready);
            }};
}

void Household::PrepareSound(const Announcement& announcement, const std::function<void()>& ready) {
    if (announcement.rooms.empty() || announcement.audio.file.empty()) {
        ready();
        return;
    }
    const std::string path = audio::MediaFolder::kPrefix + announcement.audio.file + ".wav";
    std::vector<std::uint32_t> rooms;
    for (const Announcement::Room& room : announcement.rooms)
        rooms.push_back(room.id);
    const auto measure = [this, path, rooms, ready] {
        ready();
        // How loud it is, is found out in the second that the agent leaves before a sound, and not behind it;
        // and who has to fetch it does.
        FindSound(path, [this, rooms](const audio::PlayedSound& sound, const std::string& error) {
            if (error.empty())
                m_engine.Prepare(sound, rooms);
        });
    };
    if (!m_speech.Sounds().Prepare(announcement.audio.file, measure))
        measure();
}

void Household::StartQueue() {
    const auto now = std::chrono::system_clock::now();
    for (const QueuedRow& row : m_queue.Begin(m_opened.state.queue, now)) {
        const PlayQueue::Time askedAt{std::chrono::milliseconds(row.askedAtMs)};
        m_log.Notice(row.name + " waited too long, and is not played any more");
        m_store.AddHistory(
            {0, UtcText(askedAt), UtcText(now), row.announcement, row.name, {}, {}, "", "dropped"});
    }
}

/// Beside its playing, which does not wait for this.
void Household::Measure(const std::string& file) {
    const auto& playing = m_progress.Now();
    if (file.empty() || !playing)
        return;
    m_measuring.Submit([this, file, since = playing->since] {
        if (const auto length = LengthOf(file))
            m_driver.Post("the length of a sound",
                          [this, since, length] { m_progress.SoundMeasured(since, *length); });
    });
}

} // namespace controller
