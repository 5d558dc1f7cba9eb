#include "controller/console/Console.h"

#include "controller/driver/Text.h"
#include "unicode/Unicode.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <utility>

namespace controller {

namespace {

using List = Announcements::List;

constexpr std::size_t kMostListed = 10;

/// Those that are called so, in small or capital letters; the one that is written exactly so goes before.
List Called(const List& all, const std::string& name) {
    const std::string meant = unicode::Folded(name);
    List found;
    List exact;
    for (const AnnouncementPointer& one : all) {
        if (unicode::Folded(one->name) == meant)
            found.push_back(one);
        if (one->name == name)
            exact.push_back(one);
    }
    return exact.size() == 1 ? exact : found;
}

/// `1 (Doorbell), 2 (Dinner)`
std::string Listed(const List& all) {
    std::string list;
    for (std::size_t index = 0; index < std::min(all.size(), kMostListed); ++index)
        list += (list.empty() ? "" : ", ") + std::to_string(all[index]->id) + " (" + all[index]->name + ")";
    return list.empty() ? "there is none yet" : list + (all.size() > kMostListed ? ", …" : "");
}

} // namespace

const Console::Entry Console::kEntries[] = {
    {"play", 1, "play ID|NAME", "plays an announcement, or queues it behind the one that plays",
     &Console::Play},
    {"dismiss", 0, "dismiss", "takes the popups of the announcement that plays away", &Console::Dismiss},
    {"stop", 0, "stop", "stops the announcement that plays: its sound fades out, and its popups go",
     &Console::Stop},
    {"request", 1, "request NAME [PARAMETER=VALUE]...", "sends the agent a request and prints the reply",
     &Console::Request},
    {"command", 1, "command NAME [PARAMETER=VALUE]...", "sends the agent a command", &Console::Command},
    {"save", 0, "save", "makes sure that everything stands on the disk", &Console::Save},
    {"help", 0, "help", "prints this list", &Console::Help},
    {"quit", 0, "quit", "ends the controller", &Console::Quit},
};

Console::Console(Parts parts) : m_parts(std::move(parts)) {
    // A reply may have several lines, and holds texts from outside.
    m_parts.print = [print = std::move(m_parts.print)](const std::string& text) {
        print(PlainLines(text));
    };
}

const Console::Entry* Console::Find(const std::string& verb) {
    const auto* entry = std::find_if(std::begin(kEntries), std::end(kEntries),
                                     [&](const Entry& candidate) { return verb == candidate.name; });
    return entry != std::end(kEntries) ? entry : nullptr;
}

void Console::Take(const ConsoleInput::Line& line, const ConsoleInput::Answered& answered) const {
    m_driverOnly.Assert();
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
    std::string text;
    for (const std::string& word : command.words)
        text += (text.empty() ? "" : " ") + word;
    m_parts.play(FindAnnouncement(text), PrintOutcome("ok", answered));
}

std::uint32_t Console::FindAnnouncement(const std::string& text) const {
    const auto id = ReadNumber<std::uint32_t>(text, 1, std::numeric_limits<std::uint32_t>::max());
    if (id && m_parts.announcements.Find(*id))
        return *id;
    const auto all = m_parts.announcements.All();
    auto found = Called(*all, text);
    if (found.size() == 1)
        return found.front()->id;
    const bool isUnknown = found.empty();
    throw ConsoleError((isUnknown ? "there is no announcement \"" : "several announcements are called \"") +
                       text + "\"; " +
                       (isUnknown ? "an id or a name is right: " : "one of these ids is right: ") +
                       Listed(isUnknown ? *all : found));
}

void Console::Dismiss(const ConsoleCommand& /*command*/, const ConsoleInput::Answered& answered) const {
    m_parts.announcements.Dismiss(PrintOutcome("ok", answered));
}

void Console::Stop(const ConsoleCommand& /*command*/, const ConsoleInput::Answered& answered) const {
    m_parts.print(m_parts.stop() ? "ok" : "nothing plays");
    answered();
}

void Console::Request(const ConsoleCommand& command, const ConsoleInput::Answered& answered) const {
    m_parts.announcements.Request(command.words[0], command.parameters, PrintOutcome("ok", answered));
}

void Console::Command(const ConsoleCommand& command, const ConsoleInput::Answered& answered) const {
    m_parts.announcements.Command(command.words[0], command.parameters, PrintOutcome("ok", answered));
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
