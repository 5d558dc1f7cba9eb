#include "controller/state/FormerSchema.h"

#include "host/VqXML.h"

#include <algorithm>
#include <stdexcept>
#include <vector>

namespace controller::former_schema {

namespace {

bool HasTable(Sqlite& database, const std::string& name) {
    return SqliteStatement(database, "SELECT 1 FROM sqlite_master WHERE type = 'table' AND name = ?")
        .Bind(name)
        .Step();
}

/// Does to the text what has been written down behind it, in order and none left out; false when that cannot
/// be done.
bool ApplyEdits(Sqlite& database, std::int64_t state, std::string& text) {
    if (!HasTable(database, "agent_state_edit"))
        return true;
    SqliteStatement edits(database, "SELECT id, place, removed, added FROM agent_state_edit "
                                    "WHERE state = ? ORDER BY id");
    edits.Bind(state);
    for (std::int64_t count = 1; edits.Step(); ++count) {
        const std::int64_t place = edits.Number(1);
        const std::int64_t removed = edits.Number(2);
        const auto size = static_cast<std::int64_t>(text.size());
        if (edits.Number(0) != count || place < 0 || removed < 0 || place > size || removed > size - place)
            return false;
        text.replace(static_cast<std::size_t>(place), static_cast<std::size_t>(removed), edits.Text(3));
    }
    return true;
}

/// The text with its edits; without them where they cannot be read or do not make a whole one.
std::string WithEdits(Sqlite& damaged, std::int64_t state, const std::string& text) {
    std::string edited = text;
    try {
        if (ApplyEdits(damaged, state, edited) && VqXML::CreateXmlDocument(edited))
            return edited;
    } catch (const SqliteError&) { // NOLINT(bugprone-empty-catch): then it is the text before them
    }
    return text;
}

/// What has been found of the texts.
struct Texts {
    std::int64_t newest = -1; ///< of those that are whole
    std::int64_t last = -1;   ///< also of those that are torn
    std::string whole;        ///< the newest
};

/// Takes texts in this order, as far as they can be read.
void TakeTexts(Sqlite& damaged, const std::string& order, Texts& texts) {
    try {
        SqliteStatement rows(damaged, "SELECT id, xml FROM agent_state ORDER BY id " + order);
        while (rows.Step()) {
            texts.last = std::max(texts.last, rows.Number(0));
            std::string xml = rows.Text(1);
            if (rows.Number(0) <= texts.newest || !VqXML::CreateXmlDocument(xml))
                continue;
            texts.newest = rows.Number(0);
            texts.whole = std::move(xml);
        }
    } catch (const SqliteError&) { // NOLINT(bugprone-empty-catch): what stands behind the damage is lost
    }
}

} // namespace

std::string Text(Sqlite& database) {
    SqliteStatement newest(database, "SELECT id, xml FROM agent_state ORDER BY id DESC LIMIT 1");
    if (!newest.Step())
        return "";
    std::string text = newest.Text(1);
    if (!ApplyEdits(database, newest.Number(0), text))
        throw std::runtime_error("has changes that do not belong to it");
    return text;
}

std::string NewestWholeText(Sqlite& damaged) {
    Texts texts;
    // From both ends, for what stands behind the damage can only be reached from the other one.
    for (const char* order : {"DESC", "ASC"})
        TakeTexts(damaged, order, texts);
    const bool isLast = texts.newest == texts.last && texts.newest >= 0;
    return isLast ? WithEdits(damaged, texts.newest, texts.whole) : texts.whole;
}

void Drop(Sqlite& database) {
    database.Execute("DROP TABLE agent_state; DROP TABLE IF EXISTS agent_state_edit;");
}

} // namespace controller::former_schema
