// What is known of the sounds of the media library, beyond their files.
#include "controller/state/StateDatabase.h"

namespace controller {

void StateDatabase::ReadSpokenSounds(StoredState& state) {
    SqliteStatement rows(*m_database, "SELECT name, text, voice, speed, chime FROM sound "
                                      "WHERE text IS NOT NULL ORDER BY name");
    while (rows.Step())
        state.spokenSounds.push_back(
            {rows.Text(0), rows.Text(1), rows.Text(2), static_cast<unsigned>(rows.Number(3)), rows.Text(4)});
}

void StateDatabase::WriteSpokenSound(const SpokenSoundRow& row) {
    if (row.text.empty()) {
        SqliteStatement(*m_database, "DELETE FROM sound WHERE name = ?").Bind(row.name).Run();
        return;
    }
    SqliteStatement(*m_database,
                    "INSERT INTO sound(name, text, voice, speed, chime) VALUES(?, ?, ?, ?, ?) "
                    "ON CONFLICT(name) DO UPDATE SET text = excluded.text, voice = excluded.voice, "
                    "speed = excluded.speed, chime = excluded.chime")
        .Bind(row.name)
        .Bind(row.text)
        .Bind(row.voice)
        .Bind(static_cast<std::int64_t>(row.speed))
        .Bind(row.chime)
        .Run();
}

} // namespace controller
