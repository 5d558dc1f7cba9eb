#include "announce/house/House.h"

#include "announce/Failure.h"

namespace {

const Json& FindIn(const Json& list, const std::string& text, const std::string& kind) {
    std::vector<names::Named> all;
    for (const Json& item : list) {
        const std::string id = item.contains("device") ? VariableId(item) : item.at("id").dump();
        all.push_back({id, item.at("name").get<std::string>()});
    }
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
    const bool hasEnding = name.size() > 4 && name.compare(name.size() - 4, 4, ".wav") == 0;
    return hasEnding || name.empty() ? name : name + ".wav";
}

std::string VariableId(const Json& variable) {
    return variable.at("device").dump() + "/" + variable.at("variable").dump();
}

const Json& House::Fetch(std::optional<Json>& place, const char* path, const char* member) {
    if (!place)
        place = m_client.Get(path).at(member);
    return *place;
}

const Json& House::Announcements() {
    return Fetch(m_announcements, "/api/announcements", "announcements");
}

const Json& House::Rooms() {
    return Fetch(m_rooms, "/api/rooms", "rooms");
}

const Json& House::Screens() {
    return Fetch(m_screens, "/api/navigators", "navigators");
}

const Json& House::Variables() {
    return Fetch(m_variables, "/api/variables", "variables");
}

const Json& House::Media() {
    return Fetch(m_media, "/api/media", "media");
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
    const std::string near = names::Choice(names::Nearest(known, text));
    throw Failure(ExitStatus::NotFound, "there is no " + kind + " \"" + text + "\" in the media folder",
                  near.empty()
                      ? "one of those that \"announce media\" shows; \"announce media add\" brings new ones"
                      : "the nearest: " + near);
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
