#include "controller/rooms/RoomVolumes.h"

#include <algorithm>
#include <utility>

namespace controller {

namespace {

/// The agent hands negative volumes over as unsigned numbers beyond this one.
constexpr unsigned kNegative = 0x7fffffff;

} // namespace

RoomVolumes::RoomVolumes(const std::vector<Room>& rooms, Parts parts)
    : m_parts(std::move(parts))
    , m_writeSoon(m_parts.driver, "the volumes of rooms for the disk")
    , m_patience(m_parts.driver, "volumes that wait for the disk") {
    for (const Room& room : rooms) {
        const auto place = m_rooms.emplace(room.id, State{room, room.volume, std::nullopt}).first;
        unsigned& volume = place->second.room.volume;
        volume = std::min(volume, room.maxVolume);
        m_parts.apply(room.id, volume);
    }
}

void RoomVolumes::Recover(const std::vector<JournalEntry>& journal) {
    m_driverOnly.Assert();
    std::vector<RoomRow> gone;
    for (const JournalEntry& entry : journal) {
        if (State* const state = Find(entry.room))
            Restore(*state, entry);
        else
            gone.push_back({entry.room, entry.volumeBefore, std::nullopt});
    }
    if (!gone.empty())
        m_parts.store.WriteRooms(std::move(gone), Nobody);
}

/// Compares with the volume as it was left: a room's highest may have been lowered since.
void RoomVolumes::Restore(State& state, const JournalEntry& entry) {
    const bool isStillOurs = state.volumeLeft == entry.volumeSet.value_or(entry.volumeBefore);
    const unsigned wanted = isStillOurs ? entry.volumeBefore : state.volumeLeft;
    Change(state, std::min(wanted, state.room.maxVolume));
    Keep(state);
    const char* const why = state.room.volume < wanted ? ", its highest"
                            : isStillOurs              ? " again"
                                                       : ", as it was set since";
    m_parts.log.Notice(state.room.name + " was left in the middle of an announcement; its volume is " +
                       std::to_string(state.room.volume) + why);
}

void RoomVolumes::Take(std::uint32_t room) {
    m_driverOnly.Assert();
    State* const state = Find(room);
    if (state == nullptr)
        return;
    if (!state->taken) {
        Taken taken;
        taken.volumeBefore = state->room.volume;
        state->taken = taken;
        Keep(*state);
    }
    state->taken->isChangedMeanwhile = false;
    m_parts.feed.Publish(events::RoomSetUp{room, state->taken->volumeBefore});
}

/// Soon, with all that changes in the same breath: the rooms of an announcement wait for the disk once.
void RoomVolumes::Keep(const State& state) {
    m_unwritten.insert(state.room.id);
    if (!m_writeSoon.IsRunning())
        m_writeSoon.Start({}, [this] { Write(); });
}

void RoomVolumes::Write() {
    m_writeSoon.Stop();
    if (m_unwritten.empty())
        return;
    std::vector<RoomRow> rows;
    std::string names;
    ++m_lastWrite;
    for (const std::uint32_t id : std::exchange(m_unwritten, {})) {
        State& state = m_rooms.at(id);
        RoomRow row{id, state.room.volume, std::nullopt};
        if (auto& taken = state.taken) {
            row.taken = JournalEntry{id, taken->volumeBefore, taken->volumeSet};
            taken->write = taken->write == 0 ? m_lastWrite : taken->write;
        }
        rows.push_back(row);
        names += (names.empty() ? "" : ", ") + state.room.name;
    }
    m_parts.store.WriteRooms(std::move(rows),
                             [this, write = m_lastWrite, names,
                              told = std::exchange(m_unwrittenDone, {})](const std::string& error) {
                                 Written(write, names, error);
                                 for (const WriteDone& done : told)
                                     done(error);
                             });
}

void RoomVolumes::Written(std::uint64_t write, const std::string& names, const std::string& error) {
    if (!error.empty())
        m_parts.log.Error("The volume of " + names + " could not be written to the disk: " + error +
                          "; it is kept in memory and tried again");
    // An announcement that nobody hears because the disk is full would be the greater harm.
    m_answered = write;
    ApplyWaiting(false);
}

void RoomVolumes::SetForAnnouncement(std::uint32_t room, unsigned volume) {
    m_driverOnly.Assert();
    State* const state = Find(room);
    if (state == nullptr || !state->taken)
        return;
    if (volume > kNegative) {
        m_parts.log.Warning("The announcement asks for a volume below 0 in " + state->room.name +
                            "; the volume is left");
        return;
    }
    state->taken->waiting = std::min(volume, state->room.maxVolume);
    m_waiting.insert(room);
    if (!m_patience.IsRunning())
        m_patience.Start(kPatience, [this] { ApplyWaiting(true); });
    ApplyWaiting(*state, false);
    TellApplied();
}

/// Sound that is late is worse than a journal that is. No waiting at all would lose no volume either: the
/// store writes in order, so that the disk never has an announcement's volume without what it was before. A
/// program that ends before the journal is written leaves there the room's own volume, and nothing that is
/// loud: the volume is a factor in this program's memory, no state of a device.
void RoomVolumes::ApplyWaiting(bool isPatienceOver) {
    for (const std::uint32_t id : std::set<std::uint32_t>(m_waiting))
        ApplyWaiting(m_rooms.at(id), isPatienceOver);
    TellApplied();
}

void RoomVolumes::ApplyWaiting(State& state, bool isPatienceOver) {
    if (!state.taken || !state.taken->waiting)
        return;
    const bool isWritten = state.taken->write != 0 && state.taken->write <= m_answered;
    if (!isWritten && !isPatienceOver)
        return;
    state.taken->volumeSet = std::exchange(state.taken->waiting, std::nullopt);
    m_waiting.erase(state.room.id);
    Keep(state);
    Change(state, *state.taken->volumeSet);
}

void RoomVolumes::GiveBack(std::uint32_t room) {
    m_driverOnly.Assert();
    State* const state = Find(room);
    if (state == nullptr || !state->taken)
        return;
    const Taken taken = *std::exchange(state->taken, std::nullopt);
    m_waiting.erase(room);
    Keep(*state);
    Change(*state, taken.volumeBefore);
    m_parts.feed.Publish(events::RoomRestored{room, state->room.volume, taken.isChangedMeanwhile});
    TellApplied();
}

void RoomVolumes::GiveBackAll() {
    m_driverOnly.Assert();
    for (const auto& [id, state] : m_rooms)
        GiveBack(id);
    // The program may end before anything is done soon.
    Write();
}

bool RoomVolumes::Set(std::uint32_t room, unsigned volume, WriteDone done) {
    m_driverOnly.Assert();
    State* const state = Find(room);
    if (state == nullptr)
        return false;
    const unsigned wanted = std::min(volume, state->room.maxVolume);
    if (auto& taken = state->taken) {
        taken->isChangedMeanwhile = taken->isChangedMeanwhile || taken->volumeSet.has_value();
        taken->volumeBefore = wanted;
        taken->volumeSet.reset();
        taken->write = 0;
    }
    m_unwrittenDone.push_back(std::move(done));
    Keep(*state);
    Change(*state, wanted);
    return true;
}

std::optional<unsigned> RoomVolumes::Capped(std::uint32_t room, unsigned volume) const {
    const State* const state = Find(room);
    return state == nullptr ? std::nullopt : std::optional(std::min(volume, state->room.maxVolume));
}

void RoomVolumes::Change(State& state, unsigned volume) {
    if (state.room.volume == volume)
        return;
    state.room.volume = volume;
    m_parts.apply(state.room.id, volume);
    m_parts.feed.Publish(events::RoomVolumeChanged{state.room.id, volume});
}

void RoomVolumes::WhenApplied(std::function<void()> callback) {
    m_driverOnly.Assert();
    m_whenApplied.push_back(std::move(callback));
    TellApplied();
}

void RoomVolumes::TellApplied() {
    if (!m_waiting.empty())
        return;
    m_patience.Stop();
    for (const auto& callback : std::exchange(m_whenApplied, {}))
        callback();
}

RoomVolumes::State* RoomVolumes::Find(std::uint32_t room) {
    const auto place = m_rooms.find(room);
    return place == m_rooms.end() ? nullptr : &place->second;
}

const RoomVolumes::State* RoomVolumes::Find(std::uint32_t room) const {
    const auto place = m_rooms.find(room);
    return place == m_rooms.end() ? nullptr : &place->second;
}

std::optional<unsigned> RoomVolumes::Volume(std::uint32_t room) const {
    m_driverOnly.Assert();
    const State* const state = Find(room);
    return state == nullptr ? std::nullopt : std::optional(state->room.volume);
}

bool RoomVolumes::IsTaken(std::uint32_t room) const {
    m_driverOnly.Assert();
    const State* const state = Find(room);
    return state != nullptr && state->taken.has_value();
}

} // namespace controller
