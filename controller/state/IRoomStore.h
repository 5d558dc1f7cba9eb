#pragma once

#include "controller/state/WriteDone.h"

#include <cstdint>
#include <optional>

namespace controller {

/// A room whose volume an announcement has taken: what it was, and what the announcement has set, once it
/// has.
struct JournalEntry {
    std::uint32_t room = 0;
    unsigned volumeBefore = 0;
    std::optional<unsigned> volumeSet;
};

/// Where the volumes of rooms and the journal of the rooms that announcements have taken are kept. Writes
/// reach the disk in the order of the calls. Driver thread only.
class IRoomStore {
public:
    /// Keeps the entry in place of the room's former one, together with the room's present volume: both or
    /// neither.
    virtual void WriteTaken(const JournalEntry& entry, unsigned volume, WriteDone done) = 0;

    /// Strikes the room's entry, if there is one, and keeps the room's present volume: both or neither.
    virtual void WriteFree(std::uint32_t room, unsigned volume, WriteDone done) = 0;

protected:
    ~IRoomStore() = default;
};

} // namespace controller
