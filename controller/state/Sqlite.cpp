#include "controller/state/Sqlite.h"

#include <sqlite3.h>

namespace controller {

bool SqliteError::IsDamage() const noexcept {
    return m_code == SQLITE_CORRUPT || m_code == SQLITE_NOTADB || m_code == SQLITE_ERROR;
}

bool SqliteError::IsReadOnly() const noexcept {
    return m_code == SQLITE_READONLY || m_code == SQLITE_CANTOPEN || m_code == SQLITE_PERM;
}

Sqlite::Sqlite(const std::string& file) {
    constexpr int kFlags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX;
    const int code = sqlite3_open_v2(file.c_str(), &m_handle, kFlags, nullptr);
    if (code == SQLITE_OK)
        return;
    const std::string text = m_handle != nullptr ? sqlite3_errmsg(m_handle) : sqlite3_errstr(code);
    sqlite3_close_v2(m_handle);
    throw SqliteError(code & 0xff, text);
}

Sqlite::~Sqlite() {
    sqlite3_close_v2(m_handle);
}

bool Sqlite::IsReadOnly() const noexcept {
    return sqlite3_db_readonly(m_handle, "main") == 1;
}

void Sqlite::Execute(const std::string& statements) {
    const int code = sqlite3_exec(m_handle, statements.c_str(), nullptr, nullptr, nullptr);
    if (code != SQLITE_OK)
        throw SqliteError(code & 0xff, sqlite3_errmsg(m_handle));
}

SqliteStatement::SqliteStatement(Sqlite& database, const std::string& text) : m_database(database) {
    Check(sqlite3_prepare_v2(database.Handle(), text.data(), static_cast<int>(text.size()), &m_statement,
                             nullptr));
}

SqliteStatement::~SqliteStatement() {
    sqlite3_finalize(m_statement);
}

void SqliteStatement::Check(int code) const {
    if (code != SQLITE_OK)
        throw SqliteError(code & 0xff, sqlite3_errmsg(m_database.Handle()));
}

SqliteStatement& SqliteStatement::Bind(std::int64_t number) {
    Check(sqlite3_bind_int64(m_statement, ++m_bound, number));
    return *this;
}

SqliteStatement& SqliteStatement::Bind(const std::string& text) {
    Check(
        sqlite3_bind_text64(m_statement, ++m_bound, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8));
    return *this;
}

SqliteStatement& SqliteStatement::Bind(std::optional<unsigned> number) {
    if (number)
        return Bind(static_cast<std::int64_t>(*number));
    Check(sqlite3_bind_null(m_statement, ++m_bound));
    return *this;
}

bool SqliteStatement::Step() {
    const int code = sqlite3_step(m_statement);
    if (code == SQLITE_ROW)
        return true;
    if (code != SQLITE_DONE)
        Check(code);
    return false;
}

std::int64_t SqliteStatement::Number(int column) const {
    return sqlite3_column_int64(m_statement, column);
}

bool SqliteStatement::IsNull(int column) const {
    return sqlite3_column_type(m_statement, column) == SQLITE_NULL;
}

std::string SqliteStatement::Text(int column) const {
    const unsigned char* text = sqlite3_column_text(m_statement, column);
    const auto size = static_cast<std::size_t>(sqlite3_column_bytes(m_statement, column));
    return text != nullptr ? std::string(reinterpret_cast<const char*>(text), size) : std::string();
}

SqliteTransaction::~SqliteTransaction() {
    // Fails when SQLite has rolled back by itself, as it does on a full disk; either way nothing is left of
    // it.
    if (!m_isCommitted)
        (void)sqlite3_exec(m_database.Handle(), "ROLLBACK", nullptr, nullptr, nullptr);
}

void SqliteTransaction::Commit() {
    m_database.Execute("COMMIT");
    m_isCommitted = true;
}

} // namespace controller
