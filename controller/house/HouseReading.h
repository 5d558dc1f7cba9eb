#pragma once

#include "controller/house/HouseMap.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include <yaml-cpp/yaml.h>

namespace controller {

/// Reads the parts of one house file.
class HouseReading {
public:
    HouseReading(const std::filesystem::path& folder, std::vector<HouseMistake>& mistakes)
        : m_folder(folder)
        , m_mistakes(mistakes) {}

    House Read(const YAML::Node& root);

private:
    struct EntryPlace {
        int line = 0;
        std::string path;
    };

    [[nodiscard]] std::filesystem::path Resolve(const std::string& text) const {
        return text.empty() ? std::filesystem::path() : m_folder / text;
    }

    void ReadFolders(HouseMap& map);
    void ReadRoom(HouseMap& map);
    void ReadNavigator(HouseMap& map);
    void ReadVariable(HouseMap& map);
    void ReadVoice(HouseMap& map);
    std::vector<std::string> ReadCommand(HouseMap& map);
    void ReadToken(HouseMap& map);
    void ReadTls(HouseMap& map);
    void ReadLoudness(HouseMap& map);
    void ReadAddress(HouseMap& map);
    Rights ReadRights(HouseMap& map);
    void CheckNavigators();
    void CheckPages();
    void CheckPage(const EntryPlace& place, House::Room& room);
    std::uint32_t ReadId(HouseMap& map);
    audio::OutputDescription ReadOutput(HouseMap& map);
    void ResolveTokenFile(std::string& text) const;
    void CheckRecording(HouseMap& map, const audio::OutputDescription& output);
    void CheckPlace(HouseMap& map, House::Room& room);

    std::filesystem::path m_folder;
    std::vector<HouseMistake>& m_mistakes;
    House m_house;
    std::map<std::uint32_t, std::string> m_ids;  ///< of rooms and navigators, with the entry that has it
    std::map<std::string, std::string> m_places; ///< where rooms send, each with the entry that does
    struct NavigatorPlace {
        int line;
        std::string path;
        std::uint32_t room;
    };
    std::vector<NavigatorPlace> m_navigatorPlaces;
    std::map<std::size_t, EntryPlace> m_pagePlaces; ///< of the rooms that play on pages
};

} // namespace controller
