#include "controller/console/Console.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace controller {

const Console::Entry Console::kEntries[] = {
    {"play", 1, "play ID", "plays an announcement, or queues it behind the one that plays", &Console::Play},
    {"dismiss", 0, "dismiss", "takes the popups of the announcement that plays away", &Console::Dismiss},
    {"list", 0, "list", "lists the announcements", &Console::List},
    {"rooms", 0, "rooms", "lists the rooms and their volumes", &Console::Rooms},
    {"volume", 2, "volume ROOM VOLUME", "sets a room's volume, 0 to 100", &Console::Volume},
    {"popups", 0, "popups", "lists the popups that stand on the screens", &Console::ShowPopups},
    {"variables", 0, "variables", "lists the variables and their values", &Console::ShowVariables},
    {"set", 3, "set DEVICE VARIABLE VALUE", "sets a variable, and with it the popups that show it",
     &Console::SetVariable},
    {"history", 0, "history [COUNT]", "lists what was played last", &Console::History},
    {"request", 1, "request NAME [PARAMETER=VALUE]...", "sends the agent a request and prints the reply",
     &Console::Request},
    {"command", 1, "command NAME [PARAMETER=VALUE]...", "sends the agent a command", &Console::Command},
    {"save", 0, "save", "makes sure that everything stands on the disk", &Console::Save},
    {"help", 0, "help", "prints this list", &Console::Help},
    {"quit", 0, "quit", "ends the controller", &Console::Quit},
};

Console::Console(Parts parts) : m_parts(std::move(parts)) {}

const Console::Entry* Console::Find(const std::string& verb) {
    const auto* entry = std::find_if(std::begin(kEntries), std::end(kEntries),
                                     [&](const Entry& candidate) { return verb == candidate.name; });
    return entry != std::end(kEntries) ? entry : nullptr;
}

void Console::Take(const ConsoleInput::Line& line, const ConsoleInput::Answered& answered) const {
    // Whatever goes wrong, the console must be answered, or it would never read another line.
    try {
        if (!line.error.empty())
            throw ConsoleError(line.error);
        const Entry* entry = Find(line.command.verb);
        if (entry == nullptr)
            throw ConsoleError("there is no command " + line.command.verb + "; `help` lists them");
        if (line.command.words.size() < entry->words)
            throw ConsoleError(std::string("it is written `") + entry->form + "`");
        (this->*entry->verb)(line.command, answered);
    } catch (const ConsoleError& error) {
        m_parts.print(std::string("error: ") + error.what());
        answered();
    }
}

Announcements::Done Console::PrintOutcome(const std::string& good,
                                          const ConsoleInput::Answered& answered) const {
    return [print = m_parts.print, good, answered](const Announcements::Outcome& outcome) {
        switch (outcome.answer.kind) {
        case AgentAnswer::Kind::Done:
            print(good);
            break;
        case AgentAnswer::Kind::Reply:
            print(outcome.answer.text);
            break;
        case AgentAnswer::Kind::NoReply:
            print("(no reply)");
            break;
        default:
            print("error: " + outcome.answer.text);
        }
        if (!outcome.notSaved.empty())
            print("warning: this is not on the disk yet: " + outcome.notSaved);
        answered();
    };
}

WriteDone Console::PrintWritten(const std::string& good, const ConsoleInput::Answered& answered) const {
    return [print = m_parts.print, good, answered](const std::string& error) {
        print(error.empty() ? good : good + "; warning: this is not on the disk yet: " + error);
        answered();
    };
}

void Console::Help(const ConsoleCommand& /*command*/, const ConsoleInput::Answered& answered) const {
    for (const Entry& entry : kEntries) {
        std::string line = entry.form;
        line.resize(std::max<std::size_t>(line.size() + 2, 36), ' ');
        m_parts.print(line + entry.meaning);
    }
    m_parts.print("A value with blanks stands in \"double quotes\"; @FILE is what the file holds.");
    answered();
}

void Console::Play(const ConsoleCommand& command, const ConsoleInput::Answered& answered) const {
    const std::uint32_t id = ParseConsoleNumber(command.words[0], "id of an announcement", 1, 0xffffffff);
    m_parts.announcements.Play(id, PrintOutcome("ok", answered));
}

void Console::Dismiss(const ConsoleCommand& /*command*/, const ConsoleInput::Answered& answered) const {
    m_parts.announcements.Dismiss(PrintOutcome("ok", answered));
}

void Console::Request(const ConsoleCommand& command, const ConsoleInput::Answered& answered) const {
    m_parts.announcements.Request(command.words[0], command.parameters, PrintOutcome("ok", answered));
}

