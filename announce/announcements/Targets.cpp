#include "announce/announcements/Targets.h"

#include "announce/basics/Failure.h"
#include "announce/basics/Numbers.h"
#include "announce/basics/Words.h"
#include "unicode/Unicode.h"

#include <algorithm>
#include <optional>

namespace targets {
namespace {

constexpr long kLoudest = 100;
constexpr long kAsItIs = -1; ///< the room's own volume

bool HasRooms(const fields::Field& list) {
    return list.kind == fields::Kind::Rooms;
}

const Json& Known(const fields::Field& list, House& house) {
    return HasRooms(list) ? house.Rooms() : house.Screens();
}

const Json& Find(const fields::Field& list, const std::string& text, House& house) {
    return HasRooms(list) ? house.FindRoom(text) : house.FindScreen(text);
}

std::ptrdiff_t CountNamed(const Json& all, const std::string& name) {
    return std::count_if(all.begin(), all.end(), [meant = unicode::Folded(name)](const Json& one) {
        return unicode::Folded(one.at("name").get<std::string>()) == meant;
    });
}

/// Its name, when that is the only one with it; else its id.
std::string NameOrId(const Json& all, const Json& id) {
    for (const Json& one : all) {
        if (one.at("id") == id && CountNamed(all, one.at("name")) == 1)
            return one.at("name");
    }
    return id.dump();
}

Json::iterator PlaceOf(Json& items, const Json& id) {
    return std::find_if(items.begin(), items.end(), [&](const Json& item) { return item.at("id") == id; });
}

} // namespace

std::string KindOf(const fields::Field& list) {
    return HasRooms(list) ? "room" : "screen";
}

Texts TakenApart(const fields::Field& list, const std::string& text, House& house) {
    const std::size_t colon = text.rfind(':');
    if (!HasRooms(list) || colon == std::string::npos || CountNamed(house.Rooms(), text) > 0)
        return {{KindOf(list), text}};
    return {{KindOf(list), text.substr(0, colon)}, {"volume", text.substr(colon + 1)}};
}

Json Read(const fields::Field& list, const Texts& texts, House& house) {
    std::string name;
    std::optional<std::string> volume;
    for (const auto& [key, text] : texts) {
        if (key == KindOf(list))
            name = text;
        else if (key == "volume" && HasRooms(list))
            volume = text;
        else
            throw Failure(ExitStatus::Usage, "there is no key \"" + key + "\" here",
                          HasRooms(list) ? "room and volume" : "screen");
    }
    const Json& found = Find(list, name, house);
    if (HasRooms(list))
        return {
            {"id", found.at("id")},
            {"volume", volume ? ReadNumber("the volume of room " + name, *volume, 0, kLoudest) : kAsItIs}};
    return {{"id", found.at("id")}, {"room", found.at("room")}, {"onscreen", true}};
}

Texts Write(const fields::Field& list, const Json& item, House& house) {
    Texts texts{{KindOf(list), NameOrId(Known(list, house), item.at("id"))}};
    if (HasRooms(list) && item.at("volume").get<int>() > 0)
        texts.emplace_back("volume", item.at("volume").dump());
    return texts;
}

std::string Phrase(const fields::Field& list, const Json& items, House& house) {
    return words::Listed(items, [&](const Json& item) {
        if (!HasRooms(list))
            return house.ScreenName(item.at("id"));
        const auto volume = item.at("volume").get<int>();
        return house.RoomName(item.at("id")) + (volume > 0 ? " " + std::to_string(volume) : "");
    });
}

void PutInto(Json& items, Json item) {
    const auto place = PlaceOf(items, item.at("id"));
    if (place != items.end())
        *place = std::move(item);
    else
        items.push_back(std::move(item));
}

void TakeOut(const fields::Field& list, Json& items, const std::string& text, House& house) {
    const auto place = PlaceOf(items, Find(list, text, house).at("id"));
    if (place == items.end())
        throw Failure(ExitStatus::NotFound, "the announcement has no " + KindOf(list) + " \"" + text + "\"");
    items.erase(place);
}

} // namespace targets
