#include "announce/commands/Handlers.h"
#include "announce/definitions/Definitions.h"

namespace {

using Option = OptionDefinition;

Option Announcement(bool isRepeated = false) {
    return {"announcement", "ANNOUNCEMENT", "Its name or id", Completes::Announcement, true, isRepeated};
}

/// What describes an announcement; "edit" and "copy" change what stands there.
std::vector<Option> AnnouncementOptions(std::vector<Option> before) {
    const std::vector<Option> options{
        {"--name", "NAME", "How it is called"},
        {"--sound", "FILE", "The sound of the media folder that is played; none for none", Completes::Sound},
        {"--sound-delay", "TIME", "How long after its beginning the sound comes: 500ms, 1.5s"},
        {"--room", "ROOM[:VOLUME]",
         "A room where it is heard, and how loud (1 to 100; without one the room stays as loud "
         "as it is); may come again",
         Completes::Room, false, true},
        {"--text", "TEXT", "What its popup says"},
        {"--variable", "VARIABLE", "The variable whose value its popup says instead; none for none",
         Completes::Variable},
        {"--image", "FILE|URL", "The image that its popup shows; none for none", Completes::Image},
        {"--screen", "SCREEN", "A screen where its popup is shown; may come again", Completes::Screen, false,
         true},
        {"--popup-delay", "TIME", "How long after its beginning the popup comes"},
        {"--popup-time", "TIME", "How long the popup stands; 30 s when nothing is said"},
        {"--ok-button", "yes|no", "Whether the popup has an OK button; it has when nothing is said"},
    };
    before.insert(before.end(), options.begin(), options.end());
    return before;
}

std::vector<Option> ChangeOptions(std::vector<Option> before) {
    auto options = AnnouncementOptions(std::move(before));
    options.push_back({"--remove-room", "ROOM", "A room where it is no longer heard; may come again",
                       Completes::Room, false, true});
    options.push_back({"--remove-screen", "SCREEN", "A screen where it is no longer shown; may come again",
                       Completes::Screen, false, true});
    return options;
}

std::vector<CommandDefinition> MakeCommands() {
    return {
        {"list", "List the announcements", "", {}, {}, handlers::List, true},
        {"show", "Show all of an announcement", "", {Announcement()}, {}, handlers::Show, true},
        {"add",
         "Store a new announcement",
         "Rooms, screens and variables are given by name or id.",
         AnnouncementOptions({}),
         {{"A bell in the kitchen, and a popup in the hall",
           "announce add --name Dinner --sound chime.wav --text \"Dinner is ready\" --room Kitchen:40 "
           "--screen Hall"}},
         handlers::Add},
        {"copy",
         "Store a copy of an announcement",
         "The copy is called like the announcement with \"(copy)\" behind it, when no other name is given. "
         "Options change the copy.",
         ChangeOptions({Announcement(), {"new-name", "NAME", "How the copy is called"}}),
         {{"The same for the garden", "announce copy Dinner \"Dinner outside\" --room Garden:60"}},
         handlers::Copy},
        {"remove",
         "Remove announcements",
         "One that plays plays to its end. When one of them is not found, none is removed.",
         {Announcement(true)},
         {},
         handlers::Remove},
        {"play",
         "Play an announcement, or queue it behind what plays",
         "With --wait the program ends when the announcement has ended, and its exit status says how. When "
         "it plays already, its present end is waited for.",
         {Announcement(), {"--wait", "", "Wait for its end, and say how it ended"}},
         {{"Ring, and do something else when it was not dismissed",
           "announce play Doorbell --wait && say \"Nobody has come\""}},
         handlers::Play},
        {"dismiss", "Take the popup of what plays away, on every screen", "", {}, {}, handlers::Dismiss},
    };
}

} // namespace

const std::vector<CommandDefinition>& Commands() {
    static const std::vector<CommandDefinition> kCommands = MakeCommands();
    return kCommands;
}
