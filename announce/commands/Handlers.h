#pragma once

#include "announce/commands/Session.h"

/// What each command does. All of them throw Failure.
namespace handlers {

ExitStatus List(Session& session);
ExitStatus Show(Session& session);
ExitStatus Add(Session& session);
ExitStatus Edit(Session& session);
ExitStatus Copy(Session& session);
ExitStatus Remove(Session& session);
ExitStatus Play(Session& session);
ExitStatus Dismiss(Session& session);
ExitStatus Stop(Session& session);
ExitStatus Say(Session& session);
ExitStatus Queue(Session& session);
ExitStatus RemoveQueued(Session& session);
ExitStatus MoveQueued(Session& session);
ExitStatus Status(Session& session);
ExitStatus Rooms(Session& session);
ExitStatus SetVolume(Session& session);
ExitStatus Screens(Session& session);
ExitStatus Variables(Session& session);
ExitStatus SetVariable(Session& session);
ExitStatus Media(Session& session);
ExitStatus AddMedia(Session& session);
ExitStatus SpeakMedia(Session& session);
ExitStatus RemoveMedia(Session& session);
ExitStatus Voices(Session& session);
ExitStatus Outputs(Session& session);
ExitStatus TestOutput(Session& session);
ExitStatus SetLoudness(Session& session);
ExitStatus History(Session& session);
ExitStatus Events(Session& session);
ExitStatus Rehearse(Session& session);
ExitStatus Export(Session& session);
ExitStatus Import(Session& session);
ExitStatus Completion(Session& session);
ExitStatus Manual(Session& session);
ExitStatus Complete(Session& session);

} // namespace handlers
