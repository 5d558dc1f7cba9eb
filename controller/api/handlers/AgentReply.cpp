#include "controller/api/handlers/AgentReply.h"

#include "controller/api/ApiError.h"

#include <string>

namespace controller::agent_reply {

void Require(const AgentAnswer& answer) {
    switch (answer.kind) {
    case AgentAnswer::Kind::Done:
    case AgentAnswer::Kind::NoReply:
        return;
    case AgentAnswer::Kind::Reply:
        break;
    case AgentAnswer::Kind::Unknown:
        throw ApiError(404, answer.text, "a name that the agent has registered");
    case AgentAnswer::Kind::Failed:
        throw ApiError(400, answer.text, "parameters that the agent can read");
    case AgentAnswer::Kind::NoAgent:
        throw ApiError(503, answer.text);
    }
    if (answer.tag != "fail")
        return;
    const bool isUnknownId = answer.value.rfind("Invalid announcement id", 0) == 0;
    throw ApiError(isUnknownId ? 404 : 409, answer.value,
                   isUnknownId ? "the id of a stored announcement" : "");
}

void RequireSaved(const std::string& notSaved) {
    if (!notSaved.empty())
        throw ApiError(507, "the change is made, but not on the disk yet: " + notSaved,
                       "room and leave to write in the data folder; it is tried again by itself");
}

void RequireQueued(const PlayQueue::Outcome& outcome) {
    if (outcome.isFull)
        throw ApiError(503, std::to_string(PlayQueue::kMost) + " announcements wait already",
                       "another try when some of them have been played or taken back");
    Require(outcome.asked.answer);
    RequireSaved(outcome.asked.notSaved);
}

} // namespace controller::agent_reply
