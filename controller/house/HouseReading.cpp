#include "controller/house/HouseReading.h"

#include "controller/access/TokenSecret.h"

#include <boost/asio/ip/address.hpp>

#include <algorithm>
#include <set>
#include <stdexcept>
#include <utility>

namespace controller {

namespace {

namespace fs = std::filesystem;

constexpr std::uint32_t kMaxId = 0xffffffff;

} // namespace

std::uint32_t HouseReading::ReadId(HouseMap& map) {
    const std::size_t before = m_mistakes.size();
    const std::uint32_t id = map.Number("id", 1, kMaxId);
    if (m_mistakes.size() != before)
        return 0;
    const auto [place, isNew] = m_ids.emplace(id, map.Path());
    if (!isNew)
        map.Mistake("id", std::to_string(id) + " is the id of " + place->second +
                              " already; every room and navigator needs an id of its own");
    return id;
}

void HouseReading::ReadRoom(HouseMap& map) {
    House::Room room;
    room.id = ReadId(map);
    room.name = map.Text("name");
    room.output = ReadOutput(map);
    CheckRecording(map, room.output);
    CheckPlace(map, room);
    room.maxVolume = map.Number("max_volume", 1, 100, 100);
    room.startVolume = map.Number("start_volume", 0, 100, std::min(room.startVolume, room.maxVolume));
    room.leadSilenceMs = map.Number("lead_silence_ms", 0, 10000, 0);
    if (room.startVolume > room.maxVolume)
        map.Mistake("start_volume", std::to_string(room.startVolume) + " is above max_volume, which is " +
                                        std::to_string(room.maxVolume));
    if (room.output.kind == "page")
        m_pagePlaces[m_house.rooms.size()] = {map.LineOf("output"), map.Path() + ".output"};
    m_house.rooms.push_back(std::move(room));
}

void HouseReading::ReadNavigator(HouseMap& map) {
    House::Navigator navigator;
    navigator.id = ReadId(map);
    navigator.name = map.Text("name");
    navigator.room = map.Number("room", 1, kMaxId);
    m_navigatorPlaces.push_back({map.LineOf("room"), map.Path() + ".room", navigator.room});
    m_house.navigators.push_back(std::move(navigator));
}

void HouseReading::ReadVariable(HouseMap& map) {
    House::Variable variable;
    variable.device = map.Number("device", 1, kMaxId);
    variable.variable = map.Number("variable", 1, kMaxId);
    variable.name = map.Text("name");
    variable.value = map.TextOrEmpty("value");
    const bool isTwice =
        std::any_of(m_house.variables.begin(), m_house.variables.end(), [&](const House::Variable& other) {
            return other.device == variable.device && other.variable == variable.variable;
        });
    if (isTwice)
        map.Mistake("variable", "variable " + std::to_string(variable.variable) + " of device " +
                                    std::to_string(variable.device) + " stands in this list already");
    m_house.variables.push_back(std::move(variable));
}

Rights HouseReading::ReadRights(HouseMap& map) {
    const YAML::Node list = map.Node("rights");
    if (!list.IsDefined() || !list.IsSequence() || list.size() == 0) {
        map.Mistake("rights", "must be a list with at least one right, as `rights: [play]`");
        return {};
    }
    std::vector<std::string> texts;
    for (std::size_t index = 0; index < list.size(); ++index)
        texts.push_back(list[index].IsScalar() ? list[index].Scalar() : "");
    try {
        return Rights::Read(texts);
    } catch (const std::invalid_argument& error) {
        map.Mistake("rights", error.what());
        return {};
    }
}

void HouseReading::ReadToken(HouseMap& map) {
    Token token;
    token.name = map.Text("name");
    if (!token.name.empty() && !token_secret::IsName(token.name))
        map.Mistake("name",
                    "\"" + token.name + "\" cannot name a token; a name is 1 to 64 letters, digits, - and _");
    token.hash = map.Text("hash");
    if (!token.hash.empty() && !token_secret::IsHash(token.hash))
        map.Mistake("hash",
                    "is not what `announcement-controller token add` writes; let it make the token anew");
    token.rights = ReadRights(map);
    const bool isTwice = std::any_of(m_house.tokens.begin(), m_house.tokens.end(),
                                     [&](const Token& other) { return other.name == token.name; });
    if (isTwice && !token.name.empty())
        map.Mistake("name", "another token is named " + token.name + " already");
    m_house.tokens.push_back(std::move(token));
}

void HouseReading::ReadTls(HouseMap& map) {
    const YAML::Node node = map.Node("tls");
    if (!node.IsDefined())
        return;
    HouseMap tls(node, "tls", m_mistakes);
    if (!node.IsMap())
        return;
    for (const char* key : {"certificate", "key"}) {
        const fs::path file = Resolve(tls.Text(key));
        if (!file.empty() && !fs::is_regular_file(file))
            tls.Mistake(key, "there is no file " + file.string());
        (std::string(key) == "key" ? m_house.tls.key : m_house.tls.certificate) = file;
    }
    tls.RefuseUnknown();
}

void HouseReading::ReadFolders(HouseMap& map) {
    m_house.mediaFolder = Resolve(map.Text("media_folder"));
    if (!m_house.mediaFolder.empty() && !fs::is_directory(m_house.mediaFolder))
        map.Mistake("media_folder", "there is no folder " + m_house.mediaFolder.string() +
                                        "; make it, and put the sounds of the announcements there");
    m_house.dataFolder = Resolve(map.Text("data_folder"));
    m_house.firstAnnouncements = Resolve(map.Text("first_announcements", ""));
    if (!m_house.firstAnnouncements.empty() && !fs::is_regular_file(m_house.firstAnnouncements))
        map.Mistake("first_announcements", "there is no file " + m_house.firstAnnouncements.string());
}

void HouseReading::ReadAddress(HouseMap& map) {
    const std::size_t before = m_mistakes.size();
    m_house.address = map.Text("address", m_house.address);
    const bool isReadable = m_mistakes.size() == before;
    m_house.port = static_cast<std::uint16_t>(map.Number("port", 1, 65535, m_house.port));
    boost::system::error_code error;
    const auto address = boost::asio::ip::make_address(m_house.address, error);
    if (!isReadable)
        return;
    if (error)
        map.Mistake("address", "\"" + m_house.address +
                                   "\" is no numeric address; write 127.0.0.1 for this machine alone, or the "
                                   "address of one of its "
                                   "networks");
    else if (!address.is_loopback() && m_house.tokens.empty())
        map.Mistake(
            "address",
            m_house.address +
                " can be reached from other machines, and there is no token; add one under tokens, or use "
                "127.0.0.1");
}

void HouseReading::CheckNavigators() {
    std::set<std::uint32_t> rooms;
    for (const House::Room& room : m_house.rooms)
        rooms.insert(room.id);
    for (const NavigatorPlace& place : m_navigatorPlaces)
        if (rooms.count(place.room) == 0)
            m_mistakes.push_back({place.line, place.path,
                                  "there is no room " + std::to_string(place.room) +
                                      "; a navigator stands in one of the rooms of this file"});
}

void HouseReading::ReadLoudness(HouseMap& map) {
    const std::string loudness = map.Text("loudness", "even");
    if (loudness != "even" && loudness != "as_it_is")
        map.Mistake("loudness",
                    "\"" + loudness + "\" is neither even (all sounds are equally loud) nor as_it_is");
    m_house.isLoudnessAsItIs = loudness == "as_it_is";
}

House HouseReading::Read(const YAML::Node& root) {
    HouseMap map(root, "", m_mistakes);
    if (!root.IsMap())
        return {};
    m_house.name = map.Text("name");
    map.EachEntry("rooms", [this](HouseMap& entry) { ReadRoom(entry); });
    map.EachEntry("navigators", [this](HouseMap& entry) { ReadNavigator(entry); });
    map.EachEntry("variables", [this](HouseMap& entry) { ReadVariable(entry); });
    map.EachEntry("voices", [this](HouseMap& entry) { ReadVoice(entry); });
    map.EachEntry("tokens", [this](HouseMap& entry) { ReadToken(entry); });
    ReadAddress(map);
    ReadFolders(map);
    ReadTls(map);
    ReadLoudness(map);
    CheckNavigators();
    CheckPages();
    map.RefuseUnknown();
    return std::move(m_house);
}

} // namespace controller
