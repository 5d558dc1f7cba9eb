#include "controller/api/json/HouseJson.h"

#include "controller/api/ApiTime.h"
#include "controller/media/MediaName.h"

#include <algorithm>

namespace controller::house_json {
namespace {

template <class List>
auto FindById(const List& list, std::uint32_t id) -> decltype(&list.front()) {
    const auto place =
        std::find_if(list.begin(), list.end(), [id](const auto& item) { return item.id == id; });
    return place != list.end() ? &*place : nullptr;
}

std::string OutputText(const audio::OutputDescription& output) {
    return output.text.empty() ? output.kind : output.kind + ": " + output.text;
}

Json TextOrNull(const std::string& text) {
    return text.empty() ? Json(nullptr) : Json(text);
}

} // namespace

const House::Room* FindRoom(const House& house, std::uint32_t id) {
    return FindById(house.rooms, id);
}

const House::Navigator* FindNavigator(const House& house, std::uint32_t id) {
    return FindById(house.navigators, id);
}

std::string ImageAddress(const std::string& image) {
    for (const char* scheme : {"http://", "https://"}) {
        if (image.rfind(scheme, 0) == 0)
            return image;
    }
    return media_name::KindOf(image) == media_name::Kind::Image ? "/api/media/" + image : "";
}

Json Room(const ApiContext& context, const House::Room& room) {
    return {{"id", room.id},
            {"name", room.name},
            {"output", OutputText(room.output)},
            {"volume", context.parts.volumes.Volume(room.id).value_or(0)},
            {"max_volume", room.maxVolume},
            {"lead_silence_ms", room.leadSilenceMs},
            {"in_announcement", context.parts.volumes.IsTaken(room.id)},
            {"awake", context.watch.IsAwake(room.id)},
            {"trouble", TextOrNull(context.watch.Trouble(room.id))}};
}

Json Rooms(const ApiContext& context) {
    Json rooms = Json::array();
    for (const House::Room& room : context.parts.house.rooms)
        rooms.push_back(Room(context, room));
    return rooms;
}

Json Popup(const Popups::Popup& popup) {
    const auto ends = std::chrono::system_clock::now() + popup.remaining;
    return {{"number", popup.number},
            {"message", popup.message},
            {"image", ImageAddress(popup.image)},
            {"ok_button", popup.hasOkButton},
            {"remaining_ms", popup.remaining.count()},
            {"ends", ApiTime(ends)}};
}

Json PopupOn(const ApiContext& context, std::uint32_t navigator) {
    for (const Popups::Popup& popup : context.parts.popups.Standing()) {
        if (popup.navigator == navigator)
            return Popup(popup);
    }
    return nullptr;
}

Json Navigator(const ApiContext& context, const House::Navigator& navigator) {
    return {{"id", navigator.id},
            {"name", navigator.name},
            {"room", navigator.room},
            {"pages", context.streams.PagesOf(navigator.id)},
            {"awake", context.watch.IsAwake(navigator.room)},
            {"popup", PopupOn(context, navigator.id)}};
}

Json Navigators(const ApiContext& context) {
    std::map<std::uint32_t, Json> popups;
    for (const Popups::Popup& popup : context.parts.popups.Standing())
        popups[popup.navigator] = Popup(popup);
    Json navigators = Json::array();
    for (const House::Navigator& navigator : context.parts.house.navigators) {
        const auto popup = popups.find(navigator.id);
        navigators.push_back({{"id", navigator.id},
                              {"name", navigator.name},
                              {"room", navigator.room},
                              {"pages", context.streams.PagesOf(navigator.id)},
                              {"awake", context.watch.IsAwake(navigator.room)},
                              {"popup", popup != popups.end() ? popup->second : Json(nullptr)}});
    }
    return navigators;
}

Json Variable(const Variables::Variable& variable) {
    return {{"device", variable.device},
            {"variable", variable.variable},
            {"name", variable.name},
            {"value", variable.value}};
}

Json Variables(const ApiContext& context) {
    Json variables = Json::array();
    for (const auto& variable : context.parts.variables.All())
        variables.push_back(Variable(variable));
    return variables;
}

Json Status(const ApiContext& context) {
    const HouseWatch& watch = context.watch;
    Json playing;
    if (const auto& current = watch.Current())
        playing = {{"announcement", current->announcement},
                   {"name", context.parts.announcements.NameOf(current->announcement)},
                   {"since", ApiTime(current->since)}};
    Json sound;
    if (const auto& current = watch.CurrentSound())
        sound = {{"file", media_name::SoundOf(current->file)}, {"since", ApiTime(current->since)}};
    Json popups = Json::array();
    for (const Popups::Popup& popup : context.parts.popups.Standing())
        popups.push_back({{"navigator", popup.navigator}, {"popup", Popup(popup)}});
    return {{"house", context.parts.house.name},
            {"version", API_VERSION},
            {"started", ApiTime(context.started)},
            {"agent", context.parts.isAgentRunning()},
            {"playing", std::move(playing)},
            {"waiting", watch.Waiting()},
            {"sound", std::move(sound)},
            {"popups", std::move(popups)},
            {"state_saved", !watch.StateError().has_value()},
            {"state_error", watch.StateError() ? Json(*watch.StateError()) : Json(nullptr)},
            {"events", context.parts.feed.LastNumber()},
            {"known_from",
             {{"playing", "the event that the agent fired when it started, until it went on without another "
                          "one and none of the "
                          "announcement's timers ran"},
              {"waiting", "the commands that were delivered while something played; one that was removed "
                          "meanwhile is skipped"},
              {"sound", "the file that the agent asked for, until its last sample was played"}}}};
}

} // namespace controller::house_json
