#include "controller/api/ApiContext.h"
#include "controller/api/RehearsalTimeline.h"
#include "controller/api/handlers/AgentReply.h"
#include "controller/api/handlers/Handlers.h"
#include "controller/api/json/AnnouncementJson.h"
#include "controller/api/json/JsonObject.h"
#include "host/VqXML.h"

#include <functional>
#include <optional>

namespace controller {

using Json = nlohmann::ordered_json;

namespace handlers {
namespace {

using Outcome = AnnouncementService::Outcome;

/// A longer text is turned into JSON elsewhere.
constexpr std::size_t kLongXml = 65536;
constexpr unsigned kMaxRehearsals = 4;

std::string IdText(std::uint32_t id) {
    return std::to_string(id);
}

/// The agent's answer to a reading request, which comes at once.
AgentAnswer Ask(ApiContext& context, const std::string& request, const Parameters& parameters) {
    AgentAnswer answer;
    context.parts.announcements.Request(request, parameters,
                                        [&answer](const Outcome& outcome) { answer = outcome.answer; });
    agent_reply::Require(answer);
    return answer;
}

ApiError NoAnnouncement(std::uint32_t id) {
    return {404, "there is no announcement " + IdText(id)};
}

vq::auto_com<VqXML::INode> Read(ApiContext& context, std::uint32_t id) {
    const AgentAnswer answer = context.parts.announcements.Announcement(id);
    agent_reply::Require(answer);
    if (answer.element.Get() == nullptr || answer.element->FindChild("id") == nullptr)
        throw NoAnnouncement(id);
    return answer.element;
}

/// The announcement as JSON, under the id by which the agent knows it.
Json Shown(ApiContext& context, std::uint32_t id) {
    Json announcement = announcement_json::FromXml(*Read(context, id));
    announcement["id"] = id;
    return announcement;
}

/// Changes when the announcement does, whose JSON text this is. Playing one gives it a time of its own where
/// it had none, which is no change to people. Within a text of the announcement its quotes would be escaped.
std::string TagOf(std::string text) {
    constexpr std::string_view kNoTime = R"("timeout_ms":0,)";
    if (const std::size_t place = text.find(kNoTime); place != std::string::npos)
        text.replace(place, kNoTime.size(), R"("timeout_ms":30000,)");
    return '"' + std::to_string(std::hash<std::string>{}(text)) + '"';
}

void ReplyShown(ApiContext& context, Call call, unsigned status, std::uint32_t id) {
    std::string text = Shown(context, id).dump();
    HttpReply reply;
    reply.status = status;
    reply.contentType = "application/json";
    if (status == 201)
        reply.headers.emplace_back("Location", "/api/announcements/" + IdText(id));
    reply.headers.emplace_back("ETag", TagOf(text));
    reply.body = std::move(text);
    call->Reply(std::move(reply));
}

/// Throws 412 when the request is meant for another state of the announcement than the present one.
void RequireMatch(ApiContext& context, Call call, std::uint32_t id) {
    const std::string_view wanted = call->Request().Header("if-match");
    if (wanted.empty())
        return;
    const std::string tag = TagOf(Shown(context, id).dump());
    if (wanted != "*" && wanted.find(tag) == std::string_view::npos)
        throw ApiError(412, "announcement " + IdText(id) + " has been changed meanwhile",
                       "the ETag of GET /api/announcements/" + IdText(id));
}

std::optional<Json> FindIn(const Json& list, std::uint32_t id) {
    for (const Json& item : list) {
        if (item["id"] == id)
            return item;
    }
    return std::nullopt;
}

/// Sends a request that changes something; `done` answers when the change stands on the disk.
void Change(ApiContext& context,
            Call call,
            const char* request,
            const Parameters& parameters,
            const std::function<void(const AgentAnswer&)>& done) {
    context.parts.announcements.Request(request, parameters, [call, done](const Outcome& outcome) {
        call->Guard([&] {
            agent_reply::Require(outcome.answer);
            agent_reply::RequireSaved(outcome.notSaved);
            done(outcome.answer);
        });
    });
}

} // namespace

void ListAnnouncements(ApiContext& context, Call call) {
    const std::string xml = Ask(context, "get_announcements", {}).text;
    if (xml.size() <= kLongXml) {
        call->ReplyText(200, "application/json", announcement_json::ListFromXml(xml));
        return;
    }
    Elsewhere(
        context, call, [xml] { return announcement_json::ListFromXml(xml); },
        [call](const std::string& list) { call->ReplyText(200, "application/json", list); });
}

void GetAnnouncement(ApiContext& context, Call call) {
    ReplyShown(context, call, 200, call->Id("id"));
}

void AddAnnouncement(ApiContext& context, Call call) {
    const std::string xml = announcement_json::ToXml(call->json, 0);
    Change(context, call, "add_announcement", {{"announcement", xml}},
           [&context, call](const AgentAnswer& answer) {
               ReplyShown(context, call, 201, static_cast<std::uint32_t>(std::stoul(answer.value)));
           });
}

void ReplaceAnnouncement(ApiContext& context, Call call) {
    const std::uint32_t id = call->Id("id");
    const std::string xml = announcement_json::ToXml(call->json, id);
    RequireMatch(context, call, id);
    Change(context, call, "modify_announcement", {{"announcement", xml}},
           [&context, call, id](const AgentAnswer&) { ReplyShown(context, call, 200, id); });
}

void RemoveAnnouncement(ApiContext& context, Call call) {
    Change(context, call, "remove_announcement", {{"id", IdText(call->Id("id"))}},
           [call](const AgentAnswer&) { call->ReplyNothing(); });
}

void PlayAnnouncement(ApiContext& context, Call call) {
    const std::uint32_t id = call->Id("id");
    context.parts.announcements.Play(id, [&context, call, id](const Outcome& outcome) {
        call->Guard([&] {
            if (outcome.answer.kind == AgentAnswer::Kind::Unknown)
                throw NoAnnouncement(id);
            agent_reply::Require(outcome.answer);
            const auto& current = context.watch.Current();
            const bool isPlaying = current && current->announcement == id;
            call->Reply(202, {{"announcement", id}, {"state", isPlaying ? "playing" : "waiting"}});
        });
    });
}

void PutAnnouncementRoom(ApiContext& context, Call call) {
    const std::uint32_t id = call->Id("id");
    const std::uint32_t room = call->Id("room");
    const auto volume = static_cast<std::int32_t>(announcement_json::ReadVolume(call->json, ""));
    JsonObject body(call->json, "");
    (void)body.Find("volume");
    body.RefuseOthers();
    (void)Read(context, id);
    Change(context, call, "add_room",
           {{"id", IdText(id)}, {"room", announcement_json::RoomXml(room, volume)}},
           [call, room, volume](const AgentAnswer&) {
               call->Reply(200, {{"id", room}, {"volume", volume}});
           });
}

void RemoveAnnouncementRoom(ApiContext& context, Call call) {
    const std::uint32_t id = call->Id("id");
    const std::uint32_t room = call->Id("room");
    // The agent has no answer of its own for a room that is not there.
    if (!FindIn(Shown(context, id)["rooms"], room))
        throw ApiError(404, "announcement " + IdText(id) + " has no room " + IdText(room));
    Change(context, call, "remove_room", {{"id", IdText(id)}, {"room_id", IdText(room)}},
           [call](const AgentAnswer&) { call->ReplyNothing(); });
}

void PutAnnouncementNavigator(ApiContext& context, Call call) {
    const std::uint32_t id = call->Id("id");
    const std::uint32_t navigator = call->Id("navigator");
    JsonObject body(call->json, "");
    const std::uint32_t room = body.Number("room", 0);
    const bool isOnscreen = body.Bool("onscreen", true);
    body.RefuseOthers();
    const Json wanted{{"id", navigator}, {"room", room}, {"onscreen", isOnscreen}};
    const auto present = FindIn(Shown(context, id)["navigators"], navigator);
    // The agent leaves a navigator that is there as it is: to be changed it has to be taken out first.
    // Nothing comes between the two requests, and only the second one's state has to reach the disk.
    if (present && *present != wanted)
        context.parts.announcements.Request("remove_navigator",
                                            {{"id", IdText(id)}, {"navigator_id", IdText(navigator)}},
                                            [](const Outcome&) {});
    Change(context, call, "add_navigator",
           {{"id", IdText(id)}, {"navigator", announcement_json::NavigatorXml(navigator, room, isOnscreen)}},
           [call, wanted](const AgentAnswer&) { call->Reply(200, wanted); });
}

void RemoveAnnouncementNavigator(ApiContext& context, Call call) {
    const std::uint32_t id = call->Id("id");
    const std::uint32_t navigator = call->Id("navigator");
    if (!FindIn(Shown(context, id)["navigators"], navigator))
        throw ApiError(404, "announcement " + IdText(id) + " has no navigator " + IdText(navigator));
    Change(context, call, "remove_navigator", {{"id", IdText(id)}, {"navigator_id", IdText(navigator)}},
           [call](const AgentAnswer&) { call->ReplyNothing(); });
}

void Dismiss(ApiContext& context, Call call) {
    const auto& current = context.watch.Current();
    const Json announcement = current ? Json(current->announcement) : Json(nullptr);
    context.parts.announcements.Dismiss([call, announcement](const Outcome& outcome) {
        call->Guard([&] {
            agent_reply::Require(outcome.answer);
            call->Reply(202, {{"announcement", announcement}});
        });
    });
}

namespace {

Parameters ParametersOf(const nlohmann::json& body) {
    if (!body.is_object())
        throw ApiError(400, "the body is no object", "an object of texts: the parameters");
    Parameters parameters;
    for (const auto& [name, value] : body.items()) {
        if (!value.is_string())
            throw ApiError(400, name + " is no text", "an object of texts: the parameters");
        parameters.emplace_back(name, value.get<std::string>());
    }
    return parameters;
}

} // namespace

void SendCommand(ApiContext& context, Call call) {
    context.parts.announcements.Command(call->Text("name"), ParametersOf(call->json),
                                        [call](const Outcome& outcome) {
                                            call->Guard([&] {
                                                agent_reply::Require(outcome.answer);
                                                call->Reply(202, Json::object());
                                            });
                                        });
}

void SendRequest(ApiContext& context, Call call) {
    context.parts.announcements.Request(call->Text("name"), ParametersOf(call->json),
                                        [call](const Outcome& outcome) {
                                            call->Guard([&] {
                                                if (outcome.answer.kind != AgentAnswer::Kind::Reply)
                                                    agent_reply::Require(outcome.answer);
                                                agent_reply::RequireSaved(outcome.notSaved);
                                                call->ReplyText(200, "application/xml", outcome.answer.text);
                                            });
                                        });
}

void Rehearse(ApiContext& context, Call call) {
    JsonObject body(call->json, "");
    rehearsal_timeline::Order order;
    const nlohmann::json* const announcement = body.Find("announcement");
    if (announcement == nullptr)
        throw ApiError(400, "announcement is missing", "the id of an announcement, or an announcement");
    if (announcement->is_object()) {
        order.id = 1;
        nlohmann::json one = *announcement;
        one.erase("id");
        order.announcement = announcement_json::ToXml(one, 0, "announcement");
        // The agent reads the id from the saved state.
        order.announcement.insert(std::string("<announcement>").size(), "<id>1</id>");
    } else {
        order.id = body.Id("announcement");
        (void)Read(context, order.id);
        order.announcement = Ask(context, "get_announcement", {{"id", IdText(order.id)}}).text;
    }
    order.streamReadyMs = static_cast<std::uint64_t>(body.Integer("stream_ready_ms", 0, 600000, 20));
    const std::int64_t soundMs = body.Integer("sound_ms", 0, 600000, -1);
    body.RefuseOthers();
    if (*context.rehearsals >= kMaxRehearsals)
        throw ApiError(503, "other rehearsals are under way", "to try again in a moment");
    const auto running = CountIn(context.rehearsals);
    const auto document = VqXML::CreateXmlDocument(order.announcement);
    const auto* const audio = document ? document->GetRootNode()->FindChild("audio") : nullptr;
    const std::string file = audio != nullptr ? audio->GetChildValue("file") + ".wav" : "";
    Elsewhere(
        context, call,
        [&context, order, soundMs, file] {
            auto timed = order;
            timed.soundMs =
                static_cast<std::uint64_t>(soundMs >= 0 ? soundMs : context.media.LengthOf(file).count());
            return rehearsal_timeline::Run(context.parts.moduleFile, timed);
        },
        [call, running](const Json& timeline) { call->Reply(200, timeline); });
}

} // namespace handlers

} // namespace controller
