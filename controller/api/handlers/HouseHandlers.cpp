#include "controller/api/handlers/AgentReply.h"
#include "controller/api/handlers/Handlers.h"
#include "controller/api/json/HouseJson.h"
#include "controller/api/json/Replies.h"

namespace controller {

namespace handlers {
namespace {

Variables::Variable RequiredVariable(ApiContext& context, std::uint32_t device, std::uint32_t id) {
    for (const auto& variable : context.parts.variables.All()) {
        if (variable.device == device && variable.variable == id)
            return variable;
    }
    throw ApiError(404,
                   "the house has no variable " + std::to_string(id) + " of device " + std::to_string(device),
                   "one that GET /api/variables lists");
}

} // namespace

void GetHouse(ApiContext& context, Call call) {
    call->Reply(200, view::House{context.parts.house.name, house_json::Rooms(context).entries,
                                 house_json::Navigators(context).entries});
}

void ListRooms(ApiContext& context, Call call) {
    call->Reply(200, house_json::Rooms(context));
}

void GetRoom(ApiContext& context, Call call) {
    call->Reply(200, house_json::Room(context, house_json::RequiredRoom(context, call->Id("id"))));
}

void SetRoomVolume(ApiContext& context, Call call) {
    const std::uint32_t id = house_json::RequiredRoom(context, call->Id("id")).id;
    const unsigned volume = call->Take<view::Volume>().volume;
    // What was set: when it stands on the disk, an announcement may have set another one for itself.
    const unsigned set = context.parts.volumes.Capped(id, volume).value_or(0);
    (void)context.parts.volumes.Set(id, volume, [call, id, set](const std::string& error) {
        call->Guard([&] {
            agent_reply::RequireSaved(error);
            call->Reply(200, view::RoomVolume{id, set});
        });
    });
}

void ListNavigators(ApiContext& context, Call call) {
    call->Reply(200, house_json::Navigators(context));
}

void GetNavigator(ApiContext& context, Call call) {
    call->Reply(200, house_json::Navigator(context, house_json::RequiredNavigator(context, call->Id("id"))));
}

void ConfirmPopup(ApiContext& context, Call call) {
    const std::uint32_t id = house_json::RequiredNavigator(context, call->Id("id")).id;
    const auto popup = house_json::PopupOn(context, id);
    if (!popup || popup->number != call->Number("number")) {
        call->Reply(200, view::Confirmed{false});
        return;
    }
    if (!popup->hasOkButton)
        throw ApiError(409, "this popup has no OK button");
    const std::uint64_t number = popup->number;
    context.parts.announcements.Dismiss([&context, call, number](const Announcements::Outcome& outcome) {
        call->Guard([&] {
            agent_reply::Require(outcome.answer);
            // One that the agent does not know any more, as after its announcement was gone, closes all
            // the same.
            (void)context.parts.popups.Dismiss(number);
            call->Reply(200, view::Confirmed{true});
        });
    });
}

void WatchNavigator(ApiContext& context, Call call) {
    const std::uint32_t id = house_json::RequiredNavigator(context, call->Id("id")).id;
    call->Exchange().Upgrade([&context, id](std::shared_ptr<WebSocket> socket) {
        context.streams.AddPage(id, std::move(socket));
    });
}

void ListVariables(ApiContext& context, Call call) {
    call->Reply(200, view::VariableList{context.parts.variables.All()});
}

void GetVariable(ApiContext& context, Call call) {
    call->Reply(200, RequiredVariable(context, call->Id("device"), call->Id("variable")));
}

void SetVariable(ApiContext& context, Call call) {
    const std::uint32_t device = call->Id("device");
    const std::uint32_t variable = call->Id("variable");
    (void)RequiredVariable(context, device, variable);
    const std::string value = call->Take<view::VariableValue>().value;
    const auto answer = [&context, call, device, variable](const std::string& error) {
        call->Guard([&] {
            agent_reply::RequireSaved(error);
            call->Reply(200, RequiredVariable(context, device, variable));
        });
    };
    (void)context.parts.variables.Set(device, variable, value, answer); // known, and not too long
}

} // namespace handlers

} // namespace controller
