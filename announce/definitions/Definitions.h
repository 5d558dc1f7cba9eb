#pragma once

#include "announce/basics/ExitStatus.h"

#include <functional>
#include <string>
#include <vector>

struct Session;

/// What the shell offers in the place of a value.
enum class Completes {
    Nothing,
    Announcement,
    Room,
    Screen,
    Variable,
    Sound,
    Image,
    Media,
    Voice,
    EventType,
    File,
    Shell
};

/// An option ("--room", "-h,--help"), or an argument without dashes ("announcement").
struct OptionDefinition {
    std::string names;
    std::string value; ///< what stands for it in help texts; empty for an option that stands alone
    std::string text;
    Completes completes = Completes::Nothing;
    bool isRequired = false;
    bool isRepeated = false;

    [[nodiscard]] bool IsOption() const { return names.front() == '-'; }
    /// The name without dashes, by which a handler asks for it.
    [[nodiscard]] std::string Key() const;
};
using Options = std::vector<OptionDefinition>;

struct ExampleDefinition {
    std::string text; ///< what it does
    std::string line; ///< what to type
};

/// One command. Parsing, help, manual, completion and dispatch come from this and nothing else.
struct CommandDefinition {
    std::string name;    ///< "media add": a command of a group
    std::string summary; ///< a few words, without a full stop
    std::string text;    ///< paragraphs, with an empty line between them
    Options options;
    std::vector<ExampleDefinition> examples;
    std::function<ExitStatus(Session&)> run;
    bool canBeWatched = false; ///< has --watch: shown again whenever something changes
    bool isHidden = false;     ///< for completion scripts, not for people

    /// `announce add [OPTIONS] …`: how it is written.
    [[nodiscard]] std::string Usage() const;
    /// All that it takes beside the common options.
    [[nodiscard]] Options OwnOptions() const;
};

/// The options that every command has.
[[nodiscard]] const Options& CommonOptions();

/// Every command, in the order in which people read about them.
class CommandTable {
public:
    explicit CommandTable(std::vector<CommandDefinition> all) : m_all(std::move(all)) {}

    [[nodiscard]] const std::vector<CommandDefinition>& All() const noexcept { return m_all; }
    /// Those that people see: whose names begin with `start`.
    [[nodiscard]] std::vector<CommandDefinition> ForPeople(const std::string& start = "") const;
    /// The same, of those that stand right below a command: with the last word of the name alone.
    [[nodiscard]] std::vector<CommandDefinition> Below(const std::string& command) const;
    /// The command with this name; null when there is none.
    [[nodiscard]] const CommandDefinition* Find(const std::string& name) const;
    /// All that may stand behind this command, or behind the program's name: its own options first.
    [[nodiscard]] Options OptionsBehind(const std::string& command) const;

private:
    std::vector<CommandDefinition> m_all;
};
