#include "announce/definitions/Candidates.h"

#include "announce/output/TextWidth.h"

#include <algorithm>

namespace candidates {
namespace {

/// The option with this name, long or short; null when there is none.
const OptionDefinition* FindOption(const std::vector<OptionDefinition>& options, const std::string& name) {
    const auto place = std::find_if(options.begin(), options.end(), [&](const OptionDefinition& option) {
        return option.IsOption() && ("," + option.names + ",").find("," + name + ",") != std::string::npos;
    });
    return place != options.end() ? &*place : nullptr;
}

/// Reads the words before the last one.
struct Walk {
    std::string command;
    std::size_t arguments = 0;
    const OptionDefinition* waiting = nullptr; ///< the option whose value comes next
    bool isBehindDashes = false;
    std::vector<OptionDefinition> options = CommonOptions();

    void Take(const std::string& word) {
        if (waiting != nullptr) {
            waiting = nullptr;
            return;
        }
        if (!isBehindDashes && word.size() > 1 && word.front() == '-') {
            isBehindDashes = word == "--";
            const OptionDefinition* const option = FindOption(options, word);
            waiting = option != nullptr && !option->value.empty() ? option : nullptr;
            return;
        }
        const std::string longer = command.empty() ? word : command + " " + word;
        const bool isCommand =
            arguments == 0 && std::any_of(Commands().begin(), Commands().end(), [&](const auto& one) {
                return !one.isHidden && (one.name == longer || one.name.rfind(longer + " ", 0) == 0);
            });
        if (!isCommand) {
            ++arguments;
            return;
        }
        command = longer;
        options = CommonOptions();
        if (const CommandDefinition* const definition = FindCommand(command)) {
            const auto own = OptionsOf(*definition);
            options.insert(options.begin(), own.begin(), own.end());
        }
    }
};

std::vector<Candidate> CommandNames(const std::string& command) {
    const std::string start = command.empty() ? "" : command + " ";
    std::vector<Candidate> names;
    for (const CommandDefinition& one : Commands()) {
        const bool isBelow = !one.isHidden && one.name.rfind(start, 0) == 0 && one.name != command;
        if (isBelow && one.name.find(' ', start.size()) == std::string::npos)
            names.push_back({one.name.substr(start.size()), one.summary});
    }
    return names;
}

std::vector<Candidate> OptionNames(const std::vector<OptionDefinition>& options) {
    std::vector<Candidate> names;
    for (const OptionDefinition& option : options) {
        if (option.IsOption())
            names.push_back({"--" + option.Key(), option.text});
    }
    return names;
}

/// What the next argument without dashes is; null when there is to be none.
const OptionDefinition* NextArgument(const std::vector<OptionDefinition>& options, std::size_t count) {
    const OptionDefinition* last = nullptr;
    for (const OptionDefinition& option : options) {
        if (option.IsOption())
            continue;
        last = &option;
        if (count-- == 0)
            return last;
    }
    return last != nullptr && last->isRepeated ? last : nullptr;
}

std::vector<Candidate> NamesOf(const Json& list) {
    std::vector<Candidate> names;
    for (const Json& item : list) {
        const std::string name = item.at("name");
        const std::string id = item.contains("device") ? VariableId(item) : item.at("id").dump();
        const auto count = std::count_if(list.begin(), list.end(),
                                         [&](const Json& other) { return other.at("name") == name; });
        // A line a candidate: a name with a line break in it is offered by its id.
        const bool isUsable = count == 1 && text::Visible(name) == name && !name.empty();
        names.push_back(isUsable ? Candidate{name, id} : Candidate{id, text::Visible(name)});
    }
    return names;
}

std::vector<Candidate> FilesOf(const Json& list, const char* kind) {
    std::vector<Candidate> names;
    for (const Json& file : list) {
        if (kind == nullptr || file.at("kind") == kind)
            names.push_back({file.at("name"), file.at("kind")});
    }
    return names;
}

} // namespace

Place FindPlace(const std::vector<std::string>& words) {
    Walk walk;
    std::for_each(words.begin(), words.end() - 1, [&walk](const std::string& word) { walk.Take(word); });
    Place place;
    place.begun = words.back();
    if (walk.waiting != nullptr) {
        place.completes = walk.waiting->completes;
        return place;
    }
    const std::size_t equals = place.begun.find('=');
    if (!walk.isBehindDashes && place.begun.rfind("--", 0) == 0 && equals != std::string::npos) {
        const OptionDefinition* const option = FindOption(walk.options, place.begun.substr(0, equals));
        place.prefix = place.begun.substr(0, equals + 1);
        place.begun.erase(0, equals + 1);
        place.completes = option != nullptr ? option->completes : Completes::Nothing;
        return place;
    }
    if (!walk.isBehindDashes && !place.begun.empty() && place.begun.front() == '-') {
        place.fixed = OptionNames(walk.options);
        return place;
    }
    if (walk.arguments == 0)
        place.fixed = CommandNames(walk.command);
    const OptionDefinition* const argument = NextArgument(walk.options, walk.arguments);
    place.completes = argument != nullptr ? argument->completes : Completes::Nothing;
    return place;
}

std::vector<Candidate> NamesFor(Completes completes, House& house) {
    switch (completes) {
    case Completes::Announcement:
        return NamesOf(house.Announcements());
    case Completes::Room:
        return NamesOf(house.Rooms());
    case Completes::Screen:
        return NamesOf(house.Screens());
    case Completes::Variable:
        return NamesOf(house.Variables());
    case Completes::Sound:
        return FilesOf(house.Media(), "sound");
    case Completes::Image:
        return FilesOf(house.Media(), "image");
    case Completes::Media:
        return FilesOf(house.Media(), nullptr);
    case Completes::Shell:
        return {{"bash", ""}, {"zsh", ""}, {"fish", ""}};
    case Completes::File:
    case Completes::Nothing:
        break;
    }
    return {};
}

std::vector<Candidate> Fitting(const std::vector<Candidate>& all, const Place& place) {
    const std::string begun = names::Lower(place.begun);
    std::vector<Candidate> fitting;
    for (const Candidate& one : all) {
        if (names::Lower(one.text).rfind(begun, 0) == 0)
            fitting.push_back({place.prefix + one.text, one.description});
    }
    return fitting;
}

} // namespace candidates
