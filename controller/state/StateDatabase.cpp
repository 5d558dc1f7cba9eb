#include "controller/state/StateDatabase.h"

#include "controller/state/TextEdit.h"

#include <sstream>

namespace controller {

namespace {

constexpr int kVersion = 2;
/// A text up to this length is always written whole.
constexpr std::size_t kShortState = 65536;
/// So many edits may stand behind a text before it is written whole again.
constexpr std::int64_t kMaxEdits = 256;
/// Tells our databases from other programs'.
constexpr int kApplication = 0x416e6e63;

constexpr const char* kTables = R"(
CREATE TABLE agent_state(id INTEGER PRIMARY KEY, xml TEXT NOT NULL);
CREATE TABLE room_journal(room INTEGER PRIMARY KEY, volume_before INTEGER NOT NULL, volume_set INTEGER);
CREATE TABLE room_volume(room INTEGER PRIMARY KEY, volume INTEGER NOT NULL);
CREATE TABLE variable_value(device INTEGER NOT NULL, variable INTEGER NOT NULL, value TEXT NOT NULL,
    PRIMARY KEY(device, variable));
CREATE TABLE history(id INTEGER PRIMARY KEY AUTOINCREMENT, started_at TEXT NOT NULL, ended_at TEXT NOT NULL,
    announcement INTEGER NOT NULL, name TEXT NOT NULL, rooms TEXT NOT NULL, navigators TEXT NOT NULL,
    file TEXT NOT NULL, outcome TEXT NOT NULL);
)";

/// What version 2 has beside version 1: how a text of agent_state has changed since, in order.
constexpr const char* kEditTable = R"(
CREATE TABLE agent_state_edit(id INTEGER PRIMARY KEY, state INTEGER NOT NULL, place INTEGER NOT NULL, removed INTEGER NOT NULL,
    added TEXT NOT NULL);
)";

std::int64_t OneNumber(Sqlite& database, const std::string& query) {
    SqliteStatement statement(database, query);
    return statement.Step() ? statement.Number(0) : 0;
}

std::string OneText(Sqlite& database, const std::string& query) {
    SqliteStatement statement(database, query);
    return statement.Step() ? statement.Text(0) : "";
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

[[noreturn]] void ThrowUnusable(const std::filesystem::path& file, const std::string& why) {
    throw UnusableDatabase(
        "The database " + file.string() + " is damaged (" + why +
        "). Put a backup in its place, or start with --recover, which sets it aside and goes on "
        "with what can still be read");
}

} // namespace

StateDatabase::StateDatabase(const std::filesystem::path& folder) {
    const std::filesystem::path file = folder / kFileName;
    try {
        m_database = std::make_unique<Sqlite>(file.string(), Sqlite::Mode::ReadWriteCreate);
        m_database->Execute("PRAGMA busy_timeout=2000; PRAGMA journal_mode=WAL; PRAGMA synchronous=FULL; "
                            "PRAGMA foreign_keys=ON; PRAGMA journal_size_limit=8388608;");
        const std::string check = OneText(*m_database, "PRAGMA quick_check(1)");
        if (check != "ok")
            ThrowUnusable(file, check);
        Prepare();
    } catch (const SqliteError& error) {
        if (error.IsDamage())
            ThrowUnusable(file, error.what());
        throw std::runtime_error("The database " + file.string() + " cannot be used: " + error.what());
    }
}

void StateDatabase::Prepare() {
    const std::int64_t version = OneNumber(*m_database, "PRAGMA user_version");
    const std::int64_t tables = OneNumber(*m_database, "SELECT count(*) FROM sqlite_master");
    if (tables == 0 && version == 0) {
        SqliteTransaction transaction(*m_database);
        m_database->Execute(kTables);
        m_database->Execute(kEditTable);
        m_database->Execute("PRAGMA user_version=" + std::to_string(kVersion) +
                            "; PRAGMA application_id=" + std::to_string(kApplication));
        transaction.Commit();
        return;
    }
    if (OneNumber(*m_database, "PRAGMA application_id") != kApplication)
        throw UnusableDatabase(
            std::string("The file ") + kFileName +
            " in the data folder is another program's database; give the controller a data "
            "folder of its own");
    if (version == 1) {
        SqliteTransaction transaction(*m_database);
        m_database->Execute(kEditTable);
        m_database->Execute("PRAGMA user_version=" + std::to_string(kVersion));
        transaction.Commit();
        return;
    }
    if (version != kVersion)
        throw UnusableDatabase("The database comes from another version of this program (its format is " +
                               std::to_string(version) + ", this program's is " + std::to_string(kVersion) +
                               "); start the program that wrote it, or use another data folder");
}

