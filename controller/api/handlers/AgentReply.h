#pragma once

#include "controller/announcements/Announcements.h"
#include "controller/announcements/PlayQueue.h"

#include <string>

/// The agent's answers as the API's errors.
namespace controller::agent_reply {

/// Returns for a command that was delivered and a request that was answered with success. Throws `ApiError`
/// for anything else: a "fail" becomes 404 when it is about an unknown id, else 409; an exception 400; each
/// with the agent's text.
void Require(const AgentAnswer& answer);

/// Throws `ApiError` with 507 unless the text, why a change is not on the disk, is empty.
void RequireSaved(const std::string& notSaved);

/// Returns for what plays or waits, and stands on the disk. Throws `ApiError`: 503 where too many wait, else
/// as the two above.
void RequireQueued(const PlayQueue::Outcome& outcome);

} // namespace controller::agent_reply
