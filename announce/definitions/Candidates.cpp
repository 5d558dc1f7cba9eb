#include "announce/definitions/Candidates.h"

#include "unicode/Unicode.h"

#include <algorithm>
#include <utility>

namespace candidates {
namespace {

/// Reads the words before the last one.
struct Walk {
    explicit Walk(const CommandTable& table) : commands(table) {}

    void Take(const std::string& word) {
        if (waiting != nullptr) {
            const std::string key = std::exchange(waiting, nullptr)->Key();
            if (word != "-") // standard input is where the user is typing
                given[key].push_back(word);
            return;
        }
        if (!isBehindDashes && word.size() > 1 && word.front() == '-') {
            isBehindDashes = word == "--";
            const OptionDefinition* const option = FindOption(word.substr(0, word.find('=')));
            if (option != nullptr && word.find('=') != std::string::npos)
                given[option->Key()].push_back(word.substr(word.find('=') + 1));
            else if (option != nullptr && !option->value.empty())
                waiting = option;
            return;
        }
        const auto names = commands.Below(command);
        const bool isCommand =
            arguments == 0 &&
            std::any_of(names.begin(), names.end(), [&](const auto& one) { return one.name == word; });
        if (!isCommand) {
            ++arguments;
            return;
        }
        command += (command.empty() ? "" : " ") + word;
        options = commands.OptionsBehind(command);
    }

    /// The option with this name, long or short; null when there is none.
    [[nodiscard]] const OptionDefinition* FindOption(const std::string& name) const {
        const auto place = std::find_if(options.begin(), options.end(), [&](const OptionDefinition& option) {
            return option.IsOption() &&
                   ("," + option.names + ",").find("," + name + ",") != std::string::npos;
        });
        return place != options.end() ? &*place : nullptr;
    }

    /// What the next argument without dashes is; null when there is to be none.
    [[nodiscard]] const OptionDefinition* NextArgument() const {
        std::size_t left = arguments;
        const OptionDefinition* last = nullptr;
        for (const OptionDefinition& option : options) {
            if (option.IsOption())
                continue;
            last = &option;
            if (left-- == 0)
                return last;
        }
        return last != nullptr && last->isRepeated ? last : nullptr;
    }

    const CommandTable& commands;
    std::string command;
    std::size_t arguments = 0;
    const OptionDefinition* waiting = nullptr; ///< the option whose value comes next
    bool isBehindDashes = false;
    Options options = CommonOptions();
    Arguments::Values given;
};

Completes KindOf(const OptionDefinition* option) {
    return option != nullptr ? option->completes : Completes::Nothing;
}

} // namespace

Place FindPlace(const CommandTable& commands, const std::vector<std::string>& words) {
    Walk walk(commands);
    std::for_each(words.begin(), words.end() - 1, [&walk](const std::string& word) { walk.Take(word); });
    Place place;
    place.begun = words.back();
    place.given = Arguments(walk.given);
    const std::size_t equals = place.begun.find('=');
    if (walk.waiting != nullptr) {
        place.completes = walk.waiting->completes;
    } else if (!walk.isBehindDashes && place.begun.rfind("--", 0) == 0 && equals != std::string::npos) {
        place.completes = KindOf(walk.FindOption(place.begun.substr(0, equals)));
        place.prefix = place.begun.substr(0, equals + 1);
        place.begun.erase(0, equals + 1);
    } else if (!walk.isBehindDashes && !place.begun.empty() && place.begun.front() == '-') {
        for (const OptionDefinition& option : walk.options) {
            if (option.IsOption())
                place.fixed.push_back({"--" + option.Key(), option.text});
        }
    } else {
        for (const CommandDefinition& one : commands.Below(walk.command)) {
            if (walk.arguments == 0)
                place.fixed.push_back({one.name, one.summary});
        }
        place.completes = KindOf(walk.NextArgument());
    }
    return place;
}

std::vector<Candidate> Fitting(const std::vector<Candidate>& all, const Place& place) {
    const std::string begun = unicode::Folded(place.begun);
    std::vector<Candidate> fitting;
    for (const Candidate& one : all) {
        if (unicode::Folded(one.text).rfind(begun, 0) == 0)
            fitting.push_back({place.prefix + one.text, one.description});
    }
    return fitting;
}

} // namespace candidates
