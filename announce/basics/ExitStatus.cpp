#include "announce/basics/ExitStatus.h"

const std::vector<ExitStatusMeaning>& ExitStatuses() {
    static const std::vector<ExitStatusMeaning> kMeanings{
        {ExitStatus::Done, "What was asked for is done."},
        {ExitStatus::Failed, "It could not be done, for a reason that has no number of its own."},
        {ExitStatus::Usage, "The command line, or a file that was given, is wrong."},
        {ExitStatus::NotFound, "There is no such announcement, room, screen, variable or file."},
        {ExitStatus::Ambiguous, "The name fits several; the message lists them."},
        {ExitStatus::NotAllowed, "The controller wants a token, or the token lacks the right."},
        {ExitStatus::Refused, "The controller refuses what was sent, and the message says why."},
        {ExitStatus::Conflict,
         "It does not go with what the controller has, as when somebody else has changed "
         "the announcement meanwhile."},
        {ExitStatus::NoConnection,
         "No controller answers at the address, the connection is lost, or the controller has no room for "
         "the request at present."},
        {ExitStatus::EndedOtherwise, "The announcement that was waited for ended otherwise than by itself: "
                                     "dismissed, stopped, failed, removed or interrupted."},
        {ExitStatus::NotSaved,
         "The change is made, but the controller cannot write it to its disk at present."},
        {ExitStatus::Interrupted, "The program was interrupted by SIGINT (Ctrl-C) or SIGTERM."},
    };
    return kMeanings;
}