StoredState StateDatabase::Read() {
    StoredState state;
    state.agentState = OneText(*m_database, "SELECT xml FROM agent_state ORDER BY id DESC LIMIT 1");
    SqliteStatement edits(*m_database, "SELECT place, removed, added FROM agent_state_edit "
                                       "WHERE state = (SELECT max(id) FROM agent_state) ORDER BY id");
    while (edits.Step())
        if (!TextEdit{edits.Number(0), edits.Number(1), edits.Text(2)}.Apply(state.agentState))
            throw UnusableDatabase(std::string("The announcements in ") + kFileName +
                                   " do not belong together. Put a backup in its place");
    m_agentState = std::make_shared<const std::string>(state.agentState);
    SqliteStatement journal(*m_database, "SELECT room, volume_before, volume_set FROM room_journal");
    while (journal.Step()) {
        JournalEntry entry{
            static_cast<std::uint32_t>(journal.Number(0)), static_cast<unsigned>(journal.Number(1)), {}};
        if (!journal.IsNull(2))
            entry.volumeSet = static_cast<unsigned>(journal.Number(2));
        state.journal.push_back(entry);
    }
    SqliteStatement volumes(*m_database, "SELECT room, volume FROM room_volume");
    while (volumes.Step())
        state.volumes[static_cast<std::uint32_t>(volumes.Number(0))] =
            static_cast<unsigned>(volumes.Number(1));
    SqliteStatement variables(*m_database, "SELECT device, variable, value FROM variable_value");
    while (variables.Step())
        state.variables[{static_cast<std::uint32_t>(variables.Number(0)),
                         static_cast<std::uint32_t>(variables.Number(1))}] = variables.Text(2);
    return state;
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
    const auto before = m_agentState;
    SqliteTransaction transaction(*m_database);
    try {
        writes(*this);
        transaction.Commit();
    } catch (...) {
        m_agentState = before;
        throw;
    }
}

void StateDatabase::WriteAgentState(std::shared_ptr<const std::string> xml) {
    if (!WriteStateEdit(*xml))
        WriteWholeState(*xml);
    m_agentState = std::move(xml);
}

void StateDatabase::WriteWholeState(const std::string& xml) {
    SqliteStatement(*m_database, "INSERT INTO agent_state(xml) VALUES(?)").Bind(xml).Run();
    m_database->Execute("DELETE FROM agent_state WHERE id <= (SELECT max(id) FROM agent_state) - 2; "
                        "DELETE FROM agent_state_edit;");
}

/// False where the whole text has to be written.
bool StateDatabase::WriteStateEdit(const std::string& xml) {
    if (!m_agentState || m_agentState->size() <= kShortState)
        return false;
    const TextEdit edit = TextEdit::Between(*m_agentState, xml);
    if (edit.added.size() > kShortState ||
        OneNumber(*m_database, "SELECT count(*) FROM agent_state_edit") >= kMaxEdits)
        return false;
    SqliteStatement(*m_database, "INSERT INTO agent_state_edit(state, place, removed, added) "
                                 "VALUES((SELECT max(id) FROM agent_state), ?, ?, ?)")
        .Bind(edit.place)
        .Bind(edit.removed)
        .Bind(edit.added)
        .Run();
    return true;
}

void StateDatabase::WriteJournal(const JournalEntry& entry) {
    SqliteStatement(*m_database,
                    "INSERT OR REPLACE INTO room_journal(room, volume_before, volume_set) VALUES(?, ?, ?)")
        .Bind(static_cast<std::int64_t>(entry.room))
        .Bind(static_cast<std::int64_t>(entry.volumeBefore))
        .Bind(entry.volumeSet)
        .Run();
}

void StateDatabase::StrikeJournal(std::uint32_t room) {
    SqliteStatement(*m_database, "DELETE FROM room_journal WHERE room = ?")
        .Bind(static_cast<std::int64_t>(room))
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
