// What plays in the rooms and how loud, whether it is heard, and what it changes of other programs meanwhile.
#include "controller/EngineRooms.h"
#include "controller/Household.h"

#include <utility>

namespace controller {

namespace {

events::RoomHealth HealthOf(audio::Health::State state) {
    switch (state) {
    case audio::Health::State::Healthy:
        return events::RoomHealth::Healthy;
    case audio::Health::State::Silent:
        return events::RoomHealth::Silent;
    case audio::Health::State::Unheard:
        return events::RoomHealth::Unheard;
    case audio::Health::State::Unknown:
        break;
    }
    return events::RoomHealth::Unknown;
}

} // namespace

std::vector<audio::RoomConfig> EngineRooms(const House& house) {
    std::vector<audio::RoomConfig> rooms;
    for (const House::Room& room : house.rooms) {
        audio::RoomConfig config;
        config.id = room.id;
        config.name = room.name;
        config.output = room.output;
        config.leadSilence = std::chrono::milliseconds(room.leadSilenceMs);
        config.volume = room.startVolume;
        rooms.push_back(std::move(config));
    }
    return rooms;
}

void Household::WriteBorrowed(const std::vector<audio::Borrowed>& entries, WriteDone done) {
    BorrowedRows rows;
    rows.reserve(entries.size());
    for (const audio::Borrowed& entry : entries)
        rows.push_back({entry.kind, entry.thing, entry.property, entry.before, entry.set});
    m_store.WriteBorrowed(rows, std::move(done));
}

audio::ISoundEngine& Household::Engine() {
    if (m_options.engine != nullptr)
        return *m_options.engine;
    if (!m_options.guard.empty())
        m_borrowings.SetWatch([this](const auto& entries) { m_guard.Tell(entries); });
    return m_ownEngine.emplace(
        EngineRooms(m_house),
        audio::EngineServices{
            m_driver, m_log,
            [this](const audio::RoomTrouble& trouble) {
                m_feed.Publish(events::RoomOutputFailed{trouble.roomId, trouble.reason});
            },
            &m_borrowings, &m_addresses,
            [this](std::uint32_t room, const audio::Health& health) {
                m_feed.Publish(events::RoomHealthChanged{room, HealthOf(health.state), health.reason});
            },
            &m_pages,
            [this] {
                return IsUrgent();
            }});
}

/// What plays has been told of before it asks for its stream.
bool Household::IsUrgent() const {
    const auto& playing = m_playing.Current();
    const AnnouncementPointer announcement = playing ? m_announcements.Find(playing->id) : nullptr;
    return announcement && announcement->house.isUrgent;
}

std::vector<RoomVolumes::Room> Household::RoomsAtStart() const {
    std::vector<RoomVolumes::Room> rooms;
    for (const House::Room& room : m_house.rooms) {
        const auto stored = m_opened.state.volumes.find(room.id);
        const unsigned volume = stored != m_opened.state.volumes.end() ? stored->second : room.startVolume;
        rooms.push_back({room.id, room.name, room.maxVolume, volume});
    }
    return rooms;
}

RoomVolumes::Parts Household::VolumeParts() {
    return {[this](std::uint32_t room, unsigned volume) { m_engine.SetVolume(room, volume); }, m_store,
            m_driver, m_feed, m_log};
}

} // namespace controller
