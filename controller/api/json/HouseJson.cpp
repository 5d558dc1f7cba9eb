#include "controller/api/json/HouseJson.h"

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

view::Popup PopupOf(const Popups::Popup& popup) {
    const auto ends = std::chrono::system_clock::now() + popup.remaining;
    return {popup.number,      popup.message,           ImageAddress(popup.image),
            popup.hasOkButton, popup.remaining.count(), ends};
}

} // namespace

const House::Room* FindRoom(const House& house, std::uint32_t id) {
    return FindById(house.rooms, id);
}

const House::Navigator* FindNavigator(const House& house, std::uint32_t id) {
    return FindById(house.navigators, id);
}

const House::Room& RequiredRoom(const ApiContext& context, std::uint32_t id) {
    if (const auto* const room = FindRoom(context.parts.house, id))
        return *room;
    throw ApiError(404, "the house has no room " + std::to_string(id), "an id that GET /api/rooms lists");
}

const House::Navigator& RequiredNavigator(const ApiContext& context, std::uint32_t id) {
    if (const auto* const navigator = FindNavigator(context.parts.house, id))
        return *navigator;
    throw ApiError(404, "the house has no navigator " + std::to_string(id),
                   "an id that GET /api/navigators lists");
}

std::string ImageAddress(const std::string& image) {
    for (const char* scheme : {"http://", "https://"}) {
        if (image.rfind(scheme, 0) == 0)
            return image;
    }
    return media_name::KindOf(image) == media_name::Kind::Image ? "/api/media/" + image : "";
}

view::Room Room(const ApiContext& context, const House::Room& room) {
    return {room.id,
            room.name,
            OutputText(room.output),
            context.parts.volumes.Volume(room.id).value_or(0),
            room.maxVolume,
            room.leadSilenceMs,
            context.parts.volumes.IsTaken(room.id),
            context.watch.IsAwake(room.id),
            room.isAnswering,
            view::HealthName(context.watch.Health(room.id)),
            context.watch.Trouble(room.id)};
}

view::RoomList Rooms(const ApiContext& context) {
    view::RoomList list;
    for (const House::Room& room : context.parts.house.rooms)
        list.entries.push_back(Room(context, room));
    return list;
}

std::optional<view::Popup> PopupOn(const ApiContext& context, std::uint32_t navigator) {
    for (const Popups::Popup& popup : context.parts.popups.Standing()) {
        if (popup.navigator == navigator)
            return PopupOf(popup);
    }
    return std::nullopt;
}

view::Navigator Navigator(const ApiContext& context, const House::Navigator& navigator) {
    return {navigator.id,
            navigator.name,
            navigator.room,
            context.streams.PagesOf(navigator.id),
            context.watch.IsAwake(navigator.room),
            PopupOn(context, navigator.id),
            context.streams.SizeOf(navigator.id),
            context.streams.IsArmed(navigator.id)};
}

view::NavigatorList Navigators(const ApiContext& context) {
    view::NavigatorList list;
    for (const House::Navigator& navigator : context.parts.house.navigators)
        list.entries.push_back(Navigator(context, navigator));
    return list;
}

view::Status Status(const ApiContext& context) {
    const HouseWatch& watch = context.watch;
    view::Status status;
    status.house = context.parts.house.name;
    status.version = API_VERSION;
    status.started = context.started;
    status.isAgentRunning = context.parts.isAgentRunning();
    status.playing = context.parts.progress.Now();
    status.waiting = watch.Waiting();
    status.queue = context.parts.queue.Waiting();
    if (const auto& sound = watch.CurrentSound())
        status.sound = view::Sound{media_name::SoundOf(sound->file), sound->since};
    for (const Popups::Popup& popup : context.parts.popups.Standing())
        status.popups.push_back({popup.navigator, PopupOf(popup)});
    status.isStateSaved = !watch.StateError().has_value();
    status.stateError = watch.StateError();
    status.events = context.parts.feed.LastNumber();
    status.knownFrom = {"the event that the agent fired when it started, until it went on without another "
                        "one and none of the announcement's timers ran",
                        "the agent's own queue: the raw commands that were delivered while something "
                        "played; then the controller's",
                        "the file that the agent asked for, until its last sample was played"};
    return status;
}

view::WholeState WholeState(const ApiContext& context, view::SharedAnnouncements announcements) {
    return {Status(context), Rooms(context).entries, Navigators(context).entries,
            context.parts.variables.All(), std::move(announcements)};
}

view::PageState PageState(const ApiContext& context, const House::Navigator& navigator) {
    const auto* const room = FindRoom(context.parts.house, navigator.room);
    return {{navigator.id, navigator.name}, {navigator.room, room != nullptr ? room->name : ""},
            context.parts.house.name,       context.watch.IsAwake(navigator.room),
            PopupOn(context, navigator.id), context.parts.speakers.IsSpeaker(navigator.id)};
}

} // namespace controller::house_json
