#pragma once

#include "announce/commands/Session.h"

#include <functional>

/// Runs a command again and again, whenever something has changed in the house, until the user has seen
/// enough. On a terminal it shows the newest; elsewhere it prints each that differs from the one before. A
/// connection that is lost is made again.
ExitStatus Watch(Session& session, const CommandDefinition& command);

/// Runs `follow`, which goes on until the connection is lost, again and again; with pauses between that grow
/// until it says `isWell`. Throws its Failure when the connection has never been well.
[[noreturn]] void KeepFollowing(ApiClient& client,
                                bool hasBeenWell,
                                const std::function<void(const std::function<void()>& isWell)>& follow);
