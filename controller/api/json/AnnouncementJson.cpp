#include "controller/api/json/AnnouncementJson.h"

#include "controller/api/ApiError.h"

#include <nlohmann/json.hpp>

namespace controller {

using fields::For;
using fields::Member;
using fields::Object;

using Audio = Announcement::Audio;
using Binding = Announcement::Binding;
using Navigator = Announcement::Navigator;
using Room = Announcement::Room;
using Video = Announcement::Video;

namespace {

constexpr const char* kVolumeWords = "0 and -1 leave the room's volume as it is";

/// The characters that XML cannot hold; the text is UTF-8.
bool IsKept(std::string_view text) {
    for (std::size_t place = 0; place < text.size(); ++place) {
        const char letter = text[place];
        const bool isControl = static_cast<unsigned char>(letter) < 0x20;
        if (isControl && letter != '\t' && letter != '\n' && letter != '\r')
            return false;
        if (letter == '\xEF' &&
            (text.compare(place, 3, "\xEF\xBF\xBE") == 0 || text.compare(place, 3, "\xEF\xBF\xBF") == 0))
            return false;
    }
    return true;
}

void RequireKept(const Announcement& announcement) {
    std::vector<std::string_view> texts{announcement.name, announcement.audio.file, announcement.video.image,
                                        announcement.video.text};
    if (announcement.video.variable)
        texts.emplace_back(announcement.video.variable->name);
    texts.insert(texts.end(), announcement.house.tags.begin(), announcement.house.tags.end());
    for (const std::string_view text : texts) {
        if (!IsKept(text))
            throw ApiError(
                400, "a text of the announcement holds a character that cannot be kept",
                "no control characters but tab, line feed and carriage return, and no U+FFFE or U+FFFF");
    }
}

/// Throws when the body gives another id than this one.
void RequireId(const nlohmann::json& json, std::uint32_t given, std::uint32_t id, const std::string& path) {
    const auto place = json.find("id");
    if (place != json.end() && !place->is_null() && given != id)
        throw ApiError(400, fields::Place(fields::Place(path), "id").Text() + " is not the announcement's",
                       id != 0 ? std::to_string(id) + ", or nothing" : "no id: the agent chooses it");
}

} // namespace

Object TableOf(For<Audio> /*type*/) {
    return {"AnnouncementAudio",
            {Member<&Audio::file>("file", "A sound of the media folder, without .wav; empty for none")
                 .AtMostBytes(announcement_json::kMaxText),
             Member<&Audio::delayMs>("delay_ms")}};
}

Object TableOf(For<Binding> /*type*/) {
    return {"VariableBinding",
            {Member<&Binding::device>("device").AsId().Required(),
             Member<&Binding::variable>("variable").AsId().Required(),
             Member<&Binding::name>("name").AtMostBytes(announcement_json::kMaxText)}};
}

Object TableOf(For<Video> /*type*/) {
    using announcement_json::kMaxText;
    return {
        "AnnouncementVideo",
        {Member<&Video::image>("image", "A file of the media folder, or an http(s) address; empty for none")
             .AtMostBytes(kMaxText),
         Member<&Video::text>("text").AtMostBytes(kMaxText), Member<&Video::delayMs>("delay_ms"),
         Member<&Video::timeoutMs>("timeout_ms", "How long the popup stands; 0 means 30000"),
         Member<&Video::hasOkButton>("ok_button"),
         Member<&Video::variable>("variable", "The message follows this variable's value")}};
}

Object TableOf(For<Room> /*type*/) {
    return {"AnnouncementRoom",
            {Member<&Room::id>("id").AsId().Required(),
             Member<&Room::volume>("volume", kVolumeWords).Between(-1, 100)}};
}

Object TableOf(For<Navigator> /*type*/) {
    return {"AnnouncementNavigator",
            {Member<&Navigator::id>("id").AsId().Required(), Member<&Navigator::room>("room"),
             Member<&Navigator::isOnscreen>("onscreen")}};
}

Object TableOf(For<Announcement> /*type*/) {
    using announcement_json::kMaxTargets;
    return {
        "Announcement",
        {Member<&Announcement::id>("id", "May be left out, or is that of the address: the agent chooses it"),
         Member<&Announcement::name>("name").AtMostBytes(announcement_json::kMaxText).Required(),
         Member<&Announcement::audio>("audio"), Member<&Announcement::video>("video"),
         Member<&Announcement::rooms>("rooms").AtMostEntries(kMaxTargets).EachOnce(),
         Member<&Announcement::navigators>("navigators").AtMostEntries(kMaxTargets).EachOnce(),
         Member<&Announcement::house, &HouseAddition::tags>("tags", "Words to find it by; left out for none")
             .AtMostEntries(announcement_json::kMaxTags)
             .AtMostBytes(announcement_json::kMaxTag)
             .EachOnce()
             .LeftOutWhenEmpty(),
         Member<&Announcement::house, &HouseAddition::isUrgent>(
             "urgent", "Goes to the urgent address of loudspeakers that have one; left out for false")
             .LeftOutWhenEmpty()}};
}

namespace announcement_json {

Object RoomVolume::Table() {
    return {"AnnouncementRoomVolume",
            {Member<&RoomVolume::room, &Room::volume>("volume", kVolumeWords).Between(-1, 100)}};
}

Object NavigatorPlace::Table() {
    using Place = NavigatorPlace;
    return {"AnnouncementNavigatorPlace",
            {Member<&Place::navigator, &Navigator::room>("room"),
             Member<&Place::navigator, &Navigator::isOnscreen>("onscreen")}};
}

std::string ToText(const Announcement& announcement) {
    std::string text;
    text.reserve(512);
    fields::Append(text, announcement);
    return text;
}

Announcement Read(const nlohmann::json& json, std::uint32_t id, const std::string& path) {
    auto announcement = fields::Read<Announcement>(json, path);
    RequireId(json, announcement.id, id, path);
    RequireKept(announcement);
    announcement.id = id;
    return announcement;
}

Room ReadRoom(const nlohmann::json& json, std::uint32_t id) {
    Room room = fields::Read<RoomVolume>(json).room;
    room.id = id;
    return room;
}

Navigator ReadNavigator(const nlohmann::json& json, std::uint32_t id) {
    Navigator navigator = fields::Read<NavigatorPlace>(json).navigator;
    navigator.id = id;
    return navigator;
}

} // namespace announcement_json

} // namespace controller
