#include "announce/definitions/Definitions.h"

#include <algorithm>

std::string OptionDefinition::Key() const {
    const auto place = names.find("--");
    return place != std::string::npos ? names.substr(place + 2) : names;
}

const std::vector<OptionDefinition>& CommonOptions() {
    static const std::vector<OptionDefinition> kOptions{
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

const OptionDefinition& WatchOption() {
    static const OptionDefinition kWatch{"-w,--watch", "",
                                         "Show it again whenever something changes, until Ctrl-C"};
    return kWatch;
}

std::vector<OptionDefinition> OptionsOf(const CommandDefinition& command) {
    auto options = command.options;
    if (command.canBeWatched)
        options.push_back(WatchOption());
    return options;
}

const CommandDefinition* FindCommand(const std::string& name) {
    const auto& all = Commands();
    const auto place = std::find_if(all.begin(), all.end(),
                                    [&](const CommandDefinition& command) { return command.name == name; });
    return place != all.end() ? &*place : nullptr;
}

std::string UsageOf(const CommandDefinition& command) {
    std::string usage = "announce " + command.name;
    for (const OptionDefinition& option : command.options) {
        if (option.IsOption())
            continue;
        const std::string value = option.value + (option.isRepeated ? "..." : "");
        usage += option.isRequired ? " " + value : " [" + value + "]";
    }
    return usage + " [OPTIONS]";
}
