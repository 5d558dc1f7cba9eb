#include "announce/house/FormFields.h"

#include "announce/Failure.h"
#include "announce/definitions/Arguments.h"
#include "announce/house/AnnouncementOptions.h"
#include "announce/house/Times.h"

#include <algorithm>

namespace form_fields {
namespace {

using Read = std::function<void(const std::string&, House&, Json&)>;

/// The value of key, or `none`.
std::string OrNone(const std::string& text) {
    return text.empty() ? "none" : text;
}

std::string VariableText(const Json& announcement) {
    const Json& variable = announcement.at("video").at("variable");
    if (variable.is_null())
        return "none";
    const std::string name = variable.at("name");
    return name.empty() ? VariableId(variable) : name;
}

Field Time(const char* key, const char* comment, const char* part, const char* member) {
    return {key, comment,
            [part, member](const Json& one) { return times::LengthText(one.at(part).at(member)); },
            [key, part, member](const std::string& text, House&, Json& one) {
                one[part][member] = times::ReadMilliseconds(key, text);
            }};
}

bool ReadYesNo(const std::string& text) {
    const std::string answer = names::Lower(text);
    if (answer == "yes" || answer == "true" || answer == "on")
        return true;
    if (answer == "no" || answer == "false" || answer == "off")
        return false;
    throw Failure(ExitStatus::Usage, "\"" + text + "\" is neither", "yes or no");
}

/// Its name, when that is the only one with it; else its id.
std::string NameOrId(const Json& list, const Json& id) {
    std::string name;
    for (const Json& item : list) {
        if (item.at("id") == id)
            name = item.at("name");
    }
    const auto count = std::count_if(list.begin(), list.end(), [&](const Json& item) {
        return names::Lower(item.at("name").get<std::string>()) == names::Lower(name);
    });
    return count == 1 ? name : id.dump();
}

/// Takes the text of `key` out of the item; empty when it is not there.
std::string TakeText(Item& item, const std::string& key) {
    const auto place =
        std::find_if(item.begin(), item.end(), [&](const auto& entry) { return entry.first == key; });
    if (place == item.end())
        return "";
    std::string text = place->second;
    item.erase(place);
    return text;
}

void RequireNoMore(const Item& item, const std::string& right) {
    if (!item.empty())
        throw Failure(ExitStatus::Usage, "there is no key \"" + item.front().first + "\" here", right);
}

Item ShowRoom(const Json& room, House& house) {
    Item item{{"room", NameOrId(house.Rooms(), room.at("id"))}};
    if (room.at("volume").get<int>() > 0)
        item.emplace_back("volume", room.at("volume").dump());
    return item;
}

Json ReadRoom(const Item& texts, House& house) {
    Item item = texts;
    Json room{{"id", house.FindRoom(TakeText(item, "room")).at("id")}, {"volume", -1}};
    const std::string volume = TakeText(item, "volume");
    RequireNoMore(item, "room and volume");
    if (!volume.empty())
        room["volume"] = ReadNumber("volume", volume, 0, 100);
    return room;
}

Item ShowScreen(const Json& screen, House& house) {
    return {{"screen", NameOrId(house.Screens(), screen.at("id"))}};
}

Json ReadScreen(const Item& texts, House& house) {
    Item item = texts;
    Json screen = announcement_options::ReadScreen(house, TakeText(item, "screen"));
    RequireNoMore(item, "screen");
    return screen;
}

} // namespace

const std::vector<std::string>& Keys() {
    static const std::vector<std::string> kKeys{"name",        "sound",      "sound_delay", "rooms",
                                                "text",        "variable",   "image",       "screens",
                                                "popup_delay", "popup_time", "ok_button"};
    return kKeys;
}

const std::vector<Field>& Fields() {
    static const std::vector<Field> kFields{
        {"name", "how it is called", [](const Json& one) { return one.at("name").get<std::string>(); },
         [](const std::string& text, House&, Json& one) {
             one["name"] = text;
         }},
        {"sound", "a sound of the media folder, or none",
         [](const Json& one) { return OrNone(one.at("audio").at("file")); },
         [](const std::string& text, House& house, Json& one) {
             one["audio"]["file"] = announcement_options::ReadSound(house, text);
         }},
        Time("sound_delay", "how long after the beginning the sound comes", "audio", "delay_ms"),
        {"text", "what the popup says",
         [](const Json& one) { return one.at("video").at("text").get<std::string>(); },
         [](const std::string& text, House&, Json& one) {
             one["video"]["text"] = text;
         }},
        {"variable", "the variable whose value the popup says instead, or none", VariableText,
         [](const std::string& text, House& house, Json& one) {
             one["video"]["variable"] = announcement_options::ReadVariable(house, text);
         }},
        {"image", "an image of the media folder, an http(s) address, or none",
         [](const Json& one) { return OrNone(one.at("video").at("image")); },
         [](const std::string& text, House& house, Json& one) {
             one["video"]["image"] = announcement_options::ReadImage(house, text);
         }},
        Time("popup_delay", "how long after the beginning the popup comes", "video", "delay_ms"),
        Time("popup_time", "how long the popup stands; 0 ms is 30 s", "video", "timeout_ms"),
        {"ok_button", "yes or no",
         [](const Json& one) {
             return std::string(one.at("video").at("ok_button").get<bool>() ? "yes" : "no");
         },
         [](const std::string& text, House&, Json& one) {
             one["video"]["ok_button"] = ReadYesNo(text);
         }},
    };
    return kFields;
}

const std::vector<List>& Lists() {
    static const std::vector<List> kLists{
        {"rooms",
         "where it is heard: - {room: NAME, volume: 1 to 100}; without a volume as loud as the room is",
         "rooms", "room", ShowRoom, ReadRoom},
        {"screens", "where the popup is shown: - NAME", "navigators", "screen", ShowScreen, ReadScreen},
    };
    return kLists;
}

} // namespace form_fields
