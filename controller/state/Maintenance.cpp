#include "controller/state/Maintenance.h"

#include "controller/state/DataFolder.h"
#include "controller/state/SoundText.h"
#include "controller/state/StateDatabase.h"
#include "controller/state/StateText.h"

#include <iostream>
#include <stdexcept>

namespace controller {

void maintenance::Export(const std::filesystem::path& dataFolder, const std::filesystem::path& file) {
    const auto databaseFile = dataFolder / StateDatabase::kFileName;
    if (!std::filesystem::exists(databaseFile))
        throw std::runtime_error("There is nothing to export: " + databaseFile.string() + " does not exist");
    const StoredState stored = StateDatabase(dataFolder).Read();
    if (!stored.areAnnouncementsKept)
        throw std::runtime_error("There is nothing to export: no announcements have been stored yet");
    SoundText sounds{stored.spokenSounds, {}};
    for (const SoundLevelRow& level : stored.soundLevels)
        if (level.isAsItIs)
            sounds.asItIs.push_back(level.name);
    const std::string state = state_text::ForPeople(stored.announcements, sounds);
    if (file.empty() || file == "-") {
        std::cout << state << '\n' << std::flush;
        return;
    }
    state_text::Write(file, state + '\n');
    std::cout << "wrote " << file.string() << '\n';
}

AnnouncementRows maintenance::Import(const std::filesystem::path& dataFolder,
                                     const std::filesystem::path& file) {
    AnnouncementRows rows = state_text::Read(file);
    const SoundText sounds = sound_text::Read(file);
    const DataFolder folder(dataFolder);
    StateDatabase database(dataFolder);
    database.Together([&](StateDatabase& together) {
        together.ReplaceAnnouncements(rows);
        sound_text::Write(sounds, together);
    });
    std::cout << "imported " << file.string() << '\n';
    return rows;
}

} // namespace controller
