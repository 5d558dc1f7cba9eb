#pragma once

#include "controller/driver/DriverOnly.h"
#include "controller/driver/Log.h"
#include "controller/events/EventFeed.h"
#include "controller/state/IRoomStore.h"

#include <functional>
#include <map>
#include <optional>
#include <vector>

namespace controller {

/// The volume of each room, 0 to 100, and how announcements borrow it.
///
/// Before an announcement changes a room's volume, what it was stands in the journal on the disk. It is put
/// back only if the volume is still what the announcement set; what somebody else set meanwhile stays. An
/// announcement that takes a room which another one has not given back keeps the first one's entry, so that
/// no announcement's volume is ever taken for the room's own. Driver thread only.
class RoomVolumes {
public:
    struct Room {
        std::uint32_t id = 0;
        std::string name;
        unsigned maxVolume = 100;
        unsigned volume = 0; ///< at the start
    };

    /// Makes the room be heard at a volume.
    using Apply = std::function<void(std::uint32_t room, unsigned volume)>;

    /// `store`, `feed` and `log` are borrowed for life. Applies every room's volume once.
    RoomVolumes(const std::vector<Room>& rooms, Apply apply, IRoomStore& store, EventFeed& feed, Log& log);

    /// What the journal still held when the program started: puts back what an end without warning left
    /// behind, says so in the log, and strikes the entries. Of rooms that the house no longer has, the
    /// entries are struck.
    void Recover(const std::vector<JournalEntry>& journal);

    /// An announcement takes the room.
    void Take(std::uint32_t room);

    /// An announcement sets the room's volume, at most the room's highest. Takes effect as soon as the
    /// journal has what it was; at once when it has that already, or cannot be written.
    void SetForAnnouncement(std::uint32_t room, unsigned volume);

    /// The announcement gives the room back. Without having taken it, nothing happens.
    void GiveBack(std::uint32_t room);

    /// Gives back every room that is taken.
    void GiveBackAll();

    /// Somebody sets the room's volume, at most the room's highest. False for an unknown room, and then
    /// `done` is not called; else it is told when the volume stands on the disk.
    bool Set(std::uint32_t room, unsigned volume, WriteDone done);

    /// What `Set` would set; nothing for an unknown room.
    [[nodiscard]] std::optional<unsigned> Capped(std::uint32_t room, unsigned volume) const;

    /// Calls back as soon as no volume waits for the journal; at once when none does.
    void WhenApplied(std::function<void()> callback);

    [[nodiscard]] std::optional<unsigned> Volume(std::uint32_t room) const;
    [[nodiscard]] bool IsTaken(std::uint32_t room) const;

private:
    struct Taken {
        JournalEntry entry;
        bool isWritten = false;          ///< the journal has `entry.volumeBefore`, or cannot have it
        std::optional<unsigned> waiting; ///< a volume to set as soon as it has
        std::uint64_t turn = 0;          ///< tells an answer for a former taking
    };
    struct State {
        Room room;
        std::optional<Taken> taken;
    };

    void Change(State& state, unsigned volume);
    void WriteEntry(State& state, std::optional<unsigned> waiting, WriteDone done);
    void ApplyWaiting(State& state);
    void JournalWritten(std::uint32_t room, std::uint64_t turn, const std::string& error);
    void TellApplied();
    [[nodiscard]] WriteDone Report(const State& state, const std::string& what) const;

    Apply m_apply;
    IRoomStore& m_store;
    EventFeed& m_feed;
    Log& m_log;
    std::map<std::uint32_t, State> m_rooms;
    std::uint64_t m_turn = 0;
    std::vector<std::function<void()>> m_whenApplied;
    DriverOnly m_driverOnly;
};

} // namespace controller
