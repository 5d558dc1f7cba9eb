#pragma once

#include "announce/ExitStatus.h"

#include <functional>
#include <string>
#include <vector>

struct Session;

/// What the shell offers in the place of a value.
enum class Completes { Nothing, Announcement, Room, Screen, Variable, Sound, Image, Media, File, Shell };

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

struct ExampleDefinition {
    std::string text; ///< what it does
    std::string line; ///< what to type
};

/// One command. Parsing, help, manual, completion and dispatch come from this and nothing else.
struct CommandDefinition {
    std::string name;    ///< "media add": a command of a group
    std::string summary; ///< a few words, without a full stop
    std::string text;    ///< paragraphs, with an empty line between them
    std::vector<OptionDefinition> options;
    std::vector<ExampleDefinition> examples;
    std::function<ExitStatus(Session&)> run;
    bool canBeWatched = false; ///< has --watch: shown again whenever something changes
    bool isHidden = false;     ///< for completion scripts, not for people
};

/// Every command, in the order in which people read about them.
[[nodiscard]] const std::vector<CommandDefinition>& Commands();

/// The options that every command has.
[[nodiscard]] const std::vector<OptionDefinition>& CommonOptions();

/// The option of commands that can be watched.
[[nodiscard]] const OptionDefinition& WatchOption();

/// All that a command takes beside the common options.
[[nodiscard]] std::vector<OptionDefinition> OptionsOf(const CommandDefinition& command);

/// The command with this name; null when there is none.
[[nodiscard]] const CommandDefinition* FindCommand(const std::string& name);

/// `announce add [OPTIONS] …`: how a command is written.
[[nodiscard]] std::string UsageOf(const CommandDefinition& command);
