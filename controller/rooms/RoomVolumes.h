#pragma once

#include "controller/driver/Alarm.h"
#include "controller/driver/DriverOnly.h"
#include "controller/driver/Log.h"
#include "controller/events/EventFeed.h"
#include "controller/state/IRoomStore.h"

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <vector>

namespace controller {

/// The volume of each room, 0 to 100, and how announcements borrow it.
///
/// Before an announcement changes a room's volume, what it was stands in the journal on the disk, or has been
/// given to the disk for `kPatience`. It is put back unless somebody else has set the volume meanwhile, be it
/// the very one that the announcement uses; that one stays. An announcement that takes a room which another
/// one has not given back keeps the first one's entry, so that no announcement's volume is ever taken for the
/// room's own. What changes at once is written as one. Driver thread only.
class RoomVolumes {
public:
    struct Room {
        std::uint32_t id = 0;
        std::string name;
        unsigned maxVolume = 100;
        unsigned volume = 0; ///< at the start: as it was left, also above `maxVolume`
    };

    /// Makes the room be heard at a volume.
    using Apply = std::function<void(std::uint32_t room, unsigned volume)>;

    /// All are borrowed for life.
    struct Parts {
        Apply apply;
        IRoomStore& store;
        IScheduler& driver;
        EventFeed& feed;
        Log& log;
    };

    /// So long an announcement's volume waits for the disk.
    static constexpr std::chrono::milliseconds kPatience{50};

    /// Applies every room's volume once, at most its highest.
    RoomVolumes(const std::vector<Room>& rooms, Parts parts);

    /// What the journal still held when the program started: puts back what an end without warning left
    /// behind, says so in the log, and strikes the entries. Of rooms that the house no longer has, the
    /// entries are struck.
    void Recover(const std::vector<JournalEntry>& journal);

    /// An announcement takes the room.
    void Take(std::uint32_t room);

    /// An announcement sets the room's volume, at most the room's highest. Takes effect as soon as the
    /// journal has what it was; at once when it has that already; after `kPatience` whatever the disk does.
    void SetForAnnouncement(std::uint32_t room, unsigned volume);

    /// The announcement gives the room back. Without having taken it, nothing happens.
    void GiveBack(std::uint32_t room);

    /// Gives back every room that is taken, and hands all that is to be written to the store.
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
        unsigned volumeBefore = 0;         ///< the one to go back to
        std::optional<unsigned> volumeSet; ///< by the announcement, and by nobody since
        std::optional<unsigned> waiting;   ///< for the journal to have `volumeBefore`
        std::uint64_t write = 0;           ///< the one that carries `volumeBefore`; 0: none has yet
        bool isChangedMeanwhile = false;
    };
    struct State {
        Room room;
        unsigned volumeLeft = 0; ///< when the program ended
        std::optional<Taken> taken;
    };

    [[nodiscard]] State* Find(std::uint32_t room);
    [[nodiscard]] const State* Find(std::uint32_t room) const;
    void Change(State& state, unsigned volume);
    void Restore(State& state, const JournalEntry& entry);
    void Keep(const State& state);
    void Write();
    void Written(std::uint64_t write, const std::string& names, const std::string& error);
    void ApplyWaiting(bool isPatienceOver);
    void ApplyWaiting(State& state, bool isPatienceOver);
    void TellApplied();

    const Parts m_parts;
    std::map<std::uint32_t, State> m_rooms;
    std::set<std::uint32_t> m_unwritten;
    std::set<std::uint32_t> m_waiting; ///< rooms whose volume waits for the journal
    std::vector<WriteDone> m_unwrittenDone;
    std::uint64_t m_lastWrite = 0;
    std::uint64_t m_answered = 0; ///< the last write that was answered
    Alarm m_writeSoon;
    Alarm m_patience;
    std::vector<std::function<void()>> m_whenApplied;
    DriverOnly m_driverOnly;
};

} // namespace controller
