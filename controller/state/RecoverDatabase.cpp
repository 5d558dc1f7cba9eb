#include "controller/driver/Durable.h"
#include "controller/state/FormerSchema.h"
#include "controller/state/RowChecksum.h"
#include "controller/state/StateDatabase.h"
#include "controller/state/StateText.h"
#include "controller/state/UtcText.h"
#include "host/VqXML.h"

#include <algorithm>

namespace controller {

namespace {

namespace fs = std::filesystem;

constexpr const char* kCompanions[] = {"", "-wal", "-shm"};
/// So many keys are looked for behind a damage.
constexpr int kMaxKeys = 100000;

fs::path FreeName(const fs::path& file) {
    std::string stamp = UtcText(std::chrono::system_clock::now());
    stamp.erase(std::remove_if(stamp.begin(), stamp.end(), [](char c) { return c == '-' || c == ':'; }),
                stamp.end());
    const std::string base = file.string() + ".damaged-" + stamp;
    fs::path name = base;
    for (int count = 2; fs::exists(name) || fs::exists(name.string() + "-wal"); ++count)
        name = base + "-" + std::to_string(count);
    return name;
}

/// A log whose database is gone may hold all of it, but SQLite looks for it behind the first page alone.
void MakeRoomForLog(const fs::path& copy) {
    constexpr std::uintmax_t kPage = 4096;
    const bool isEmpty = !fs::exists(copy) || fs::file_size(copy) == 0;
    if (!isEmpty || !fs::exists(copy.string() + "-wal"))
        return;
    if (!fs::exists(copy))
        durable::MakePrivate(copy);
    fs::resize_file(copy, kPage);
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

bool IsAnnouncement(const AnnouncementRow& row) {
    const auto document = VqXML::CreateXmlDocument(row.xml);
    return document && document->GetRootNode()->GetName() == "announcement";
}

/// The rows of a damaged table, one by one, and what is said of those that are lost.
class RowsOfDamaged {
public:
    explicit RowsOfDamaged(Sqlite& damaged) {
        try {
            const SqliteStatement table(damaged, kRows);
        } catch (const SqliteError& error) {
            m_lost.push_back(std::string("Lost: all announcements: ") + error.what() + ".");
            return;
        }
        for (int failures = 0; failures < kMaxKeys; ++m_next, ++failures) {
            try {
                ReadFrom(damaged);
                break;
            } catch (const SqliteError&) {
                m_isGap = true; // the next keys may stand on a page that can be read
            }
        }
        if (m_isGap)
            TellGap("");
    }

    [[nodiscard]] const AnnouncementRows& Rows() const noexcept { return m_rows; }
    [[nodiscard]] const std::vector<std::string>& Lost() const noexcept { return m_lost; }

private:
    void ReadFrom(Sqlite& damaged) {
        SqliteStatement rows(damaged, kRows);
        rows.Bind(m_next);
        while (rows.Step()) {
            AnnouncementRow row{rows.Number(0), rows.Text(1), rows.Text(2)};
            // What is left of a page may give keys that were not asked for, again and again.
            if (row.key < m_next) {
                m_isGap = true;
                continue;
            }
            if (m_isGap)
                TellGap("before " + Named(row));
            m_next = row.key + 1;
            if (ChecksumOf(row) != rows.Number(3) || !IsAnnouncement(row))
                m_lost.push_back("Lost: " + Named(row) + ", which is damaged.");
            else
                m_rows.push_back(std::move(row));
        }
    }

    void TellGap(const std::string& end) {
        const std::string begin = m_rows.empty() ? "" : "behind " + Named(m_rows.back());
        m_lost.push_back("Lost: what stood " + begin + (begin.empty() || end.empty() ? "" : " and ") + end +
                         ", where the file cannot be read.");
        m_isGap = false;
    }

    static constexpr const char* kRows =
        "SELECT key, xml, house, checksum FROM announcement WHERE key >= ? ORDER BY key";

    AnnouncementRows m_rows;
    std::vector<std::string> m_lost;
    std::int64_t m_next = 0;
    bool m_isGap = false;
};

bool IsOfFormerSchema(Sqlite& damaged) {
    try {
        return SqliteStatement(damaged, "SELECT 1 FROM sqlite_master WHERE name = 'agent_state'").Step();
    } catch (const SqliteError&) {
        return false;
    }
}

AnnouncementRows FormerRows(Sqlite& damaged) {
    const std::string text = former_schema::NewestWholeText(damaged);
    try {
        return text.empty() ? AnnouncementRows() : state_text::Split(text);
    } catch (const std::runtime_error&) {
        return {}; // XML of something else
    }
}

void TakeOverAnnouncements(Sqlite& damaged, StateDatabase& sound, std::vector<std::string>& lines) {
    AnnouncementRows taken;
    if (IsOfFormerSchema(damaged)) {
        taken = FormerRows(damaged);
    } else {
        const RowsOfDamaged rows(damaged);
        lines.insert(lines.end(), rows.Lost().begin(), rows.Lost().end());
        taken = rows.Rows();
    }
    if (!taken.empty())
        sound.ReplaceAnnouncements(taken);
    lines.push_back("Read: " + std::to_string(taken.size()) + " announcements.");
}

void TakeOver(Sqlite& damaged, StateDatabase& sound, std::vector<std::string>& lines) {
    TakeOverAnnouncements(damaged, sound, lines);
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
    const std::size_t sounds =
        TakeRows(damaged, "SELECT name, text, voice, speed, chime FROM sound WHERE text IS NOT NULL",
                 [&](const SqliteStatement& row) {
                     sound.WriteSpokenSound({row.Text(0), row.Text(1), row.Text(2), Id(row, 3), row.Text(4)});
                 });
    (void)TakeRows(damaged,
                   "SELECT name, file, lufs, true_peak, is_as_it_is FROM sound WHERE file IS NOT NULL",
                   [&](const SqliteStatement& row) {
                       sound.WriteSoundLevel(
                           {row.Text(0), row.Text(1), row.Number(2), row.Number(3), row.Number(4) != 0});
                   });
    (void)TakeRows(damaged, "SELECT name FROM sound WHERE is_passing",
                   [&](const SqliteStatement& row) { sound.WritePassingSound(row.Text(0), true); });
    (void)TakeRows(damaged, "SELECT kind, thing, property, before, set_to FROM borrowed",
                   [&](const SqliteStatement& row) {
                       sound.WriteBorrowed({row.Text(0), row.Text(1), row.Text(2), row.Text(3), row.Text(4)});
                   });
    QueuedRows queue;
    (void)TakeRows(damaged, "SELECT entry, announcement, name, asked_at FROM queued ORDER BY place",
                   [&](const SqliteStatement& row) {
                       queue.push_back({static_cast<std::uint64_t>(row.Number(0)), Id(row, 1), row.Text(2),
                                        row.Number(3)});
                   });
    sound.WriteQueue(queue);
    lines.push_back("Also read: " + std::to_string(volumes) + " volumes of rooms, " +
                    std::to_string(variables) + " values of variables, " + std::to_string(sounds) +
                    " spoken sounds, " + std::to_string(played) + " entries of the history.");
}

void ReadWhatCanBe(const fs::path& copy, StateDatabase& sound, std::vector<std::string>& lines) {
    try {
        Sqlite damaged(copy.string());
        // Goes on when one table's place is lost, instead of refusing all of them.
        damaged.Execute("PRAGMA writable_schema=ON");
        sound.Together([&](StateDatabase& database) { TakeOver(damaged, database, lines); });
    } catch (const SqliteError& error) {
        lines.push_back(std::string("Nothing could be read from it: ") + error.what() + ".");
    }
}

bool IsSound(const fs::path& folder) {
    try {
        (void)StateDatabase(folder).Read();
        return true;
    } catch (const DamagedDatabase&) {
        return false;
    }
}

void RemoveWithCompanions(const fs::path& file) {
    for (const char* companion : kCompanions)
        fs::remove(file.string() + companion);
}

void CopyWithCompanions(const fs::path& from, const fs::path& to) {
    for (const char* companion : kCompanions) {
        if (!fs::exists(from.string() + companion))
            continue;
        fs::copy_file(from.string() + companion, to.string() + companion);
        durable::Sync(to.string() + companion);
    }
}

/// The new database takes the old one's place. What stands beside the old one would be taken for the new
/// one's.
void PutInPlace(const fs::path& folder) {
    const std::string file = (folder / StateDatabase::kFileName).string();
    fs::remove(file + "-wal");
    fs::remove(file + "-shm");
    durable::Replace(folder / StateDatabase::kRecoveredName, file);
}

/// A new database under another name, and in it what can be read; on the disk as a whole, or not there.
void Fill(const fs::path& folder, const fs::path& copy, std::vector<std::string>& lines) {
    const fs::path recovered = folder / StateDatabase::kRecoveredName;
    const fs::path part = recovered.string() + ".part";
    RemoveWithCompanions(part);
    {
        StateDatabase sound(folder, part.filename().string());
        ReadWhatCanBe(copy, sound, lines);
    }
    durable::Sync(part);
    durable::Replace(part, recovered);
}

} // namespace

std::vector<std::string> StateDatabase::Recover(const std::filesystem::path& folder) {
    const fs::path file = folder / kFileName;
    if (fs::exists(folder / kRecoveredName)) {
        PutInPlace(folder);
        return {"The recovery that was interrupted has been ended."};
    }
    const bool isThere = fs::exists(file) || fs::exists(file.string() + "-wal");
    if ((!isThere && !fs::exists(folder / kMadeName)) || IsSound(folder))
        return {};
    const fs::path aside = FreeName(file);
    CopyWithCompanions(file, aside);
    durable::Sync(folder);
    // Read from a copy: SQLite writes to what it opens, and what is set aside shall stay as it is.
    const fs::path copy = file.string() + ".recovering";
    RemoveWithCompanions(copy);
    CopyWithCompanions(file, copy);
    MakeRoomForLog(copy);
    std::vector<std::string> lines{isThere
                                       ? "The damaged database has been set aside as " + aside.string() + "."
                                       : "There was no database any more."};
    Fill(folder, copy, lines);
    PutInPlace(folder);
    RemoveWithCompanions(copy);
    return lines;
}

} // namespace controller
