// How the database is opened, made, checked and taken over.
#include "controller/driver/Durable.h"
#include "controller/state/FormerSchema.h"
#include "controller/state/StateDatabase.h"
#include "controller/state/StateText.h"

#include <system_error>

namespace controller {

namespace {

constexpr int kVersion = 4;
/// Tells our databases from other programs'.
constexpr int kApplication = 0x416e6e63;

/// What versions from 3 on have in the place of one text with all announcements.
constexpr const char* kAnnouncementTables = R"(
CREATE TABLE announcement(key INTEGER PRIMARY KEY, xml TEXT NOT NULL, house TEXT NOT NULL, checksum INTEGER NOT NULL);
CREATE TABLE kept(what TEXT PRIMARY KEY) WITHOUT ROWID;
)";

/// And what waits to be played.
constexpr const char* kQueueTable = R"(
CREATE TABLE queued(place INTEGER PRIMARY KEY, entry INTEGER NOT NULL, announcement INTEGER NOT NULL,
    name TEXT NOT NULL, asked_at INTEGER NOT NULL);
)";

/// And what other programs had before announcements changed it.
constexpr const char* kBorrowedTable = R"(
CREATE TABLE borrowed(kind TEXT NOT NULL, thing TEXT NOT NULL, property TEXT NOT NULL, before TEXT NOT NULL,
    set_to TEXT NOT NULL, PRIMARY KEY(kind, thing, property)) WITHOUT ROWID;
)";

constexpr const char* kOtherTables = R"(
CREATE TABLE room_journal(room INTEGER PRIMARY KEY, volume_before INTEGER NOT NULL, volume_set INTEGER);
CREATE TABLE room_volume(room INTEGER PRIMARY KEY, volume INTEGER NOT NULL);
CREATE TABLE variable_value(device INTEGER NOT NULL, variable INTEGER NOT NULL, value TEXT NOT NULL,
    PRIMARY KEY(device, variable));
CREATE TABLE history(id INTEGER PRIMARY KEY AUTOINCREMENT, started_at TEXT NOT NULL, ended_at TEXT NOT NULL,
    announcement INTEGER NOT NULL, name TEXT NOT NULL, rooms TEXT NOT NULL, navigators TEXT NOT NULL,
    file TEXT NOT NULL, outcome TEXT NOT NULL);
)";

/// What version 4 has beyond version 3.
constexpr const char* kSoundTables = R"(
CREATE TABLE sound(name TEXT PRIMARY KEY, text TEXT, voice TEXT, speed INTEGER, chime TEXT,
    file TEXT, lufs INTEGER, true_peak INTEGER, is_as_it_is INTEGER, is_passing INTEGER) WITHOUT ROWID;
)";

std::int64_t OneNumber(Sqlite& database, const std::string& query) {
    SqliteStatement statement(database, query);
    return statement.Step() ? statement.Number(0) : 0;
}

std::string OneText(Sqlite& database, const std::string& query) {
    SqliteStatement statement(database, query);
    return statement.Step() ? statement.Text(0) : "";
}

[[noreturn]] void ThrowReadOnly(const std::filesystem::path& file) {
    throw UnusableDatabase(
        "The database " + file.string() +
        " cannot be written. It, and what stands beside it, must belong to the user that the "
        "controller runs as, with the right to write");
}

void MarkMade(const std::filesystem::path& mark) {
    try {
        durable::Draft draft(mark, 0600);
        draft.Write("There is a database beside this file; were it missing, that would be no fresh start.\n");
        draft.Place();
    } catch (const std::system_error&) { // NOLINT(bugprone-empty-catch)
        // The disk may be full, which is no reason to refuse the start; the next one tries again.
    }
}

/// A database of a former version may be everybody's.
void KeepToOwner(const std::filesystem::path& file) {
    using std::filesystem::perms;
    std::error_code error; // whoever may write it and does not own it leaves it as it is
    std::filesystem::permissions(file, perms::group_all | perms::others_all,
                                 std::filesystem::perm_options::remove, error);
}

} // namespace

StateDatabase::StateDatabase(const std::filesystem::path& folder, const std::string& name)
    : m_file(folder / name) {
    if (name == kFileName && std::filesystem::exists(folder / kRecoveredName))
        throw DamagedDatabase("The recovery of the database " + m_file.string() +
                              " was interrupted. Start with --recover again, which ends it");
    try {
        Begin(name == kFileName);
    } catch (const SqliteError& error) {
        if (error.IsDamage())
            ThrowDamaged(error.what());
        if (error.IsReadOnly())
            ThrowReadOnly(m_file);
        throw std::runtime_error("The database " + m_file.string() + " cannot be used: " + error.what());
    }
}

