#include "controller/maintenance/Maintenance.h"

#include "controller/house/HouseFile.h"
#include "controller/house/NewHouse.h"
#include "controller/state/DataFolder.h"
#include "controller/state/StateDatabase.h"
#include "controller/state/StateText.h"

#include <fstream>
#include <iostream>
#include <stdexcept>

namespace controller {

void maintenance::Check(const std::filesystem::path& house) {
    const House read = ReadHouseFile(house);
    std::cout << house.string() << ": " << read.name << " is in order (" << read.rooms.size() << " rooms, "
              << read.navigators.size() << " navigators, " << read.variables.size() << " variables, "
              << read.tokens.size() << " tokens)\n";
}

void maintenance::Init(const std::filesystem::path& folder) {
    const auto files = WriteNewHouse(folder);
    for (const auto& file : files)
        std::cout << "wrote " << file.string() << '\n';
    std::cout << "Start it with: announcement-controller " << files.front().string() << " --play 1\n";
}

void maintenance::Export(const std::filesystem::path& house, const std::filesystem::path& file) {
    const House read = ReadHouseFile(house);
    const auto databaseFile = read.dataFolder / StateDatabase::kFileName;
    if (!std::filesystem::exists(databaseFile))
        throw std::runtime_error("There is nothing to export: " + databaseFile.string() + " does not exist");
    const StoredState stored = StateDatabase(read.dataFolder).Read();
    if (!stored.areAnnouncementsKept)
        throw std::runtime_error("There is nothing to export: no announcements have been stored yet");
    const std::string state = state_text::ForPeople(stored.announcements);
    if (file.empty() || file == "-") {
        std::cout << state << '\n' << std::flush;
        return;
    }
    std::ofstream stream(file, std::ios::binary);
    stream << state << '\n';
    stream.close();
    if (!stream)
        throw std::runtime_error(file.string() + " cannot be written");
    std::cout << "wrote " << file.string() << '\n';
}

void maintenance::Import(const std::filesystem::path& house, const std::filesystem::path& file) {
    const House read = ReadHouseFile(house);
    const AnnouncementRows rows = state_text::Read(file);
    const DataFolder folder(read.dataFolder);
    StateDatabase database(read.dataFolder);
    database.Together([&](StateDatabase& together) { together.ReplaceAnnouncements(rows); });
    std::cout << "imported " << file.string() << '\n';
}

} // namespace controller
