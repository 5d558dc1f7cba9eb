#include "announce/definitions/Definitions.h"

#include <algorithm>

std::string OptionDefinition::Key() const {
    const auto place = names.find("--");
    return place != std::string::npos ? names.substr(place + 2) : names;
}

const Options& CommonOptions() {
    static const Options kOptions{
        {"-a,--address", "ADDRESS", "Where the controller answers, such as http://127.0.0.1:8765"},
        {"--token-file", "FILE", "A file whose first line is the token; - for standard input",
         Completes::File},
        {"--token", "TOKEN", "The token; other users of the machine can see it, a file is better"},
        {"--ca", "FILE",
         "A PEM file with the authority of the controller's certificate, in place of the system's",
         Completes::File},
        {"-j,--json", "", "Print JSON, as the API has it, for programs"},
        {"-h,--help", "", "Print this help"},
    };
    return kOptions;
}

std::string CommandDefinition::Usage() const {
    std::string usage = "announce " + name;
    for (const OptionDefinition& option : options) {
        if (option.IsOption())
            continue;
        const std::string value = option.value + (option.isRepeated ? "..." : "");
        usage += option.isRequired ? " " + value : " [" + value + "]";
    }
    return usage + " [OPTIONS]";
}

Options CommandDefinition::OwnOptions() const {
    Options own = options;
    if (canBeWatched)
        own.push_back({"-w,--watch", "", "Show it again whenever something changes, until Ctrl-C"});
    return own;
}

std::vector<CommandDefinition> CommandTable::ForPeople(const std::string& start) const {
    std::vector<CommandDefinition> some;
    std::copy_if(m_all.begin(), m_all.end(), std::back_inserter(some),
                 [&](const auto& command) { return !command.isHidden && command.name.rfind(start, 0) == 0; });
    return some;
}

std::vector<CommandDefinition> CommandTable::Below(const std::string& command) const {
    const std::string start = command.empty() ? "" : command + " ";
    std::vector<CommandDefinition> below;
    for (CommandDefinition& one : ForPeople(start)) {
        one.name.erase(0, start.size());
        if (one.name.find(' ') == std::string::npos)
            below.push_back(std::move(one));
    }
    return below;
}

const CommandDefinition* CommandTable::Find(const std::string& name) const {
    const auto place =
        std::find_if(m_all.begin(), m_all.end(), [&](const auto& command) { return command.name == name; });
    return place != m_all.end() ? &*place : nullptr;
}

Options CommandTable::OptionsBehind(const std::string& command) const {
    const CommandDefinition* const definition = Find(command);
    Options all = definition != nullptr ? definition->OwnOptions() : Options();
    all.insert(all.end(), CommonOptions().begin(), CommonOptions().end());
    return all;
}
