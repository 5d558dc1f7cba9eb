#include "announce/house/House.h"

#include "announce/basics/Failure.h"
#include "announce/basics/Words.h"
#include "announce/house/Names.h"

namespace {

const Json& FindIn(const Json& list, const std::string& text, const std::string& kind) {
    std::vector<names::Named> all;
    for (const Json& item : list)
        all.push_back({IdOf(item), item.at("name").get<std::string>()});
    return list[names::Find(all, text, kind)];
}

std::string NameIn(const Json& list, std::uint64_t id, const std::string& kind) {
    for (const Json& item : list) {
        if (item.at("id") == id)
            return item.at("name").get<std::string>();
    }
    return kind + " " + std::to_string(id);
}

} // namespace

std::string SoundName(const std::string& file) {
    const std::string name = file.substr(file.rfind('/') + 1);
    if (name.rfind('.', 0) == 0) // made for one announcement, with a name that says nothing to people
        return name == ".test-tone" ? "the test tone" : "a spoken sound";
    const bool hasEnding = name.size() > 4 && name.compare(name.size() - 4, 4, ".wav") == 0;
    return hasEnding || name.empty() ? name : name + ".wav";
}

std::string IdOf(const Json& item) {
    return item.contains("device") ? item.at("device").dump() + "/" + item.at("variable").dump()
                                   : item.at("id").dump();
}

const Json& House::Known(const std::string& what) {
    const auto present = m_known.find(what);
    if (present != m_known.end())
        return present->second;
    return m_known[what] = m_fetch("/api/" + what).at(what);
}

const Json& House::FindAnnouncement(const std::string& text) {
    return FindIn(Announcements(), text, "announcement");
}

const Json& House::FindRoom(const std::string& text) {
    return FindIn(Rooms(), text, "room");
}

const Json& House::FindScreen(const std::string& text) {
    return FindIn(Screens(), text, "screen");
}

const Json& House::FindVariable(const std::string& text) {
    return FindIn(Variables(), text, "variable");
}

std::string House::FindMedia(const std::string& text, const std::string& kind) {
    std::vector<std::string> known;
    for (const Json& file : Media()) {
        std::string name = file.at("name");
        if (name == text || (kind == "sound" && name == text + ".wav"))
            return name;
        if (kind == "file" || file.at("kind") == kind)
            known.push_back(name);
    }
    const std::string near = words::Choice(words::Nearest(known, text));
    throw Failure(ExitStatus::NotFound, "there is no " + kind + " \"" + text + "\" in the media folder",
                  near.empty()
                      ? "one of those that \"announce media\" shows; \"announce media add\" brings new ones"
                      : "the nearest: " + near);
}

std::vector<std::string> House::EventTypes() {
    const Json schemas = m_fetch("/api/openapi.json").at("components").at("schemas");
    std::vector<std::string> types;
    for (const Json& kind : schemas.at("Event").at("oneOf")) {
        const std::string place = kind.at("$ref");
        types.push_back(
            schemas.at(place.substr(place.rfind('/') + 1)).at("properties").at("type").at("const"));
    }
    return types;
}

std::string House::RoomName(std::uint64_t id) {
    return NameIn(Rooms(), id, "room");
}

std::string House::ScreenName(std::uint64_t id) {
    return NameIn(Screens(), id, "screen");
}

std::string House::AnnouncementName(std::uint64_t id) {
    return NameIn(Announcements(), id, "announcement");
}
