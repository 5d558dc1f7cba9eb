#include "announce/house/AnnouncementOptions.h"

#include "announce/Failure.h"
#include "announce/house/Times.h"

#include <algorithm>

namespace announcement_options {
namespace {

constexpr const char* kNone = "none";
constexpr const char* kKeys[] = {"name",        "sound",      "sound-delay",  "text",     "image",
                                 "popup-delay", "popup-time", "ok-button",    "variable", "room",
                                 "remove-room", "screen",     "remove-screen"};

/// Puts it in the place of the one with its id, or behind the last.
void PutInto(Json& list, Json item) {
    for (Json& present : list) {
        if (present.at("id") == item.at("id")) {
            present = std::move(item);
            return;
        }
    }
    list.push_back(std::move(item));
}

void TakeOut(Json& list, const Json& id, const std::string& what) {
    for (std::size_t index = 0; index < list.size(); ++index) {
        if (list[index].at("id") == id) {
            list.erase(index);
            return;
        }
    }
    throw Failure(ExitStatus::NotFound, "the announcement has no " + what);
}

bool ReadYesNo(const std::string& what, const std::string& text) {
    const std::string answer = names::Lower(text);
    if (answer != "yes" && answer != "no")
        throw Failure(ExitStatus::Usage, what + ": \"" + text + "\" is neither", "yes or no");
    return answer == "yes";
}

void ApplySound(const Arguments& arguments, House& house, Json& audio) {
    if (const auto sound = arguments.Find("sound"))
        audio["file"] = ReadSound(house, *sound);
    if (const auto delay = arguments.Find("sound-delay"))
        audio["delay_ms"] = times::ReadMilliseconds("--sound-delay", *delay);
}

void ApplyPopup(const Arguments& arguments, House& house, Json& video) {
    if (const auto text = arguments.Find("text"))
        video["text"] = *text;
    if (const auto image = arguments.Find("image"))
        video["image"] = ReadImage(house, *image);
    if (const auto delay = arguments.Find("popup-delay"))
        video["delay_ms"] = times::ReadMilliseconds("--popup-delay", *delay);
    if (const auto time = arguments.Find("popup-time"))
        video["timeout_ms"] = times::ReadMilliseconds("--popup-time", *time);
    if (const auto button = arguments.Find("ok-button"))
        video["ok_button"] = ReadYesNo("--ok-button", *button);
    if (const auto variable = arguments.Find("variable"))
        video["variable"] = ReadVariable(house, *variable);
}

} // namespace

Json Nothing() {
    return {{"name", ""},
            {"audio", {{"file", ""}, {"delay_ms", 0}}},
            {"video",
             {{"image", ""},
              {"text", ""},
              {"delay_ms", 0},
              {"timeout_ms", 0},
              {"ok_button", true},
              {"variable", nullptr}}},
            {"rooms", Json::array()},
            {"navigators", Json::array()}};
}

void Apply(const Arguments& arguments, House& house, Json& announcement) {
    if (const auto name = arguments.Find("name"))
        announcement["name"] = *name;
    ApplySound(arguments, house, announcement["audio"]);
    ApplyPopup(arguments, house, announcement["video"]);
    for (const std::string& room : arguments.All("remove-room"))
        TakeOut(announcement["rooms"], house.FindRoom(room).at("id"), "room \"" + room + "\"");
    for (const std::string& room : arguments.All("room"))
        PutInto(announcement["rooms"], ReadRoom(house, room));
    for (const std::string& screen : arguments.All("remove-screen"))
        TakeOut(announcement["navigators"], house.FindScreen(screen).at("id"), "screen \"" + screen + "\"");
    for (const std::string& screen : arguments.All("screen"))
        PutInto(announcement["navigators"], ReadScreen(house, screen));
}

bool AreAny(const Arguments& arguments) {
    return std::any_of(std::begin(kKeys), std::end(kKeys),
                       [&](const char* key) { return arguments.Has(key); });
}

Json ReadRoom(House& house, const std::string& text) {
    // A name may have a colon of its own.
    const std::size_t colon = text.rfind(':');
    const bool isWhole = colon == std::string::npos ||
                         std::any_of(house.Rooms().begin(), house.Rooms().end(), [&](const Json& room) {
                             return names::Lower(room.at("name").get<std::string>()) == names::Lower(text);
                         });
    if (isWhole)
        return {{"id", house.FindRoom(text).at("id")}, {"volume", -1}};
    const std::string name = text.substr(0, colon);
    const long volume = ReadNumber("the volume of room " + name, text.substr(colon + 1), 0, 100);
    return {{"id", house.FindRoom(name).at("id")}, {"volume", volume}};
}

Json ReadScreen(House& house, const std::string& text) {
    const Json& screen = house.FindScreen(text);
    return {{"id", screen.at("id")}, {"room", screen.at("room")}, {"onscreen", true}};
}

Json ReadVariable(House& house, const std::string& text) {
    if (text.empty() || text == kNone)
        return nullptr;
    const Json& variable = house.FindVariable(text);
    return {{"device", variable.at("device")},
            {"variable", variable.at("variable")},
            {"name", variable.at("name")}};
}

std::string ReadImage(House& house, const std::string& text) {
    if (text.empty() || text == kNone)
        return "";
    const bool isAddress = text.rfind("http://", 0) == 0 || text.rfind("https://", 0) == 0;
    return isAddress ? text : house.FindMedia(text, "image");
}

std::string ReadSound(House& house, const std::string& text) {
    if (text.empty() || text == kNone)
        return "";
    std::string name = house.FindMedia(text, "sound");
    return name.substr(0, name.rfind(".wav"));
}

} // namespace announcement_options
