#include "announce/commands/Commands.h"

#include "announce/announcements/Options.h"
#include "announce/commands/Handlers.h"

using announcement_options::Changing;
using announcement_options::Describing;

// Rows of a table, whatever their length.
// clang-format off
namespace {

OptionDefinition Announcement(bool isRepeated = false) {
    return {"announcement", "ANNOUNCEMENT", "Its name or id", Completes::Announcement, true, isRepeated};
}

std::vector<CommandDefinition> AnnouncementCommands() {
    return {
        {"list", "List the announcements", "", {}, {{"The names alone", "announce list --json | jq -r '.announcements[].name'"}}, handlers::List, true},
        {"show", "Show all of an announcement", "", {Announcement()}, {}, handlers::Show, true},
        {"add", "Store a new announcement",
         "Rooms, screens and variables are given by name or id. Lengths of time have a unit: 500ms, 1.5s, 2min.",
         Describing({}),
         {{"A chime in the kitchen, and a popup in the hall",
           "announce add --name Dinner --sound chime.wav --text \"Dinner is ready\" --room Kitchen:40 --screen Hall"}},
         handlers::Add},
        {"edit", "Change an announcement, in an editor or by options",
         "Without options the announcement is opened in the editor of VISUAL or EDITOR, as a text with a comment on each line. When "
         "something is wrong with what comes back, the editor opens again with the mistakes on top; when it cannot be stored, the "
         "text is kept and its file is named. Options change what they name and leave the rest. When somebody else has changed the "
         "announcement meanwhile, nothing is overwritten.",
         Changing({Announcement(), {"--file", "FILE", "Take the text from this file, in place of an editor; - for standard input", Completes::File}}),
         {{"Louder in the kitchen, and no longer in the hall", "announce edit Dinner --room Kitchen:60 --remove-room Hall"}},
         handlers::Edit},
        {"copy", "Store a copy of an announcement",
         "The copy is called like the announcement with \"(copy)\" behind it, when no other name is given. Options change the copy.",
         Changing({Announcement(), {"new-name", "NAME", "How the copy is called"}}),
         {{"The same for the garden", "announce copy Dinner \"Dinner outside\" --room Garden:60"}},
         handlers::Copy},
        {"remove", "Remove announcements", "One that plays plays to its end. When one of them is not found, none is removed.",
         {Announcement(true)}, {}, handlers::Remove},
        {"play", "Play an announcement, or queue it behind what plays",
         "With --wait the program ends when the announcement has ended, and its exit status says how. When the announcement plays "
         "already, it goes on, and its present end is waited for.",
         {Announcement(), {"--wait", "", "Wait for its end, and say how it ended"}},
         {{"Do something about it when the announcement was dismissed or failed", "announce play Dinner --wait || echo \"Not played to its end\""}},
         handlers::Play},
        {"dismiss", "Take the popup of what plays away, on every screen", "", {}, {}, handlers::Dismiss},
        {"stop", "Stop what plays", "The sound fades out in every room, popups go, and every room is put back. What waits is played next.",
         {}, {}, handlers::Stop},
        {"say", "Speak and show a text, once",
         "The text is spoken in the rooms and shown on the screens; in it {NAME} stands for the value of the variable of that name. "
         "With --sound that sound is played instead, and the text is shown alone. While something plays it waits for its turn. A text that begins with a dash stands behind --.",
         {{"text", "TEXT", "What is said"},
          {"--room", "ROOM[:VOLUME]", "A room where it is heard, and how loud (1 to 100); may come again", Completes::Room, false, true},
          {"--screen", "SCREEN", "A screen where it is shown; may come again", Completes::Screen, false, true},
          {"--voice", "VOICE", "Who speaks; the house's default when nothing is said", Completes::Voice},
          {"--sound", "SOUND", "A sound that is played in place of speech", Completes::Sound},
          {"--chime", "SOUND", "A sound that is heard in front of the text", Completes::Sound},
          {"--popup-time", "TIME", "How long the popup stands; 10 s when nothing is said"},
          {"--urgent", "", "Loudspeakers that have an urgent address get it there, and interrupt what they play"},
          {"--wait", "", "Wait for its end, and say how it ended"}},
         {{"In the kitchen, and on the screen in the hall", "announce say \"Dinner is ready\" --room Kitchen --screen Hall"}},
         handlers::Say},
        {"queue", "List what waits to be played, the next one first", "", {}, {}, handlers::Queue, true},
        {"queue remove", "Take back what waits", "", {{"entry", "ENTRY", "Its number in the list", Completes::Nothing, true}}, {}, handlers::RemoveQueued},
        {"queue move", "Move what waits", "Without --before it is played behind all the others.",
         {{"entry", "ENTRY", "Its number in the list", Completes::Nothing, true}, {"--before", "ENTRY", "The entry that is played behind it"}},
         {{"Entry 7 before entry 5", "announce queue move 7 --before 5"}}, handlers::MoveQueued},
        {"rehearse", "Show what playing an announcement would do",
         "Nothing is played: the controller runs the announcement on a clock of its own.",
         {Announcement(), {"--sound-length", "TIME", "How long the sound lasts, in place of its own length"}},
         {}, handlers::Rehearse},
    };
}

std::vector<CommandDefinition> HouseCommands() {
    return {
        {"status", "Show what plays, waits and stands on the screens", "", {}, {}, handlers::Status, true},
        {"rooms", "List the rooms", "", {}, {}, handlers::Rooms, true},
        {"rooms volume", "Set the volume of a room", "A room is never louder than the house file allows; the answer says how loud it is.",
         {{"room", "ROOM", "Its name or id", Completes::Room, true}, {"volume", "VOLUME", "0 to 100", Completes::Nothing, true}},
         {{"The kitchen, half as loud", "announce rooms volume Kitchen 20"}}, handlers::SetVolume},
        {"outputs", "List where rooms could be heard",
         "Each with its line for the house file: the sinks of the sound server and the sound cards of the machine that the controller runs on, the clients of the Snapcast servers that the house names, and the pages of screens that its rooms name and somebody has tapped on.",
         {}, {}, handlers::Outputs},
        {"outputs test", "Play a tone on an output", "Whether it is a room's or not; not while an announcement plays.",
         {{"output", "OUTPUT", "As `announce outputs` lists it", Completes::Nothing, true},
          {"--volume", "VOLUME", "1 to 100; 40 when nothing is said"}},
         {{"A sink of the sound server", "announce outputs test \"pulse: kitchen\""}}, handlers::TestOutput},
        {"screens", "List the screens", "", {}, {}, handlers::Screens, true},
        {"variables", "List the variables", "", {}, {}, handlers::Variables, true},
        {"variables set", "Set a variable", "Popups that are bound to it follow. A value that begins with a dash stands behind --.",
         {{"variable", "VARIABLE", "Its name, or DEVICE/VARIABLE", Completes::Variable, true},
          {"value", "VALUE", "Its new value", Completes::Nothing, true}},
         {{"A temperature below zero", "announce variables set Outside -- \"-5 °C\""}}, handlers::SetVariable},
        {"media", "List the sounds and images", "", {}, {}, handlers::Media},
        {"media list", "List the sounds and images", "", {}, {}, handlers::Media},
        {"media add", "Bring files into the media folder",
         "A file with the name of one that is there takes its place. A sound (MP3, M4A, AAC, OGG, Opus, FLAC, WebM, AIFF, WAV) becomes a WAV file unless it is a plain one; images are PNG, JPEG, GIF or WebP. What a file is, its content says. Of a sound that lasts longer than 20 s, --from and --to choose a part. A name keeps its letters (without accents), digits, - and _; what else stands in it becomes a -, and the answer says what the name has become. One file that cannot be taken keeps none of the others away.",
         {{"file", "FILE", "A sound or an image", Completes::File, true, true}, {"--name", "NAME", "How the file is called there"},
          {"--from", "TIME", "Where the wanted part of the sound begins"},
          {"--to", "TIME", "Where it ends; without it: at the sound's own end"}},
         {{"The chorus of a song", "announce media add song.mp3 --from 62s --to 77s --name gong"}}, handlers::AddMedia},
        {"media speak", "Store a spoken sound, or another text for one",
         "Announcements name it as they name a file. In the text {NAME} stands for the value of the variable of that name, and the sound is spoken anew when it changes. What would last longer than 20 s is refused. A text that begins with a dash stands behind --.",
         {{"name", "NAME", "How the sound is called", Completes::Sound, true},
          {"text", "TEXT", "What is spoken", Completes::Nothing, true},
          {"--voice", "VOICE", "Who speaks; the house's default when nothing is said", Completes::Voice},
          {"--speed", "PERCENT", "50 to 200 percent of the voice's own speed"},
          {"--chime", "SOUND", "A sound that is heard before", Completes::Sound}},
         {{"With the temperature of now", "announce media speak post \"The post is here, {Outside} degrees\" --chime gong"}}, handlers::SpeakMedia},
        {"media loudness", "Say how loud a sound is played", "Every sound is brought to the same loudness when it is played, and its file stays as it is; as-it-is leaves one out.",
         {{"name", "NAME", "A sound of the media folder", Completes::Media, true}, {"how", "HOW", "even or as-it-is", Completes::Nothing, true}},
         {}, handlers::SetLoudness},
        {"media remove", "Remove files from the media folder", "One that announcements use stays, and the message lists them. When one of them is not found, none is removed.",
         {{"name", "NAME", "A file of the media folder", Completes::Media, true, true}}, {}, handlers::RemoveMedia},
        {"voices", "List the voices that speak", "", {}, {}, handlers::Voices},
    };
}

std::vector<CommandDefinition> OtherCommands() {
    return {
        {"history", "List what has been played, newest first", "",
         {{"-n,--lines", "COUNT", "At most so many, 1 to 1000; 20 when nothing is said"}}, {}, handlers::History, true},
        {"events", "Show what has happened, and what happens",
         "The last events that the controller still knows, oldest first; with --follow every further one, until Ctrl-C. A connection "
         "that is lost is made again, and what was missed is shown.",
         {{"-f,--follow", "", "Go on with what happens from now on"},
          {"-n,--lines", "COUNT", "Begin with so many that have happened, 0 to 1000; 20 when nothing is said"},
          {"--type", "TYPE", "Only events of this type of the API; may come again", Completes::EventType, false, true}},
         {{"Popups, one JSON object a line", "announce events --follow --json --type popup_shown"}}, handlers::Events},
        {"export", "Write every announcement as JSON",
         "Sounds and images are not in it.",
         {{"file", "FILE", "Where to; standard output when nothing is said", Completes::File}},
         {{"A backup", "announce export announcements.json"}}, handlers::Export},
        {"import", "Store the announcements of a file",
         "Announcements are compared by name: those that are there with the same content are left alone, new ones are added. When "
         "some are there with other content nothing is done, but with --replace those of the file take their place.",
         {{"file", "FILE", "What export has written; - for standard input", Completes::File, true},
          {"--replace", "", "Put those of the file in the place of those with the same name"},
          {"-n,--dry-run", "", "Only say what would be done"}},
         {{"Look, then restore a backup", "announce import announcements.json --replace --dry-run"}}, handlers::Import},
        {"completion", "Print the completion of commands and names for a shell",
         "Names of announcements, rooms, screens, variables and files are asked from the running controller. The installed program "
         "has brought its completions along.",
         {{"shell", "SHELL", "bash, zsh or fish", Completes::Shell, true}},
         {{"For this bash", "source <(announce completion bash)"}}, handlers::Completion},
        {"manual", "Print the manual page", "",
         {{"--markdown", "", "As Markdown, in place of roff"}}, {{"Read it", "announce manual | man -l -"}}, handlers::Manual},
        {"complete", "Print what may stand in the place of the last word", "", {{"word", "WORD", "", Completes::Nothing, false, true}}, {}, handlers::Complete, false, true},
    };
}

} // namespace

CommandTable AllCommands() {
    std::vector<CommandDefinition> all;
    for (const auto& group : {AnnouncementCommands(), HouseCommands(), OtherCommands()})
        all.insert(all.end(), group.begin(), group.end());
    return CommandTable(std::move(all));
}
// clang-format on
