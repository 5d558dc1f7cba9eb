#include "controller/api/ApiContext.h"
#include "controller/api/handlers/AgentReply.h"
#include "controller/api/handlers/Handlers.h"
#include "controller/api/json/AnnouncementJson.h"
#include "controller/api/json/HouseJson.h"
#include "controller/api/json/SayJson.h"
#include "controller/speech/SpeechText.h"

#include <nlohmann/json.hpp>

#include <map>
#include <stdexcept>
#include <utility>

namespace controller::handlers {
namespace {

void RequireSense(const view::SayOrder& order) {
    if (order.text.empty() && order.sound.empty())
        throw ApiError(400, "there is nothing to say", "a text, or the name of a sound");
    if (order.rooms.empty() && order.navigators.empty())
        throw ApiError(400, "nobody would hear or see it", "at least one room or navigator");
}

/// With the values that variables have now, as it is spoken.
std::string WordsOf(const ApiContext& context, const std::string& text) {
    std::map<std::string, std::string> values;
    for (const auto& variable : context.parts.variables.All())
        values.emplace(variable.name, variable.value);
    try {
        return speech_text::Filled(text, values);
    } catch (const std::invalid_argument& error) {
        throw ApiError(422, error.what());
    }
}

/// Held to what every announcement is held to.
Announcement AnnouncementOf(const ApiContext& context, const view::SayOrder& order) {
    RequireSense(order);
    const std::string words = WordsOf(context, order.text);
    nlohmann::json json{{"name", words.empty() ? order.sound : words},
                        {"audio", {{"file", order.rooms.empty() ? "" : order.sound}}},
                        {"video", {{"text", words}, {"timeout_ms", order.timeoutMs}}},
                        {"rooms", nlohmann::json::array()},
                        {"navigators", nlohmann::json::array()},
                        {"urgent", order.isUrgent}};
    for (const Announcement::Room& room : order.rooms)
        json["rooms"].push_back(
            {{"id", house_json::RequiredRoom(context, room.id).id}, {"volume", room.volume}});
    for (const view::SayScreen& screen : order.navigators) {
        const auto& navigator = house_json::RequiredNavigator(context, screen.id);
        json["navigators"].push_back({{"id", navigator.id}, {"room", navigator.room}});
    }
    return announcement_json::Read(json, 0);
}

void AnswerSaid(ApiContext& context,
                Call call,
                std::uint32_t id,
                const std::string& trouble,
                const PlayQueue::Outcome& outcome) {
    if (outcome.isFull)
        context.parts.announcements.Remove(id, [](const Announcements::Outcome& /*outcome*/) {
            // Left over, it is gone at the next start.
        });
    agent_reply::RequireQueued(outcome);
    const auto& current = context.watch.Current();
    const bool isPlaying = current && current->announcement == id;
    call->Reply(202, view::Said{outcome.entry, id, isPlaying ? "playing" : "waiting", trouble});
}

void AskFor(ApiContext& context, Call call, Announcement announcement, const std::string& trouble) {
    const auto added = context.parts.announcements.AddPassing(std::move(announcement));
    agent_reply::Require(added.answer);
    const std::uint32_t id = added.announcement->id;
    context.parts.queue.Ask(id, [&context, call, id, trouble](const PlayQueue::Outcome& outcome) {
        call->Guard([&] { AnswerSaid(context, call, id, trouble, outcome); });
    });
}

/// Where the text cannot be spoken, what is left of it is played and shown, and why is said.
void AskSpoken(ApiContext& context, Call call, Announcement announcement, const RenderedSpeech& rendered) {
    if (rendered.outcome == RenderedSpeech::Outcome::Refused)
        throw ApiError(422, rendered.error, rendered.right);
    if (rendered.sound.empty() && announcement.navigators.empty())
        throw ApiError(503, "it cannot be spoken: " + rendered.error,
                       "another voice, or a screen to show it");
    announcement.audio.file = rendered.sound;
    AskFor(context, call, std::move(announcement), rendered.error);
}

} // namespace

void Say(ApiContext& context, Call call) {
    const auto order = call->Take<view::SayOrder>();
    Announcement announcement = AnnouncementOf(context, order);
    if (!order.sound.empty() || order.rooms.empty()) {
        AskFor(context, call, std::move(announcement), "");
        return;
    }
    const SpeechRecipe recipe{order.text, order.voice, 100, order.chime};
    context.parts.speech.Render(recipe, [&context, call, announcement](const RenderedSpeech& rendered) {
        call->Guard([&] { AskSpoken(context, call, announcement, rendered); });
    });
}

} // namespace controller::handlers
