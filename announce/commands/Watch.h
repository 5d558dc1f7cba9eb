#pragma once

#include "announce/Session.h"
#include "announce/definitions/Definitions.h"

/// Runs a command again and again, whenever something has changed in the house, until the user has seen
/// enough. On a terminal it shows the newest; elsewhere it prints each that differs from the one before. A
/// connection that is lost is made again.
ExitStatus Watch(Session& session, const CommandDefinition& command);
