#include "controller/rooms/RoomVolumes.h"

#include <algorithm>
#include <utility>

namespace controller {

namespace {

/// The agent hands negative volumes over as unsigned numbers beyond this one.
constexpr unsigned kNegative = 0x7fffffff;

/// For a write whose failure concerns nobody.
void Nobody(const std::string& /*error*/) {}

} // namespace

RoomVolumes::RoomVolumes(
    const std::vector<Room>& rooms, Apply apply, IRoomStore& store, EventFeed& feed, Log& log)
    : m_apply(std::move(apply))
    , m_store(store)
    , m_feed(feed)
    , m_log(log) {
    for (Room room : rooms) {
        room.volume = std::min(room.volume, room.maxVolume);
        m_apply(room.id, room.volume);
        m_rooms.emplace(room.id, State{room, std::nullopt});
    }
}

WriteDone RoomVolumes::Report(const State& state, const std::string& what) const {
    return [this, name = state.room.name, what](const std::string& error) {
        if (!error.empty())
            m_log.Error(what + " of " + name + " could not be written to the disk: " + error +
                        "; it is kept in memory and tried again");
    };
}

void RoomVolumes::Recover(const std::vector<JournalEntry>& journal) {
    m_driverOnly.Assert();
    for (const JournalEntry& entry : journal) {
        const auto place = m_rooms.find(entry.room);
        if (place == m_rooms.end()) {
            m_store.WriteFree(entry.room, entry.volumeBefore, Nobody);
            continue;
        }
        State& state = place->second;
        const bool isStillOurs = state.room.volume == entry.volumeSet.value_or(entry.volumeBefore);
        if (isStillOurs)
            Change(state, entry.volumeBefore);
        m_store.WriteFree(entry.room, state.room.volume, Report(state, "The volume"));
        m_log.Notice(state.room.name + " was left in the middle of an announcement; its volume is " +
                     std::to_string(state.room.volume) + (isStillOurs ? " again" : ", as it was set since"));
    }
}

void RoomVolumes::Take(std::uint32_t room) {
    m_driverOnly.Assert();
    const auto place = m_rooms.find(room);
    if (place == m_rooms.end())
        return;
    State& state = place->second;
    const bool isStillOurs = state.taken && state.room.volume == state.taken->entry.volumeSet.value_or(
                                                                     state.taken->entry.volumeBefore);
    if (!isStillOurs)
        WriteEntry(state, std::nullopt, Nobody);
    m_feed.Publish(events::RoomSetUp{room, state.taken->entry.volumeBefore});
}

/// Makes the room's present volume the one to go back to, and writes that down.
void RoomVolumes::WriteEntry(State& state, std::optional<unsigned> waiting, WriteDone done) {
    const JournalEntry entry{state.room.id, state.room.volume, std::nullopt};
    const std::uint64_t turn = ++m_turn;
    state.taken = Taken{entry, false, waiting, turn};
    m_store.WriteTaken(entry, state.room.volume,
                       [this, room = state.room.id, turn, done = std::move(done)](const std::string& error) {
                           JournalWritten(room, turn, error);
                           done(error);
                       });
}

void RoomVolumes::JournalWritten(std::uint32_t room, std::uint64_t turn, const std::string& error) {
    State& state = m_rooms.at(room);
    if (!state.taken || state.taken->turn != turn)
        return;
    Report(state, "The journal")(error);
    // An announcement that nobody hears because the disk is full would be the greater harm.
    state.taken->isWritten = true;
    ApplyWaiting(state);
    TellApplied();
}

void RoomVolumes::SetForAnnouncement(std::uint32_t room, unsigned volume) {
    m_driverOnly.Assert();
    const auto place = m_rooms.find(room);
    if (place == m_rooms.end() || !place->second.taken)
        return;
    State& state = place->second;
    if (volume > kNegative) {
        m_log.Warning("The announcement asks for a volume below 0 in " + state.room.name +
                      "; the volume is left");
        return;
    }
    state.taken->waiting = std::min(volume, state.room.maxVolume);
    if (state.taken->isWritten)
        ApplyWaiting(state);
}

void RoomVolumes::ApplyWaiting(State& state) {
    if (!state.taken->waiting)
        return;
    const unsigned volume = *std::exchange(state.taken->waiting, std::nullopt);
    state.taken->entry.volumeSet = volume;
    Change(state, volume);
    m_store.WriteTaken(state.taken->entry, volume, Report(state, "The journal"));
}

void RoomVolumes::GiveBack(std::uint32_t room) {
    m_driverOnly.Assert();
    const auto place = m_rooms.find(room);
    if (place == m_rooms.end() || !place->second.taken)
        return;
    State& state = place->second;
    const JournalEntry entry = std::exchange(state.taken, std::nullopt)->entry;
    const bool isStillOurs = state.room.volume == entry.volumeSet.value_or(entry.volumeBefore);
    if (isStillOurs)
        Change(state, entry.volumeBefore);
    m_store.WriteFree(room, state.room.volume, Report(state, "The volume"));
    m_feed.Publish(events::RoomRestored{room, state.room.volume, !isStillOurs});
    TellApplied();
}

void RoomVolumes::GiveBackAll() {
    m_driverOnly.Assert();
    for (const auto& [id, state] : m_rooms)
        GiveBack(id);
}

bool RoomVolumes::Set(std::uint32_t room, unsigned volume, WriteDone done) {
    m_driverOnly.Assert();
    const auto place = m_rooms.find(room);
    if (place == m_rooms.end())
        return false;
    State& state = place->second;
    Change(state, std::min(volume, state.room.maxVolume));
    if (!state.taken)
        m_store.WriteFree(room, state.room.volume, std::move(done));
    else if (state.taken->entry.volumeSet)
        m_store.WriteTaken(state.taken->entry, state.room.volume, std::move(done));
    else
        // The announcement has not set its volume yet: this is the one to go back to.
        WriteEntry(state, state.taken->waiting, std::move(done));
    return true;
}

std::optional<unsigned> RoomVolumes::Capped(std::uint32_t room, unsigned volume) const {
    const auto place = m_rooms.find(room);
    return place == m_rooms.end() ? std::nullopt
                                  : std::optional(std::min(volume, place->second.room.maxVolume));
}

void RoomVolumes::Change(State& state, unsigned volume) {
    if (state.room.volume == volume)
        return;
    state.room.volume = volume;
    m_apply(state.room.id, volume);
    m_feed.Publish(events::RoomVolumeChanged{state.room.id, volume});
}

void RoomVolumes::WhenApplied(std::function<void()> callback) {
    m_driverOnly.Assert();
    m_whenApplied.push_back(std::move(callback));
    TellApplied();
}

void RoomVolumes::TellApplied() {
    const bool isOneWaiting = std::any_of(m_rooms.begin(), m_rooms.end(), [](const auto& room) {
        return room.second.taken && room.second.taken->waiting.has_value();
    });
    if (isOneWaiting)
        return;
    for (const auto& callback : std::exchange(m_whenApplied, {}))
        callback();
}

std::optional<unsigned> RoomVolumes::Volume(std::uint32_t room) const {
    m_driverOnly.Assert();
    const auto place = m_rooms.find(room);
    return place == m_rooms.end() ? std::nullopt : std::optional(place->second.room.volume);
}

bool RoomVolumes::IsTaken(std::uint32_t room) const {
    m_driverOnly.Assert();
    const auto place = m_rooms.find(room);
    return place != m_rooms.end() && place->second.taken.has_value();
}

} // namespace controller