/// `isFolders`: it is the one by which the folder is known, of which there may have been one before.
void StateDatabase::Begin(bool isFolders) {
    namespace fs = std::filesystem;
    const fs::path made = m_file.parent_path() / kMadeName;
    if (!fs::exists(m_file)) {
        if (isFolders && fs::exists(m_file.string() + "-wal"))
            ThrowDamaged("it is missing, and its write-ahead log is there");
        if (isFolders && fs::exists(made))
            ThrowDamaged("it is missing, and " + std::string(kMadeName) + " says that there was one");
        Make();
    }
    // SQLite takes it for a new one, and throws the log beside it away.
    if (fs::file_size(m_file) == 0)
        ThrowDamaged("it is empty");
    for (const char* companion : {"", "-wal", "-shm"})
        KeepToOwner(m_file.string() + companion);
    Open();
    if (isFolders && !fs::exists(made))
        MarkMade(made);
}

void StateDatabase::ThrowDamaged(const std::string& why) const {
    throw DamagedDatabase(
        "The database " + m_file.string() + " is damaged (" + why +
        "). Put a backup in its place, or start with --recover, which sets it aside and goes "
        "on with what can still be read");
}

void StateDatabase::Open() {
    m_database = std::make_unique<Sqlite>(m_file.string());
    if (m_database->IsReadOnly())
        ThrowReadOnly(m_file);
    m_database->Execute("PRAGMA busy_timeout=2000;");
    CheckVersion();
    m_database->Execute("PRAGMA journal_mode=WAL; PRAGMA synchronous=FULL; PRAGMA foreign_keys=ON; "
                        "PRAGMA journal_size_limit=8388608;");
    const std::string check = OneText(*m_database, "PRAGMA quick_check(1)");
    if (check != "ok")
        ThrowDamaged(check);
    const std::int64_t version = OneNumber(*m_database, "PRAGMA user_version");
    if (version < kVersion)
        Migrate(version);
    CheckTables();
}

void StateDatabase::CheckVersion() const {
    const std::int64_t version = OneNumber(*m_database, "PRAGMA user_version");
    if (version == 0 && OneNumber(*m_database, "SELECT count(*) FROM sqlite_master") == 0)
        ThrowDamaged("it holds nothing");
    if (version < 1 || OneNumber(*m_database, "PRAGMA application_id") != kApplication)
        throw UnusableDatabase(
            "The file " + m_file.filename().string() +
            " in the data folder is another program's database; give the controller a data "
            "folder of its own");
    if (version > kVersion)
        throw UnusableDatabase("The database comes from a later version of this program (its format is " +
                               std::to_string(version) + ", this program's is " + std::to_string(kVersion) +
                               "); start that version, restore a backup, or use another data folder");
}

void StateDatabase::CheckTables() const {
    for (const char* table : {"announcement", "kept", "room_journal", "room_volume", "variable_value",
                              "history", "sound", "queued", "borrowed"})
        if (!SqliteStatement(*m_database, "SELECT 1 FROM sqlite_master WHERE type = 'table' AND name = ?")
                 .Bind(std::string(table))
                 .Step())
            ThrowDamaged("the table " + std::string(table) + " is missing");
}

/// Whole or not at all, and for its owner alone: what SQLite puts beside it has the same rights.
void StateDatabase::Make() const {
    const std::filesystem::path part = m_file.string() + ".new";
    for (const char* companion : {"", "-journal", "-wal", "-shm"})
        std::filesystem::remove(part.string() + companion);
    durable::MakePrivate(part);
    {
        Sqlite database(part.string());
        SqliteTransaction transaction(database);
        database.Execute(std::string(kAnnouncementTables) + kOtherTables + kSoundTables + kQueueTable +
                         kBorrowedTable + "PRAGMA user_version=" + std::to_string(kVersion) +
                         "; PRAGMA application_id=" + std::to_string(kApplication));
        transaction.Commit();
    }
    durable::Sync(part);
    durable::Replace(part, m_file);
}

void StateDatabase::Migrate(std::int64_t version) {
    constexpr std::int64_t kFirstWithRows = 3;
    KeepCopy(version);
    SqliteTransaction transaction(*m_database);
    if (version < kFirstWithRows)
        TakeTextApart();
    m_database->Execute(std::string(kSoundTables) + kQueueTable + kBorrowedTable +
                        "PRAGMA user_version=" + std::to_string(kVersion));
    transaction.Commit();
}

void StateDatabase::TakeTextApart() {
    try {
        const std::string text = former_schema::Text(*m_database);
        m_database->Execute(kAnnouncementTables);
        if (!text.empty())
            ReplaceAnnouncements(state_text::Split(text));
    } catch (const SqliteError&) {
        throw;
    } catch (const std::runtime_error& error) {
        ThrowDamaged(std::string("its text of announcements ") + error.what());
    }
    former_schema::Drop(*m_database);
}

/// A whole copy, with all that a log beside the file holds. What an interrupted one has left goes.
void StateDatabase::KeepCopy(std::int64_t version) {
    const std::string copy = m_file.string() + ".schema-" + std::to_string(version);
    const std::string part = copy + ".part";
    std::filesystem::remove(part);
    durable::MakePrivate(part);
    SqliteStatement(*m_database, "VACUUM INTO ?").Bind(part).Run();
    durable::Sync(part);
    durable::Replace(part, copy);
}

} // namespace controller
