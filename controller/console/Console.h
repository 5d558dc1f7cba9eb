#pragma once

#include "controller/announcements/Announcements.h"
#include "controller/console/ConsoleInput.h"

#include <functional>
#include <string>

namespace controller {

/// Does what the lines of the console ask for and prints the replies. Driver thread only.
class Console {
public:
    struct Parts {
        Announcements& announcements;
        std::function<void(const std::string& line)> print;
        std::function<void()> quit;
        std::function<bool()> stop = {}; ///< stops what plays; false when nothing does
        std::function<void(std::uint32_t announcement, const Announcements::Done& done)> play = {};
    };

    explicit Console(Parts parts);

    /// Calls `answered` once, when the reply is printed.
    void Take(const ConsoleInput::Line& line, const ConsoleInput::Answered& answered) const;

private:
    using Verb = void (Console::*)(const ConsoleCommand&, const ConsoleInput::Answered&) const;
    struct Entry {
        const char* name;
        std::size_t words; ///< as many words it takes, at least
        const char* form;
        const char* meaning;
        Verb verb;
    };

    void Help(const ConsoleCommand& command, const ConsoleInput::Answered& answered) const;
    void Play(const ConsoleCommand& command, const ConsoleInput::Answered& answered) const;
    void Dismiss(const ConsoleCommand& command, const ConsoleInput::Answered& answered) const;
    void Stop(const ConsoleCommand& command, const ConsoleInput::Answered& answered) const;
    void Request(const ConsoleCommand& command, const ConsoleInput::Answered& answered) const;
    void Command(const ConsoleCommand& command, const ConsoleInput::Answered& answered) const;
    void Save(const ConsoleCommand& command, const ConsoleInput::Answered& answered) const;
    void Quit(const ConsoleCommand& command, const ConsoleInput::Answered& answered) const;

    /// The announcement with this id, else the one with this name, in small or capital letters. Throws
    /// `ConsoleError`.
    [[nodiscard]] std::uint32_t FindAnnouncement(const std::string& text) const;
    [[nodiscard]] Announcements::Done PrintOutcome(const std::string& good,
                                                   const ConsoleInput::Answered& answered) const;
    [[nodiscard]] static const Entry* Find(const std::string& verb);

    static const Entry kEntries[];

    Parts m_parts;
    DriverOnly m_driverOnly;
};

} // namespace controller
