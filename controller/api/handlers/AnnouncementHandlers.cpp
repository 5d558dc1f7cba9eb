#include "controller/announcements/AnnouncementXml.h"
#include "controller/announcements/RawRequest.h"
#include "controller/api/ApiContext.h"
#include "controller/api/MissingTargets.h"
#include "controller/api/RehearsalTimeline.h"
#include "controller/api/handlers/AgentReply.h"
#include "controller/api/handlers/Handlers.h"
#include "controller/api/handlers/SpokenMedia.h"
#include "controller/api/json/AnnouncementJson.h"
#include "controller/api/json/HouseJson.h"
#include "controller/api/json/HouseViews.h"
#include "controller/api/json/PlayViews.h"
#include "controller/api/json/Replies.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace controller {

namespace handlers {
namespace {

using Outcome = Announcements::Outcome;

/// A longer list is written elsewhere.
constexpr std::size_t kLongList = 64;
constexpr unsigned kMaxRehearsals = 4;

std::string IdText(std::uint32_t id) {
    return std::to_string(id);
}

ApiError NoAnnouncement(std::uint32_t id) {
    return {404, "there is no announcement " + IdText(id)};
}

AnnouncementPointer Required(ApiContext& context, std::uint32_t id) {
    auto announcement = context.parts.announcements.Find(id);
    if (!announcement)
        throw NoAnnouncement(id);
    return announcement;
}

HttpReply Shown(unsigned status, const Announcement& announcement) {
    HttpReply reply;
    reply.status = status;
    reply.contentType = "application/json";
    if (status == 201)
        reply.headers.emplace_back("Location", "/api/announcements/" + IdText(announcement.id));
    reply.headers.emplace_back("ETag", announcement.tag);
    reply.body = announcement_json::ToText(announcement);
    return reply;
}

/// Throws 412 when the request is meant for another state of the announcement than this one.
void RequireMatch(Call call, const Announcement& announcement) {
    const std::string_view wanted = call->Request().Header("if-match");
    if (!wanted.empty() && wanted != "*" && wanted.find(announcement.tag) == std::string_view::npos)
        throw ApiError(412, "announcement " + IdText(announcement.id) + " has been changed meanwhile",
                       "the ETag of GET /api/announcements/" + IdText(announcement.id));
}

template <class Target>
void RequireTarget(const std::vector<Target>& targets,
                   std::uint32_t target,
                   std::uint32_t id,
                   const char* kind) {
    const auto isIt = [target](const Target& one) {
        return one.id == target;
    };
    // The agent has no answer of its own for one that is not there.
    if (std::none_of(targets.begin(), targets.end(), isIt))
        throw ApiError(404, "announcement " + IdText(id) + " has no " + kind + " " + IdText(target));
}

/// Answers with `reply` when what was asked for is done and stands on the disk; else says why not.
template <class Reply>
Announcements::Done AnswerWith(Call call, Reply reply) {
    return [call, reply = std::move(reply)](const Outcome& outcome) {
        call->Guard([&] {
            agent_reply::Require(outcome.answer);
            agent_reply::RequireSaved(outcome.notSaved);
            reply(outcome);
        });
    };
}

Announcements::Done AnswerNothing(Call call) {
    return AnswerWith(call, [call](const Outcome& /*outcome*/) { call->ReplyNothing(); });
}

/// The announcement as it is now stored, and what it names that the house does not have.
Announcements::Done AnswerStored(ApiContext& context, Call call, unsigned status) {
    return AnswerWith(call, [&context, call, status](const Outcome& outcome) {
        if (!outcome.announcement)
            throw ApiError(404, "the announcement has been removed meanwhile");
        HttpReply reply = Shown(status, *outcome.announcement);
        const std::string missing = missing_targets::ListedIn(*outcome.announcement, context.parts.house);
        if (!missing.empty())
            reply.headers.emplace_back("Announcement-Missing", missing);
        call->Reply(std::move(reply));
    });
}

/// Who knows nothing of what the house adds takes nothing of it away.
void KeepUntold(const nlohmann::json& told, const HouseAddition& present, HouseAddition& wanted) {
    if (!told.contains("tags"))
        wanted.tags = present.tags;
    if (!told.contains("urgent"))
        wanted.isUrgent = present.isUrgent;
    wanted.isPassing = present.isPassing;
}

} // namespace

void ListAnnouncements(ApiContext& context, Call call) {
    const auto list = context.parts.announcements.All();
    if (list->size() <= kLongList) {
        call->Reply(200, view::AnnouncementList{list});
        return;
    }
    Elsewhere(
        context, call, [list] { return fields::ToText(view::AnnouncementList{list}); },
        [call](const std::string& text) { call->ReplyText(200, "application/json", text); });
}

void GetAnnouncement(ApiContext& context, Call call) {
    call->Reply(Shown(200, *Required(context, call->Id("id"))));
}

void AddAnnouncement(ApiContext& context, Call call) {
    context.parts.announcements.Add(announcement_json::Read(*call->json, 0),
                                    AnswerStored(context, call, 201));
}

void ReplaceAnnouncement(ApiContext& context, Call call) {
    const std::uint32_t id = call->Id("id");
    Announcement announcement = announcement_json::Read(*call->json, id);
    const AnnouncementPointer present = Required(context, id);
    RequireMatch(call, *present);
    KeepUntold(*call->json, present->house, announcement.house);
    context.parts.announcements.Replace(announcement, AnswerStored(context, call, 200));
}

void RemoveAnnouncement(ApiContext& context, Call call) {
    context.parts.announcements.Remove(call->Id("id"), AnswerNothing(call));
}

void PutAnnouncementRoom(ApiContext& context, Call call) {
    const std::uint32_t id = call->Id("id");
    const auto room = announcement_json::ReadRoom(*call->json, call->Id("room"));
    (void)Required(context, id);
    context.parts.announcements.PutRoom(
        id, room, AnswerWith(call, [call, room](const Outcome&) { call->Reply(200, room); }));
}

void RemoveAnnouncementRoom(ApiContext& context, Call call) {
    const std::uint32_t id = call->Id("id");
    const std::uint32_t room = call->Id("room");
    RequireTarget(Required(context, id)->rooms, room, id, "room");
    context.parts.announcements.RemoveRoom(id, room, AnswerNothing(call));
}

void PutAnnouncementNavigator(ApiContext& context, Call call) {
    const std::uint32_t id = call->Id("id");
    const auto navigator = announcement_json::ReadNavigator(*call->json, call->Id("navigator"));
    (void)Required(context, id);
    context.parts.announcements.PutNavigator(
        id, navigator, AnswerWith(call, [call, navigator](const Outcome&) { call->Reply(200, navigator); }));
}

void RemoveAnnouncementNavigator(ApiContext& context, Call call) {
    const std::uint32_t id = call->Id("id");
    const std::uint32_t navigator = call->Id("navigator");
    RequireTarget(Required(context, id)->navigators, navigator, id, "navigator");
    context.parts.announcements.RemoveNavigator(id, navigator, AnswerNothing(call));
}

void SendCommand(ApiContext& context, Call call) {
    const std::string name = call->Text("name");
    const Parameters parameters = call->Take<view::Parameters>().values;
    const auto played = raw_request::Played(name, parameters);
    context.parts.announcements.Command(name, parameters, [call, played](const Outcome& outcome) {
        call->Guard([&] {
            if (played && outcome.answer.kind == AgentAnswer::Kind::Unknown)
                throw NoAnnouncement(*played);
            agent_reply::Require(outcome.answer);
            call->Reply(202, view::Nothing());
        });
    });
}

void SendRequest(ApiContext& context, Call call) {
    const std::string name = call->Text("name");
    const Parameters parameters = call->Take<view::Parameters>().values;
    if (name == "get_announcements" && context.parts.isAgentRunning()) {
        // The agent would be busy for long; its answer is known.
        Elsewhere(
            context, call,
            [list = context.parts.announcements.WithPassing()] { return announcement_xml::ToXml(list); },
            [call](const std::string& text) { call->ReplyText(200, "application/xml", text); });
        return;
    }
    context.parts.announcements.Request(name, parameters, [call](const Outcome& outcome) {
        call->Guard([&] {
            if (outcome.answer.kind != AgentAnswer::Kind::Reply)
                agent_reply::Require(outcome.answer);
            agent_reply::RequireSaved(outcome.notSaved);
            call->ReplyText(200, "application/xml", outcome.answer.text);
        });
    });
}

namespace {

/// As long as the sound's file, or not at all; looks into the file system.
void TakeSound(const MediaShelf& media,
               const std::optional<MediaShelf::Length>& spoken,
               rehearsal_timeline::Order& order) {
    const MediaShelf::Length found = spoken ? *spoken : media.LengthOf(order.announcement.audio.file);
    order.soundMs = static_cast<std::uint64_t>(found.length.count());
    order.soundTrouble = found.trouble;
}

} // namespace

void Rehearse(ApiContext& context, Call call) {
    const auto wanted = call->Take<view::RehearsalOrder>();
    rehearsal_timeline::Order order;
    if (wanted.announcement.announcement) {
        order.announcement = *wanted.announcement.announcement;
        order.announcement.id = 1;
    } else {
        order.announcement = *Required(context, wanted.announcement.id);
    }
    order.streamReadyMs = wanted.streamReadyMs;
    order.rooms = house_json::IdsOf(context.parts.house.rooms);
    order.navigators = house_json::IdsOf(context.parts.house.navigators);
    if (*context.rehearsals >= kMaxRehearsals)
        throw ApiError(503, "other rehearsals are under way", "another try in a moment");
    const auto running = CountIn(context.rehearsals);
    Elsewhere(
        context, call,
        [&context, order, soundMs = wanted.soundMs,
         spoken = spoken_media::LengthOf(context, order.announcement.audio.file)] {
            auto timed = order;
            if (soundMs)
                timed.soundMs = *soundMs;
            else
                TakeSound(context.media, spoken, timed);
            return rehearsal_timeline::Run(context.parts.moduleFile, timed);
        },
        [call, running](const view::Rehearsal& rehearsed) { call->Reply(200, rehearsed); });
}

} // namespace handlers

} // namespace controller
