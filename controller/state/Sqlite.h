#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>

struct sqlite3;
struct sqlite3_stmt;

namespace controller {

/// A failure that SQLite reported.
class SqliteError : public std::runtime_error {
public:
    SqliteError(int code, const std::string& text) : std::runtime_error(text), m_code(code) {}

    /// Whether the file itself is damaged, is no database, or has not the tables that it should have.
    [[nodiscard]] bool IsDamage() const noexcept;

    /// Whether this user may not write it, or what SQLite keeps beside it.
    [[nodiscard]] bool IsReadOnly() const noexcept;

private:
    int m_code;
};

/// An open SQLite database; used by one thread at a time.
class Sqlite {
public:
    /// Opens the file for reading and writing, and makes it when it is missing. Throws `SqliteError`.
    explicit Sqlite(const std::string& file);
    Sqlite(const Sqlite&) = delete;
    Sqlite& operator=(const Sqlite&) = delete;
    ~Sqlite();

    /// Runs statements that give no rows. Throws `SqliteError`.
    void Execute(const std::string& statements);

    /// SQLite opens what this user may not write, all the same.
    [[nodiscard]] bool IsReadOnly() const noexcept;

    [[nodiscard]] sqlite3* Handle() const noexcept { return m_handle; }

private:
    sqlite3* m_handle = nullptr;
};

/// One prepared statement: bind the parameters in their order, step, read columns. Throws `SqliteError`.
class SqliteStatement {
public:
    SqliteStatement(Sqlite& database, const std::string& text);
    SqliteStatement(const SqliteStatement&) = delete;
    SqliteStatement& operator=(const SqliteStatement&) = delete;
    ~SqliteStatement();

    SqliteStatement& Bind(std::int64_t number);
    SqliteStatement& Bind(const std::string& text);
    SqliteStatement& Bind(std::optional<unsigned> number);

    /// Whether there is another row.
    [[nodiscard]] bool Step();

    /// Runs a statement that gives no rows.
    void Run() { (void)Step(); }

    [[nodiscard]] std::int64_t Number(int column) const;
    [[nodiscard]] bool IsNull(int column) const;
    [[nodiscard]] std::string Text(int column) const;

private:
    void Check(int code) const;

    Sqlite& m_database;
    sqlite3_stmt* m_statement = nullptr;
    int m_bound = 0;
};

/// All or nothing: what is not committed is rolled back.
class SqliteTransaction {
public:
    explicit SqliteTransaction(Sqlite& database) : m_database(database) {
        database.Execute("BEGIN IMMEDIATE");
    }
    SqliteTransaction(const SqliteTransaction&) = delete;
    SqliteTransaction& operator=(const SqliteTransaction&) = delete;
    ~SqliteTransaction();

    void Commit();

private:
    Sqlite& m_database;
    bool m_isCommitted = false;
};

} // namespace controller
