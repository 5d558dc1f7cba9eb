#include "controller/state/StateDatabase.h"

#include "controller/state/RowChecksum.h"

#include <algorithm>
#include <sstream>

namespace controller {

namespace {

constexpr std::int64_t kFullVolume = 100;

unsigned VolumeOf(const SqliteStatement& row, int column) {
    return static_cast<unsigned>(std::clamp<std::int64_t>(row.Number(column), 0, kFullVolume));
}

std::string ListText(const std::vector<std::uint32_t>& ids) {
    std::string text;
    for (const std::uint32_t id : ids)
        text += (text.empty() ? "" : " ") + std::to_string(id);
    return text;
}

std::vector<std::uint32_t> ListOf(const std::string& text) {
    std::vector<std::uint32_t> ids;
    std::istringstream words(text);
    for (std::uint32_t id = 0; words >> id;)
        ids.push_back(id);
    return ids;
}

} // namespace

StoredState StateDatabase::Read() {
    try {
        return ReadAll();
    } catch (const SqliteError& error) {
        if (error.IsDamage())
            ThrowDamaged(error.what());
        throw;
    }
}

StoredState StateDatabase::ReadAll() {
    StoredState state;
    SqliteStatement rows(*m_database, "SELECT key, xml, house, checksum FROM announcement ORDER BY key");
    while (rows.Step()) {
        AnnouncementRow row{rows.Number(0), rows.Text(1), rows.Text(2)};
        if (ChecksumOf(row) != rows.Number(3))
            ThrowDamaged(Named(row) + " is not as it was written");
        state.announcements.push_back(std::move(row));
    }
    state.areAnnouncementsKept = SqliteStatement(*m_database, "SELECT 1 FROM kept").Step();
    ReadRooms(state);
    ReadSounds(state);
    SqliteStatement queue(*m_database,
                          "SELECT entry, announcement, name, asked_at FROM queued ORDER BY place");
    while (queue.Step())
        state.queue.push_back({static_cast<std::uint64_t>(queue.Number(0)),
                               static_cast<std::uint32_t>(queue.Number(1)), queue.Text(2), queue.Number(3)});
    SqliteStatement variables(*m_database, "SELECT device, variable, value FROM variable_value");
    while (variables.Step())
        state.variables[{static_cast<std::uint32_t>(variables.Number(0)),
                         static_cast<std::uint32_t>(variables.Number(1))}] = variables.Text(2);
    return state;
}

/// A volume is what a room can be set to, and a room what a house can name, whatever stands there.
void StateDatabase::ReadRooms(StoredState& state) {
    SqliteStatement journal(*m_database, "SELECT room, volume_before, volume_set FROM room_journal "
                                         "WHERE room BETWEEN 0 AND 4294967295");
    while (journal.Step()) {
        JournalEntry entry{static_cast<std::uint32_t>(journal.Number(0)), VolumeOf(journal, 1), {}};
        if (!journal.IsNull(2))
            entry.volumeSet = VolumeOf(journal, 2);
        state.journal.push_back(entry);
    }
    SqliteStatement volumes(*m_database,
                            "SELECT room, volume FROM room_volume WHERE room BETWEEN 0 AND 4294967295");
    while (volumes.Step())
        state.volumes[static_cast<std::uint32_t>(volumes.Number(0))] = VolumeOf(volumes, 1);
    SqliteStatement borrowed(*m_database, "SELECT kind, thing, property, before, set_to FROM borrowed");
    while (borrowed.Step())
        state.borrowed.push_back(
            {borrowed.Text(0), borrowed.Text(1), borrowed.Text(2), borrowed.Text(3), borrowed.Text(4)});
}

std::vector<HistoryEntry> StateDatabase::ReadHistory(std::size_t newest, std::int64_t before) {
    std::vector<HistoryEntry> entries;
    SqliteStatement rows(
        *m_database, "SELECT id, started_at, ended_at, announcement, name, rooms, navigators, file, outcome "
                     "FROM history WHERE id < ? ORDER BY id DESC LIMIT ?");
    rows.Bind(before).Bind(static_cast<std::int64_t>(newest));
    while (rows.Step())
        entries.push_back({rows.Number(0), rows.Text(1), rows.Text(2),
                           static_cast<std::uint32_t>(rows.Number(3)), rows.Text(4), ListOf(rows.Text(5)),
                           ListOf(rows.Text(6)), rows.Text(7), rows.Text(8)});
    return entries;
}

void StateDatabase::Together(const std::function<void(StateDatabase&)>& writes) {
    SqliteTransaction transaction(*m_database);
    writes(*this);
    transaction.Commit();
}

void StateDatabase::WriteAnnouncement(const AnnouncementRow& row) {
    if (row.xml.empty()) {
        SqliteStatement(*m_database, "DELETE FROM announcement WHERE key = ?").Bind(row.key).Run();
        return;
    }
    SqliteStatement(*m_database,
                    "INSERT OR REPLACE INTO announcement(key, xml, house, checksum) VALUES(?, ?, ?, ?)")
        .Bind(row.key)
        .Bind(row.xml)
        .Bind(row.house)
        .Bind(ChecksumOf(row))
        .Run();
}

void StateDatabase::KeepAnnouncements() {
    m_database->Execute("INSERT OR IGNORE INTO kept VALUES('announcements')");
}

void StateDatabase::ReplaceAnnouncements(const AnnouncementRows& rows) {
    m_database->Execute("DELETE FROM announcement");
    for (const AnnouncementRow& row : rows)
        WriteAnnouncement(row);
    KeepAnnouncements();
}

void StateDatabase::WriteRoom(const RoomRow& row) {
    if (row.taken)
        WriteJournal(*row.taken);
    else
        SqliteStatement(*m_database, "DELETE FROM room_journal WHERE room = ?")
            .Bind(static_cast<std::int64_t>(row.room))
            .Run();
    WriteVolume(row.room, row.volume);
}

void StateDatabase::WriteJournal(const JournalEntry& entry) {
    SqliteStatement(*m_database,
                    "INSERT OR REPLACE INTO room_journal(room, volume_before, volume_set) VALUES(?, ?, ?)")
        .Bind(static_cast<std::int64_t>(entry.room))
        .Bind(static_cast<std::int64_t>(entry.volumeBefore))
        .Bind(entry.volumeSet)
        .Run();
}

void StateDatabase::WriteBorrowed(const BorrowedRow& row) {
    if (row.set.empty()) {
        SqliteStatement(*m_database, "DELETE FROM borrowed WHERE kind = ? AND thing = ? AND property = ?")
            .Bind(row.kind)
            .Bind(row.thing)
            .Bind(row.property)
            .Run();
        return;
    }
    SqliteStatement(*m_database, "INSERT OR REPLACE INTO borrowed(kind, thing, property, before, set_to) "
                                 "VALUES(?, ?, ?, ?, ?)")
        .Bind(row.kind)
        .Bind(row.thing)
        .Bind(row.property)
        .Bind(row.before)
        .Bind(row.set)
        .Run();
}

void StateDatabase::WriteVolume(std::uint32_t room, unsigned volume) {
    SqliteStatement(*m_database, "INSERT OR REPLACE INTO room_volume(room, volume) VALUES(?, ?)")
        .Bind(static_cast<std::int64_t>(room))
        .Bind(static_cast<std::int64_t>(volume))
        .Run();
}

void StateDatabase::WriteVariable(std::uint32_t device, std::uint32_t variable, const std::string& value) {
    SqliteStatement(*m_database,
                    "INSERT OR REPLACE INTO variable_value(device, variable, value) VALUES(?, ?, ?)")
        .Bind(static_cast<std::int64_t>(device))
        .Bind(static_cast<std::int64_t>(variable))
        .Bind(value)
        .Run();
}

void StateDatabase::WriteQueue(const QueuedRows& rows) {
    m_database->Execute("DELETE FROM queued");
    for (const QueuedRow& row : rows)
        SqliteStatement(*m_database,
                        "INSERT INTO queued(entry, announcement, name, asked_at) VALUES(?, ?, ?, ?)")
            .Bind(static_cast<std::int64_t>(row.entry))
            .Bind(static_cast<std::int64_t>(row.announcement))
            .Bind(row.name)
            .Bind(row.askedAtMs)
            .Run();
}

void StateDatabase::AddHistory(const HistoryEntry& entry) {
    SqliteStatement(
        *m_database,
        "INSERT INTO history(started_at, ended_at, announcement, name, rooms, navigators, file, outcome) "
        "VALUES(?, ?, ?, ?, ?, ?, ?, ?)")
        .Bind(entry.startedAt)
        .Bind(entry.endedAt)
        .Bind(static_cast<std::int64_t>(entry.announcement))
        .Bind(entry.name)
        .Bind(ListText(entry.rooms))
        .Bind(ListText(entry.navigators))
        .Bind(entry.file)
        .Bind(entry.outcome)
        .Run();
    m_database->Execute("DELETE FROM history WHERE id <= (SELECT max(id) FROM history) - " +
                        std::to_string(kHistory));
}

} // namespace controller
