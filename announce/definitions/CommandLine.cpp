#include "announce/definitions/CommandLine.h"

#include "announce/basics/Failure.h"
#include "announce/basics/Words.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <sstream>

namespace {

/// The parser that the definitions describe.
class Parser {
public:
    explicit Parser(const CommandTable& commands) : m_commands(commands) {
        m_app.set_help_flag();
        m_app.fallthrough();
        for (const OptionDefinition& option : CommonOptions())
            Declare(m_app, option);
        Declare(m_app, {"--version", "", ""});
        for (const CommandDefinition& command : commands.All())
            Declare(command);
    }

    [[nodiscard]] CommandLine Read(std::vector<std::string> words) {
        std::reverse(words.begin(), words.end());
        m_app.parse(std::move(words));
        CommandLine line;
        line.group = Chosen();
        line.command = m_commands.Find(line.group);
        Arguments::Values values;
        Collect(m_app, values);
        line.arguments = Arguments(std::move(values));
        return line;
    }

    /// What nobody has taken; an option before a word, which may be its value.
    [[nodiscard]] std::string FirstUnexpected() const {
        const auto left = m_app.remaining(true);
        const auto option = std::find_if(left.begin(), left.end(), [](const std::string& word) {
            return !word.empty() && word.front() == '-';
        });
        return option != left.end() ? *option : left.empty() ? "" : left.front();
    }

    /// The name of the command as far as it was understood.
    [[nodiscard]] std::string Chosen() const {
        std::string name;
        const CLI::App* app = &m_app;
        while (!app->get_subcommands().empty()) {
            app = app->get_subcommands().front();
            name += (name.empty() ? "" : " ") + app->get_name();
        }
        return name;
    }

private:
    void Declare(const CommandDefinition& command) {
        CLI::App* app = &m_app;
        std::istringstream names(command.name);
        for (std::string name; names >> name;)
            app = SubcommandOf(*app, name);
        for (const OptionDefinition& option : command.OwnOptions())
            Declare(*app, option);
    }

    static CLI::App* SubcommandOf(CLI::App& parent, const std::string& name) {
        for (CLI::App* const present : parent.get_subcommands({})) {
            if (present->get_name() == name)
                return present;
        }
        CLI::App* const made = parent.add_subcommand(name);
        made->set_help_flag();
        made->fallthrough();
        parent.require_subcommand(0, 1);
        return made;
    }

    static void Declare(CLI::App& app, const OptionDefinition& definition) {
        if (definition.IsOption() && definition.value.empty()) {
            app.add_flag(definition.names);
            return;
        }
        CLI::Option* const option = app.add_option(definition.names);
        option->option_text(definition.value);
        if (definition.isRepeated)
            option->expected(1, -1);
        else
            option->expected(1)->multi_option_policy(CLI::MultiOptionPolicy::Throw);
        // A value is what is typed: no list in brackets, and behind an option no second one.
        option->allow_extra_args(definition.isRepeated && !definition.IsOption());
    }

    /// What the program, the group and the command were given.
    static void Collect(const CLI::App& app, Arguments::Values& values) {
        for (const CLI::Option* option : app.get_options()) {
            const auto& names = option->get_lnames();
            if (option->count() > 0)
                values[names.empty() ? option->get_name() : names.front()] = option->results();
        }
        for (const CLI::App* chosen : app.get_subcommands())
            Collect(*chosen, values);
    }

    const CommandTable& m_commands;
    CLI::App m_app;
};

std::string HelpHint(const std::string& group) {
    return "what \"announce " + group + (group.empty() ? "" : " ") + "--help\" shows";
}

/// A word that nobody expected: a mistyped command, a mistyped option, or one too many.
Failure Unexpected(const CommandTable& commands, const std::string& word, const std::string& group) {
    std::vector<std::string> choices;
    const bool isOption = word.size() > 1 && word.front() == '-';
    if (isOption) {
        for (const OptionDefinition& option : commands.OptionsBehind(group)) {
            if (option.IsOption())
                choices.push_back("--" + option.Key());
        }
    } else {
        for (const CommandDefinition& command : commands.Below(group))
            choices.push_back(command.name);
    }
    const std::string near = words::Choice(words::Nearest(choices, word));
    const std::string what = isOption          ? "there is no option " + word
                             : choices.empty() ? "\"" + word + "\" is one word too many"
                                               : "there is no command \"" + word + "\"";
    const std::string where = group.empty() ? "" : " of \"announce " + group + "\"";
    return {ExitStatus::Usage, what + (choices.empty() ? "" : where),
            near.empty() ? HelpHint(group) : near + "?"};
}

void RequireArguments(const CommandLine& line) {
    if (line.WantsHelp() || line.WantsVersion() || line.command == nullptr)
        return;
    for (const OptionDefinition& option : line.command->options) {
        if (option.isRequired && !line.arguments.Has(option.Key()))
            throw Failure(ExitStatus::Usage, option.value + " is missing", line.command->Usage());
    }
}

} // namespace

CommandLine ReadCommandLine(const CommandTable& commands, const std::vector<std::string>& words) {
    const CommandDefinition* const first = words.empty() ? nullptr : commands.Find(words.front());
    // What stands behind it is another command line, which may be half typed.
    if (first != nullptr && first->isHidden)
        return {first, "", Arguments({{"word", {words.begin() + 1, words.end()}}})};
    Parser parser(commands);
    try {
        CommandLine line = parser.Read(words);
        RequireArguments(line);
        return line;
    } catch (const CLI::ExtrasError&) {
        throw Unexpected(commands, parser.FirstUnexpected(), parser.Chosen());
    } catch (const CLI::ParseError& error) {
        throw Failure(ExitStatus::Usage, error.what(), HelpHint(parser.Chosen()));
    }
}
