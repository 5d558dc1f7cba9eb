#include "controller/api/ApiContext.h"
#include "controller/api/handlers/AgentReply.h"
#include "controller/api/handlers/Handlers.h"
#include "controller/api/json/AnnouncementJson.h"
#include "controller/api/json/HouseJson.h"
#include "controller/api/json/Replies.h"
#include "controller/media/TestTone.h"

#include <utility>

namespace controller::handlers {
namespace {

using Outcome = Announcements::Outcome;

/// How long a popup for a test stands.
constexpr std::uint32_t kPopupMilliseconds = 8000;

void RefuseWhilePlaying(ApiContext& context) {
    if (context.watch.Current())
        throw ApiError(409, "an announcement is playing", "another try when it is over");
}

/// Forgets the announcement, which plays on, and answers.
void Forget(ApiContext& context, Call call, std::uint32_t id, const AgentAnswer& played) {
    const auto& current = context.watch.Current();
    const bool isPlaying = current && current->announcement == id;
    context.parts.announcements.Remove(id, [call, id, played, isPlaying](const Outcome& removed) {
        call->Guard([&] {
            agent_reply::Require(played);
            agent_reply::Require(removed.answer);
            if (!isPlaying)
                throw ApiError(409, "an announcement has begun meanwhile", "another try when it is over");
            call->Reply(202, view::Played{id, "playing", 0});
        });
    });
}

void Play(ApiContext& context, Call call, const Outcome& added) {
    agent_reply::Require(added.answer);
    const std::uint32_t id = added.announcement->id;
    if (context.watch.Current()) { // it has begun while the disk was waited for
        Forget(context, call, id, {});
        return;
    }
    context.parts.announcements.Play(
        id, [&context, call, id](const Outcome& played) { Forget(context, call, id, played.answer); });
}

/// Plays what is stored for this once. It goes through the agent like every announcement, so that nothing
/// else plays at the same time and every room is put back.
void PlayOnce(ApiContext& context, Call call, Announcement announcement) {
    RefuseWhilePlaying(context);
    announcement.house.isPassing = true;
    context.parts.announcements.Add(announcement, [&context, call](const Outcome& added) {
        call->Guard([&] { Play(context, call, added); });
    });
}

} // namespace

void TestRoom(ApiContext& context, Call call) {
    const std::uint32_t id = house_json::RequiredRoom(context, call->Id("id")).id;
    Announcement tone;
    tone.name = "Test tone";
    tone.audio.file = TestTone::kName;
    tone.rooms = {{id, -1}};
    PlayOnce(context, call, std::move(tone));
}

void TryAnnouncement(ApiContext& context, Call call) {
    PlayOnce(context, call, announcement_json::Read(*call->json, 0));
}

void TestNavigator(ApiContext& context, Call call) {
    const auto& navigator = house_json::RequiredNavigator(context, call->Id("id"));
    Announcement popup;
    popup.name = "Test popup";
    popup.video.text = "This is a test: " + navigator.name + " shows messages.";
    popup.video.timeoutMs = kPopupMilliseconds;
    popup.navigators = {{navigator.id, navigator.room, true}};
    PlayOnce(context, call, std::move(popup));
}

} // namespace controller::handlers
