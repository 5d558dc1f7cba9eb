#include "announce/definitions/CommandLine.h"

#include "announce/Failure.h"
#include "announce/house/Names.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <deque>
#include <memory>

namespace {

/// The values of one option while the parser fills them in.
struct Slot {
    std::string key;
    CLI::Option* option = nullptr;
    std::vector<std::string> values;
    bool isSet = false;
};

/// The parser that the definitions describe.
class Parser {
public:
    Parser() {
        m_app.set_help_flag();
        m_app.fallthrough();
        for (const OptionDefinition& option : CommonOptions())
            Declare(m_app, option);
        Declare(m_app, {"--version", "", ""});
        for (const CommandDefinition& command : Commands())
            Declare(command);
    }

    [[nodiscard]] CommandLine Read(std::vector<std::string> words) {
        std::reverse(words.begin(), words.end());
        m_app.parse(std::move(words));
        CommandLine line;
        line.group = Chosen();
        line.command = FindCommand(line.group);
        line.arguments = Arguments(Given());
        line.wantsHelp = line.arguments.Has("help");
        line.wantsVersion = line.arguments.Has("version");
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
        std::string rest = command.name;
        for (bool isLast = false; !isLast;) {
            const auto space = rest.find(' ');
            isLast = space == std::string::npos;
            app = SubcommandOf(*app, rest.substr(0, space));
            rest = isLast ? "" : rest.substr(space + 1);
        }
        for (const OptionDefinition& option : OptionsOf(command))
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

    void Declare(CLI::App& app, const OptionDefinition& definition) {
        Slot& slot = m_slots.emplace_back();
        slot.key = definition.Key();
        if (definition.IsOption() && definition.value.empty()) {
            slot.option = app.add_flag(definition.names, slot.isSet);
            return;
        }
        slot.option = app.add_option(definition.names, slot.values);
        slot.option->option_text(definition.value);
        if (definition.isRepeated)
            slot.option->expected(1, -1);
        else
            slot.option->expected(1)->multi_option_policy(CLI::MultiOptionPolicy::Throw);
        // A value is what is typed: no list in brackets, and behind an option no second one.
        slot.option->allow_extra_args(definition.isRepeated && !definition.IsOption());
    }

    [[nodiscard]] Arguments::Values Given() const {
        Arguments::Values values;
        for (const Slot& slot : m_slots) {
            if (slot.option->count() > 0)
                values[slot.key] = slot.option->results();
        }
        return values;
    }

    CLI::App m_app;
    std::deque<Slot> m_slots; ///< stay where they are
};

/// The names of commands that follow those of `group`.
std::vector<std::string> NamesBehind(const std::string& group) {
    std::vector<std::string> names;
    for (const CommandDefinition& command : Commands()) {
        const std::string start = group.empty() ? "" : group + " ";
        if (command.isHidden || command.name.rfind(start, 0) != 0)
            continue;
        const std::string rest = command.name.substr(start.size());
        const std::string name = rest.substr(0, rest.find(' '));
        if (!name.empty() && std::find(names.begin(), names.end(), name) == names.end())
            names.push_back(name);
    }
    return names;
}

std::string HelpHint(const std::string& group) {
    return "what \"announce " + group + (group.empty() ? "" : " ") + "--help\" shows";
}

std::vector<std::string> OptionNames(const CommandDefinition* command) {
    std::vector<OptionDefinition> options = CommonOptions();
    if (command != nullptr) {
        const auto own = OptionsOf(*command);
        options.insert(options.end(), own.begin(), own.end());
    }
    std::vector<std::string> names;
    for (const OptionDefinition& option : options) {
        if (option.IsOption())
            names.push_back("--" + option.Key());
    }
    return names;
}

/// A word that nobody expected: a mistyped command, a mistyped option, or one too many.
Failure Unexpected(const std::string& word, const std::string& group) {
    const CommandDefinition* const command = FindCommand(group);
    const bool isOption = word.size() > 1 && word.front() == '-';
    const auto choices = isOption ? OptionNames(command) : NamesBehind(group);
    const std::string near = names::Choice(names::Nearest(choices, word));
    const std::string what = isOption          ? "there is no option " + word
                             : choices.empty() ? "\"" + word + "\" is one word too many"
                                               : "there is no command \"" + word + "\"";
    const std::string where = group.empty() ? "" : " of \"announce " + group + "\"";
    return {ExitStatus::Usage, what + (choices.empty() ? "" : where),
            near.empty() ? HelpHint(group) : near + "?"};
}

void RequireArguments(const CommandLine& line) {
    if (line.wantsHelp || line.wantsVersion || line.command == nullptr)
        return;
    for (const OptionDefinition& option : line.command->options) {
        if (option.isRequired && !line.arguments.Has(option.Key()))
            throw Failure(ExitStatus::Usage, option.value + " is missing", UsageOf(*line.command));
    }
}

} // namespace

CommandLine ReadCommandLine(const std::vector<std::string>& words) {
    const CommandDefinition* const first = words.empty() ? nullptr : FindCommand(words.front());
    // What stands behind it is another command line, which may be half typed.
    if (first != nullptr && first->isHidden)
        return {first, "", Arguments({{"word", {words.begin() + 1, words.end()}}}), false, false};
    Parser parser;
    try {
        CommandLine line = parser.Read(words);
        RequireArguments(line);
        return line;
    } catch (const CLI::ExtrasError&) {
        throw Unexpected(parser.FirstUnexpected(), parser.Chosen());
    } catch (const CLI::ParseError& error) {
        throw Failure(ExitStatus::Usage, error.what(), HelpHint(parser.Chosen()));
    }
}
