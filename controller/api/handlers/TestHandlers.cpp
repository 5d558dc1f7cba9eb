#include "controller/api/ApiContext.h"
#include "controller/api/handlers/AgentReply.h"
#include "controller/api/handlers/Handlers.h"
#include "controller/api/json/AnnouncementJson.h"
#include "controller/api/json/HouseJson.h"
#include "controller/media/TestTone.h"

namespace controller::handlers {
namespace {

using Outcome = AnnouncementService::Outcome;

/// How long a popup for a test stands.
constexpr int kPopupMilliseconds = 8000;

void RefuseWhilePlaying(ApiContext& context) {
    if (context.watch.Current())
        throw ApiError(409, "an announcement is playing", "to try again when it is over");
}

/// Forgets the announcement, which plays on, and answers.
void Started(ApiContext& context, Call call, std::uint32_t id, const AgentAnswer& played) {
    const auto& current = context.watch.Current();
    const bool isPlaying = current && current->announcement == id;
    context.parts.announcements.Request(
        "remove_announcement", {{"id", std::to_string(id)}},
        [call, id, played, isPlaying](const Outcome& removed) {
            call->Guard([&] {
                agent_reply::Require(played);
                agent_reply::Require(removed.answer);
                if (!isPlaying)
                    throw ApiError(409, "an announcement has begun meanwhile",
                                   "to try again when it is over");
                call->Reply(202, {{"announcement", id}, {"state", "playing"}});
            });
        });
}

void Play(ApiContext& context, Call call, const AgentAnswer& added) {
    agent_reply::Require(added);
    const auto id = static_cast<std::uint32_t>(std::stoul(added.value));
    context.parts.announcements.Play(
        id, [&context, call, id](const Outcome& played) { Started(context, call, id, played.answer); });
}

/// Plays what is stored for this once. It goes through the agent like every announcement, so that nothing
/// else plays at the same time and every room is put back.
void PlayOnce(ApiContext& context, Call call, const nlohmann::json& announcement) {
    RefuseWhilePlaying(context);
    const std::string xml = announcement_json::ToXml(announcement, 0);
    context.parts.announcements.Request(
        "add_announcement", {{"announcement", xml}},
        [&context, call](const Outcome& added) { call->Guard([&] { Play(context, call, added.answer); }); });
}

} // namespace

void TestRoom(ApiContext& context, Call call) {
    const std::uint32_t id = call->Id("id");
    if (house_json::FindRoom(context.parts.house, id) == nullptr)
        throw ApiError(404, "the house has no room " + std::to_string(id), "an id that GET /api/rooms lists");
    PlayOnce(context, call,
             {{"name", "Test tone"},
              {"audio", {{"file", TestTone::kName}}},
              {"rooms", {{{"id", id}, {"volume", -1}}}}});
}

void TestNavigator(ApiContext& context, Call call) {
    const std::uint32_t id = call->Id("id");
    const auto* const navigator = house_json::FindNavigator(context.parts.house, id);
    if (navigator == nullptr)
        throw ApiError(404, "the house has no navigator " + std::to_string(id),
                       "an id that GET /api/navigators lists");
    PlayOnce(context, call,
             {{"name", "Test popup"},
              {"video",
               {{"text", "This is a test: " + navigator->name + " shows messages."},
                {"timeout_ms", kPopupMilliseconds}}},
              {"navigators", {{{"id", id}, {"room", navigator->room}}}}});
}

} // namespace controller::handlers
