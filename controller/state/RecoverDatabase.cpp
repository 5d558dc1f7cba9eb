#include "controller/state/StateDatabase.h"
#include "controller/state/TextEdit.h"
#include "host/VqXML.h"

#include <algorithm>
#include <ctime>

namespace controller {

namespace {

namespace fs = std::filesystem;

constexpr const char* kCompanions[] = {"", "-wal", "-shm"};

std::string Stamp() {
    const std::time_t now = std::time(nullptr);
    std::tm parts{};
    gmtime_r(&now, &parts);
    char text[32];
    (void)std::strftime(text, sizeof text, "%Y%m%dT%H%M%SZ", &parts);
    return text;
}

fs::path FreeName(const fs::path& file) {
    const std::string base = file.string() + ".damaged-" + Stamp();
    fs::path name = base;
    for (int count = 2; fs::exists(name); ++count)
        name = base + "-" + std::to_string(count);
    return name;
}

/// Takes the rows of one query one by one, as far as they can be read; gives how many.
template <class Take>
std::size_t TakeRows(Sqlite& database, const std::string& query, const Take& take) {
    std::size_t taken = 0;
    try {
        SqliteStatement rows(database, query);
        while (rows.Step()) {
            take(rows);
            ++taken;
        }
    } catch (const SqliteError&) {
        // What stands behind the damage is lost.
    }
    return taken;
}

std::uint32_t Id(const SqliteStatement& row, int column) {
    return static_cast<std::uint32_t>(row.Number(column));
}

/// The text with the edits behind it, as far as they can be read and give a whole text.
std::string WithEdits(Sqlite& damaged, std::int64_t id, const std::string& state) {
    std::string edited = state;
    std::int64_t last = 0;
    bool isWhole = true;
    (void)TakeRows(damaged,
                   "SELECT id, place, removed, added FROM agent_state_edit WHERE state = " +
                       std::to_string(id) + " ORDER BY id",
                   [&](const SqliteStatement& row) {
                       // None may be missing in between.
                       isWhole = isWhole && row.Number(0) == ++last &&
                                 TextEdit{row.Number(1), row.Number(2), row.Text(3)}.Apply(edited);
                   });
    return isWhole && VqXML::CreateXmlDocument(edited) ? edited : state;
}

/// The newest state that is whole; a torn one would be refused by the agent. From both ends, for what stands
/// behind the damage can only be reached from the other one.
std::string NewestWholeState(Sqlite& damaged) {
    std::int64_t newest = -1;
    std::int64_t last = -1; // also of those that are torn
    std::string state;
    for (const char* order : {"DESC", "ASC"})
        (void)TakeRows(damaged, std::string("SELECT id, xml FROM agent_state ORDER BY id ") + order,
                       [&](const SqliteStatement& row) {
                           std::string xml = row.Text(1);
                           last = std::max(last, row.Number(0));
                           if (row.Number(0) <= newest || !VqXML::CreateXmlDocument(xml))
                               return;
                           newest = row.Number(0);
                           state = std::move(xml);
                       });
    return newest == last ? WithEdits(damaged, newest, state) : state;
}

void TakeOver(Sqlite& damaged, StateDatabase& sound, std::vector<std::string>& lines) {
    const std::string state = NewestWholeState(damaged);
    if (!state.empty())
        sound.WriteAgentState(state);
    lines.emplace_back(state.empty() ? "No announcements could be read."
                                     : "The announcements could be read.");
    const std::size_t volumes =
        TakeRows(damaged, "SELECT room, volume FROM room_volume", [&](const SqliteStatement& row) {
            sound.WriteVolume(Id(row, 0), std::min(Id(row, 1), 100U));
        });
    (void)TakeRows(damaged, "SELECT room, volume_before, volume_set FROM room_journal",
                   [&](const SqliteStatement& row) {
                       JournalEntry entry{Id(row, 0), std::min(Id(row, 1), 100U), std::nullopt};
                       if (!row.IsNull(2))
                           entry.volumeSet = Id(row, 2);
                       sound.WriteJournal(entry);
                   });
    const std::size_t variables = TakeRows(
        damaged, "SELECT device, variable, value FROM variable_value",
        [&](const SqliteStatement& row) { sound.WriteVariable(Id(row, 0), Id(row, 1), row.Text(2)); });
    const std::size_t played = TakeRows(
        damaged, "SELECT started_at, ended_at, announcement, name, file, outcome FROM history ORDER BY id",
        [&](const SqliteStatement& row) {
            sound.AddHistory(
                {0, row.Text(0), row.Text(1), Id(row, 2), row.Text(3), {}, {}, row.Text(4), row.Text(5)});
        });
    lines.push_back("Also read: " + std::to_string(volumes) + " volumes of rooms, " +
                    std::to_string(variables) + " values of variables, " + std::to_string(played) +
                    " entries of the history.");
}

void ReadWhatCanBe(const fs::path& copy, StateDatabase& sound, std::vector<std::string>& lines) {
    try {
        Sqlite damaged(copy.string(), Sqlite::Mode::ReadWriteCreate);
        // Goes on when one table's place is lost, instead of refusing all of them.
        damaged.Execute("PRAGMA writable_schema=ON");
        sound.Together([&](StateDatabase& database) { TakeOver(damaged, database, lines); });
    } catch (const SqliteError& error) {
        lines.push_back(std::string("Nothing could be read from it: ") + error.what() + ".");
    }
}

bool IsSound(const fs::path& folder) {
    try {
        const StateDatabase database(folder);
        return true;
    } catch (const UnusableDatabase&) {
        return false;
    }
}

} // namespace

std::vector<std::string> StateDatabase::Recover(const std::filesystem::path& folder) {
    const fs::path file = folder / kFileName;
    if (!fs::exists(file) || IsSound(folder))
        return {};
    const fs::path aside = FreeName(file);
    // Read from a copy: SQLite writes to what it opens, and what is set aside shall stay as it is.
    const fs::path copy = file.string() + ".recovering";
    for (const char* companion : kCompanions) {
        if (!fs::exists(file.string() + companion))
            continue;
        fs::rename(file.string() + companion, aside.string() + companion);
        fs::copy_file(aside.string() + companion, copy.string() + companion,
                      fs::copy_options::overwrite_existing);
    }
    std::vector<std::string> lines{"The damaged database has been set aside as " + aside.string() + "."};
    StateDatabase sound(folder);
    ReadWhatCanBe(copy, sound, lines);
    for (const char* companion : kCompanions)
        fs::remove(copy.string() + companion);
    return lines;
}

} // namespace controller
