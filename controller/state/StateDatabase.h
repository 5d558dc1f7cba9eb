#pragma once

#include "controller/state/IRoomStore.h"
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
    std::string outcome; ///< "ended", "dismissed", "failed: <why>" or "interrupted"
};

/// Everything that is read once, at the start.
struct StoredState {
    std::string agentState; ///< XML text; empty when there is none
    std::vector<JournalEntry> journal;
    std::map<std::uint32_t, unsigned> volumes;
    std::map<std::pair<std::uint32_t, std::uint32_t>, std::string> variables;
};

/// The database is damaged, is none, or comes from a later version; the text says what to do.
class UnusableDatabase : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The controller's database: one SQLite file, written through to the disk at every commit. Used by one
/// thread at a time; throws `SqliteError` where nothing else is said.
class StateDatabase {
public:
    static constexpr const char* kFileName = "controller.db";
    /// As many played announcements are remembered.
    static constexpr int kHistory = 10000;

    /// Opens the database in the folder, makes it when it is missing, and checks it. Throws
    /// `UnusableDatabase`.
    explicit StateDatabase(const std::filesystem::path& folder);

    /// Sets the folder's database aside under another name, makes a new one, and takes over what can still be
    /// read. Gives the lines that tell what was done. A folder without a database, or with a sound one, is
    /// left as it is.
    [[nodiscard]] static std::vector<std::string> Recover(const std::filesystem::path& folder);

    [[nodiscard]] StoredState Read();
    /// The newest entries, newest first; of those before the entry with the id `before`.
    [[nodiscard]] std::vector<HistoryEntry>
    ReadHistory(std::size_t newest, std::int64_t before = std::numeric_limits<std::int64_t>::max());

    /// Of a long text only what differs from the former one is written. The former text that was written
    /// whole is kept beside the new one, for recovery.
    void WriteAgentState(std::shared_ptr<const std::string> xml);
    void WriteAgentState(const std::string& xml) {
        WriteAgentState(std::make_shared<const std::string>(xml));
    }
    void WriteJournal(const JournalEntry& entry);
    void StrikeJournal(std::uint32_t room);
    void WriteVolume(std::uint32_t room, unsigned volume);
    void WriteVariable(std::uint32_t device, std::uint32_t variable, const std::string& value);
    void AddHistory(const HistoryEntry& entry);

    /// Runs the writes as one.
    void Together(const std::function<void(StateDatabase&)>& writes);

private:
    void Prepare();
    void WriteWholeState(const std::string& xml);
    [[nodiscard]] bool WriteStateEdit(const std::string& xml);

    std::unique_ptr<Sqlite> m_database;
    std::shared_ptr<const std::string> m_agentState; ///< as the database has it; null when that is not known
};

} // namespace controller
