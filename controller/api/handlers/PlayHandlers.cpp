#include "controller/api/ApiContext.h"
#include "controller/api/handlers/AgentReply.h"
#include "controller/api/handlers/Handlers.h"
#include "controller/api/json/PlayViews.h"
#include "controller/api/json/Replies.h"

namespace controller::handlers {
namespace {

ApiError NoEntry() {
    return {404, "no such entry waits", "an entry that GET /api/queue lists"};
}

/// Shows what waits, when the disk has it.
WriteDone AnswerQueue(ApiContext& context, Call call) {
    return [&context, call](const std::string& error) {
        call->Guard([&] {
            agent_reply::RequireSaved(error);
            call->Reply(200, view::Queue{context.parts.queue.Waiting()});
        });
    };
}

} // namespace

void PlayAnnouncement(ApiContext& context, Call call) {
    const std::uint32_t id = call->Id("id");
    context.parts.queue.Ask(id, [&context, call, id](const PlayQueue::Outcome& outcome) {
        call->Guard([&] {
            if (outcome.asked.answer.kind == AgentAnswer::Kind::Unknown)
                throw ApiError(404, "there is no announcement " + std::to_string(id));
            agent_reply::RequireQueued(outcome);
            const auto& current = context.watch.Current();
            const bool isPlaying = current && current->announcement == id;
            call->Reply(202, view::Played{id, isPlaying ? "playing" : "waiting", outcome.entry});
        });
    });
}

void Dismiss(ApiContext& context, Call call) {
    const auto& current = context.watch.Current();
    const view::Dismissed dismissed{current ? std::optional(current->announcement) : std::nullopt};
    context.parts.announcements.Dismiss([call, dismissed](const Announcements::Outcome& outcome) {
        call->Guard([&] {
            agent_reply::Require(outcome.answer);
            call->Reply(202, dismissed);
        });
    });
}

void Stop(ApiContext& context, Call call) {
    call->Reply(200, view::Stopped{context.parts.stop.Stop()});
}

void ListQueue(ApiContext& context, Call call) {
    call->Reply(200, view::Queue{context.parts.queue.Waiting()});
}

void RemoveQueued(ApiContext& context, Call call) {
    const auto answer = [call](const std::string& error) {
        call->Guard([&] {
            agent_reply::RequireSaved(error);
            call->ReplyNothing();
        });
    };
    if (!context.parts.queue.Remove(call->Number("entry"), answer))
        throw NoEntry();
}

void MoveQueued(ApiContext& context, Call call) {
    const std::uint64_t before = call->Take<view::QueueMove>().before.value_or(0);
    if (!context.parts.queue.Move(call->Number("entry"), before, AnswerQueue(context, call)))
        throw NoEntry();
}

} // namespace controller::handlers
