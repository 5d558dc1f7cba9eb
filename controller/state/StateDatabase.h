#pragma once

#include "controller/state/AnnouncementRow.h"
#include "controller/state/BorrowedRow.h"
#include "controller/state/IRoomStore.h"
#include "controller/state/QueuedRow.h"
#include "controller/state/SoundLevelRow.h"
#include "controller/state/SpokenSoundRow.h"
#include "controller/state/Sqlite.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace controller {

/// One announcement that was played.
struct HistoryEntry {
    std::int64_t id = 0;   ///< given by the database
    std::string startedAt; ///< UTC, as 2025-01-31T18:30:05Z
    std::string endedAt;
    std::uint32_t announcement = 0;
    std::string name;
    std::vector<std::uint32_t> rooms;
    std::vector<std::uint32_t> navigators;
    std::string file;
    std::string outcome; ///< "ended", "dismissed", "stopped", "failed: <why>", "interrupted" or "dropped"
};

/// Everything that is read once, at the start.
struct StoredState {
    AnnouncementRows announcements;    ///< by key
    bool areAnnouncementsKept = false; ///< announcements have been stored, be it none of them
    QueuedRows queue;                  ///< in its order
    std::vector<JournalEntry> journal;
    BorrowedRows borrowed; ///< of other programs, and not known to be back
    std::map<std::uint32_t, unsigned> volumes;
    std::map<std::pair<std::uint32_t, std::uint32_t>, std::string> variables;
    std::vector<SpokenSoundRow> spokenSounds; ///< by name
    std::vector<SoundLevelRow> soundLevels;   ///< by name
    std::vector<std::string> passingSounds;   ///< the names of those that were to be heard once
};

/// The database is damaged, is none, or comes from a later version; the text says what to do.
class UnusableDatabase : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// It is damaged, and `StateDatabase::Recover` takes over what can be read.
class DamagedDatabase : public UnusableDatabase {
public:
    using UnusableDatabase::UnusableDatabase;
};

/// The controller's database: one SQLite file, written through to the disk at every commit. Used by one
/// thread at a time; throws `SqliteError` where nothing else is said.
class StateDatabase {
public:
    static constexpr const char* kFileName = "controller.db";
    /// A recovery puts this file in the place of the other one; it is there only when that was interrupted.
    static constexpr const char* kRecoveredName = "controller.db.recovered";
    /// Stands beside a database that has been made, so that a missing one is not taken for a fresh start.
    static constexpr const char* kMadeName = "controller.db.made";
    /// As many played announcements are remembered.
    static constexpr int kHistory = 10000;

    /// Opens the database in the folder, makes it when there has never been one, and checks it. One of a
    /// former version is taken over at once; a copy stays beside it, as `controller.db.schema-N`. Throws
    /// `UnusableDatabase`.
    explicit StateDatabase(const std::filesystem::path& folder, const std::string& name = kFileName);

    /// Fills a new database with what can still be read, sets the folder's own aside under another name and
    /// puts the new one in its place. Gives the lines that tell what was done, and which announcements are
    /// lost. A folder without a database, or with a sound one, is left as it is; throws `UnusableDatabase`
    /// for one that is not ours or comes from a later version.
    [[nodiscard]] static std::vector<std::string> Recover(const std::filesystem::path& folder);

    /// Throws `DamagedDatabase` when an announcement is not as it was written.
    [[nodiscard]] StoredState Read();
    /// The newest entries, newest first; of those before the entry with the id `before`.
    [[nodiscard]] std::vector<HistoryEntry>
    ReadHistory(std::size_t newest, std::int64_t before = std::numeric_limits<std::int64_t>::max());

    /// Writes the row in the place of the one with its key, or takes that one away.
    void WriteAnnouncement(const AnnouncementRow& row);
    /// From now on the announcements are those in the rows, be it none.
    void KeepAnnouncements();
    /// Puts the rows in the place of all that there are.
    void ReplaceAnnouncements(const AnnouncementRows& rows);
    /// Writes the room's volume, and its entry of the journal or that it has none.
    void WriteRoom(const RoomRow& row);
    /// Writes the row in the place of the one of its thing and property, or takes that one away.
    void WriteBorrowed(const BorrowedRow& row);
    void WriteJournal(const JournalEntry& entry);
    void WriteVolume(std::uint32_t room, unsigned volume);
    void WriteVariable(std::uint32_t device, std::uint32_t variable, const std::string& value);
    /// Writes the row in the place of the one of its name, or takes that one away.
    void WriteSpokenSound(const SpokenSoundRow& row);
    void WriteSoundLevel(const SoundLevelRow& row);
    void WritePassingSound(const std::string& name, bool isPassing);
    /// Forgets all that is known of the sound.
    void RemoveSound(const std::string& name);
    void AddHistory(const HistoryEntry& entry);
    /// Puts the rows in the place of all that there are.
    void WriteQueue(const QueuedRows& rows);

    /// Runs the writes as one.
    void Together(const std::function<void(StateDatabase&)>& writes);

private:
    void ReadRooms(StoredState& state);
    void ReadSounds(StoredState& state);
    void Begin(bool isFolders);
    void Open();
    void CheckVersion() const;
    void CheckTables() const;
    void Make() const;
    [[nodiscard]] StoredState ReadAll();
    void Migrate(std::int64_t version);
    void TakeTextApart();
    void KeepCopy(std::int64_t version);
    [[noreturn]] void ThrowDamaged(const std::string& why) const;

    const std::filesystem::path m_file;
    std::unique_ptr<Sqlite> m_database;
};

} // namespace controller
