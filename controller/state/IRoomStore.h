#pragma once

#include "controller/state/WriteDone.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace controller {

/// A room whose volume an announcement has taken: what it was, and what the announcement has set, once it
/// has.
struct JournalEntry {
    std::uint32_t room = 0;
    unsigned volumeBefore = 0;
    std::optional<unsigned> volumeSet;
};

/// A room's present volume, and its entry in the journal while an announcement has taken it.
struct RoomRow {
    std::uint32_t room = 0;
    unsigned volume = 0;
    std::optional<JournalEntry> taken;
};

/// Where the volumes of rooms and the journal of the rooms that announcements have taken are kept. Writes
/// reach the disk in the order of the calls. Driver thread only.
class IRoomStore {
public:
    /// Writes the rows as one, each in the place of what there was of its room.
    virtual void WriteRooms(std::vector<RoomRow> rows, WriteDone done) = 0;

protected:
    ~IRoomStore() = default;
};

} // namespace controller