void Console::Command(const ConsoleCommand& command, const ConsoleInput::Answered& answered) const {
    m_parts.announcements.Command(command.words[0], command.parameters, PrintOutcome("ok", answered));
}

void Console::List(const ConsoleCommand& /*command*/, const ConsoleInput::Answered& answered) const {
    const auto list = m_parts.announcements.All();
    if (list->empty())
        m_parts.print("There are no announcements.");
    for (const AnnouncementPointer& announcement : *list)
        m_parts.print(std::to_string(announcement->id) + "  " + announcement->name);
    answered();
}

void Console::Rooms(const ConsoleCommand& /*command*/, const ConsoleInput::Answered& answered) const {
    for (const House::Room& room : m_parts.house.rooms) {
        const std::string taken = m_parts.volumes.IsTaken(room.id) ? ", in an announcement" : "";
        m_parts.print(std::to_string(room.id) + "  " + room.name + ": volume " +
                      std::to_string(m_parts.volumes.Volume(room.id).value_or(0)) + taken);
    }
    answered();
}

void Console::Volume(const ConsoleCommand& command, const ConsoleInput::Answered& answered) const {
    const std::uint32_t room = ParseConsoleNumber(command.words[0], "id of a room", 1, 0xffffffff);
    const unsigned volume = ParseConsoleNumber(command.words[1], "volume", 0, 100);
    const auto capped = m_parts.volumes.Capped(room, volume);
    if (!capped)
        throw ConsoleError("there is no room " + command.words[0] + "; `rooms` lists them");
    m_parts.volumes.Set(room, *capped, PrintWritten("volume " + std::to_string(*capped), answered));
}

void Console::ShowPopups(const ConsoleCommand& /*command*/, const ConsoleInput::Answered& answered) const {
    const auto standing = m_parts.popups.Standing();
    for (const Popups::Popup& popup : standing)
        m_parts.print(std::to_string(popup.number) + "  on navigator " + std::to_string(popup.navigator) +
                      ": \"" + popup.message + "\", " +
                      std::to_string((popup.remaining.count() + 999) / 1000) + " s left");
    if (standing.empty())
        m_parts.print("There are no popups.");
    answered();
}

void Console::ShowVariables(const ConsoleCommand& /*command*/, const ConsoleInput::Answered& answered) const {
    const auto all = m_parts.variables.All();
    for (const Variables::Variable& variable : all)
        m_parts.print(std::to_string(variable.device) + " " + std::to_string(variable.variable) + "  " +
                      variable.name + ": \"" + variable.value + "\"");
    if (all.empty())
        m_parts.print("There are no variables.");
    answered();
}

void Console::SetVariable(const ConsoleCommand& command, const ConsoleInput::Answered& answered) const {
    const std::uint32_t device = ParseConsoleNumber(command.words[0], "id of a device", 1, 0xffffffff);
    const std::uint32_t variable = ParseConsoleNumber(command.words[1], "id of a variable", 1, 0xffffffff);
    const auto result =
        m_parts.variables.Set(device, variable, command.words[2], PrintWritten("ok", answered));
    if (result == Variables::SetResult::Unknown)
        throw ConsoleError("there is no such variable; `variables` lists them");
    if (result == Variables::SetResult::TooLong)
        throw ConsoleError("a value has at most " + std::to_string(Variables::kMaxValue) + " bytes");
}

void Console::History(const ConsoleCommand& command, const ConsoleInput::Answered& answered) const {
    const std::uint32_t count =
        command.words.empty() ? 10
                              : ParseConsoleNumber(command.words[0], "count", 1, StateDatabase::kHistory);
    m_parts.store.ReadHistory(count, [print = m_parts.print, answered](
                                         const std::vector<HistoryEntry>& entries, const std::string& error) {
        for (const HistoryEntry& entry : entries)
            print(entry.startedAt + "  " + std::to_string(entry.announcement) + "  " + entry.name + ": " +
                  entry.outcome);
        if (!error.empty())
            print("error: the history cannot be read: " + error);
        else if (entries.empty())
            print("Nothing has been played yet.");
        answered();
    });
}

void Console::Save(const ConsoleCommand& /*command*/, const ConsoleInput::Answered& answered) const {
    m_parts.announcements.Save([print = m_parts.print, answered](const std::string& error) {
        print(error.empty() ? "saved" : "error: not saved: " + error);
        answered();
    });
}

void Console::Quit(const ConsoleCommand& /*command*/, const ConsoleInput::Answered& answered) const {
    m_parts.quit();
    answered();
}

} // namespace controller
