// What is known of the sounds of the media library, beyond their files.
#include "controller/state/StateDatabase.h"

namespace controller {

void StateDatabase::ReadSounds(StoredState& state) {
    SqliteStatement rows(*m_database, "SELECT name, text, voice, speed, chime FROM sound "
                                      "WHERE text IS NOT NULL ORDER BY name");
    while (rows.Step())
        state.spokenSounds.push_back(
            {rows.Text(0), rows.Text(1), rows.Text(2), static_cast<unsigned>(rows.Number(3)), rows.Text(4)});
    SqliteStatement levels(*m_database, "SELECT name, file, lufs, true_peak, is_as_it_is FROM sound "
                                        "WHERE file IS NOT NULL ORDER BY name");
    while (levels.Step())
        state.soundLevels.push_back(
            {levels.Text(0), levels.Text(1), levels.Number(2), levels.Number(3), levels.Number(4) != 0});
    SqliteStatement passing(*m_database, "SELECT name FROM sound WHERE is_passing ORDER BY name");
    while (passing.Step())
        state.passingSounds.push_back(passing.Text(0));
}

void StateDatabase::WriteSpokenSound(const SpokenSoundRow& row) {
    if (row.text.empty()) {
        SqliteStatement(
            *m_database,
            "UPDATE sound SET text = NULL, voice = NULL, speed = NULL, chime = NULL WHERE name = ?")
            .Bind(row.name)
            .Run();
        m_database->Execute("DELETE FROM sound WHERE text IS NULL AND file IS NULL AND is_passing IS NULL");
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

void StateDatabase::WriteSoundLevel(const SoundLevelRow& row) {
    SqliteStatement(*m_database,
                    "INSERT INTO sound(name, file, lufs, true_peak, is_as_it_is) VALUES(?, ?, ?, ?, ?) "
                    "ON CONFLICT(name) DO UPDATE SET file = excluded.file, lufs = excluded.lufs, "
                    "true_peak = excluded.true_peak, is_as_it_is = excluded.is_as_it_is")
        .Bind(row.name)
        .Bind(row.file)
        .Bind(row.lufs)
        .Bind(row.truePeak)
        .Bind(std::int64_t{row.isAsItIs})
        .Run();
}

void StateDatabase::WritePassingSound(const std::string& name, bool isPassing) {
    SqliteStatement(*m_database, "INSERT INTO sound(name, is_passing) VALUES(?, ?) "
                                 "ON CONFLICT(name) DO UPDATE SET is_passing = excluded.is_passing")
        .Bind(name)
        .Bind(std::int64_t{isPassing})
        .Run();
}

void StateDatabase::RemoveSound(const std::string& name) {
    SqliteStatement(*m_database, "DELETE FROM sound WHERE name = ?").Bind(name).Run();
}

} // namespace controller
