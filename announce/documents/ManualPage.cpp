#include "announce/documents/Manual.h"
#include "announce/documents/Topics.h"

#include <algorithm>

namespace manual {
namespace {

/// The text as roff takes it: backslashes and dashes as they are, and no line that begins like a request.
std::string Escaped(const std::string& text) {
    std::string escaped;
    bool isStart = true;
    for (const char letter : text) {
        if (isStart && (letter == '.' || letter == '\''))
            escaped += "\\&";
        if (letter == '\\')
            escaped += "\\e";
        else if (letter == '-')
            escaped += "\\-";
        else
            escaped += letter;
        isStart = letter == '\n';
    }
    return escaped;
}

/// Sentences begin on lines of their own, as manual pages want it.
std::string Prose(const std::string& text) {
    std::string prose;
    for (std::size_t place = 0; place < text.size(); ++place) {
        if (text.compare(place, 2, "\n\n") == 0) {
            prose += "\n.Pp\n";
            ++place;
        } else if (text[place] == '`') {
            const std::size_t end = text.find('`', place + 1);
            prose += "\\fB" + Escaped(text.substr(place + 1, end - place - 1)) + "\\fR";
            place = end;
        } else if (text[place] == ' ' && !prose.empty() && prose.back() == '.' &&
                   text.compare(place - 3, 3, "...") != 0) {
            prose += "\n";
        } else {
            prose += Escaped(std::string(1, text[place]));
        }
    }
    return prose + "\n";
}

/// An argument of a macro: in quotes, so that nothing in it is taken for a macro.
std::string Quoted(const std::string& text) {
    std::string quoted = "\"";
    for (const char letter : Escaped(text))
        quoted += letter == '"' ? std::string("\\(dq") : std::string(1, letter);
    return quoted + "\"";
}

std::string Value(const std::string& value) {
    return value.empty() ? "" : " Ar " + Quoted(value);
}

std::string ItemOf(const OptionDefinition& option) {
    if (!option.IsOption())
        return ".It Ar " + Quoted(option.value) + "\n";
    std::string item = ".It";
    for (std::size_t start = 0; start < option.names.size();) {
        const std::size_t end = std::min(option.names.find(',', start), option.names.size());
        const std::string name = option.names.substr(start + 1, end - start - 1);
        item += (start > 0 ? " , " : " ") + std::string("Fl ") + Escaped(name);
        start = end + 1;
    }
    return item + Value(option.value) + "\n";
}

std::string OptionList(const Options& options) {
    if (options.empty())
        return "";
    std::string list = ".Bl -tag -width Ds\n";
    for (const OptionDefinition& option : options)
        list += ItemOf(option) + Prose(option.text + ".");
    return list + ".El\n";
}

std::string Line(const CommandDefinition& command) {
    std::string line = "Cm " + command.name;
    for (const OptionDefinition& option : command.options) {
        if (option.IsOption())
            continue;
        line += (option.isRequired ? " Ar " : " Op Ar ") + option.value + (option.isRepeated ? " ..." : "");
    }
    return line;
}

std::string Synopsis(const CommandTable& commands) {
    std::string lines = ".Sh SYNOPSIS\n";
    for (const CommandDefinition& command : commands.ForPeople())
        lines += ".Nm\n." + Line(command) + "\n.Op Ar options\n";
    return lines;
}

std::string CommandSections(const CommandTable& commands) {
    std::string sections = ".Sh COMMANDS\n";
    for (const CommandDefinition& command : commands.ForPeople()) {
        sections += ".Ss announce " + command.name + "\n" + Prose(command.summary + ".");
        if (!command.text.empty())
            sections += ".Pp\n" + Prose(command.text);
        sections += OptionList(command.OwnOptions());
    }
    return sections;
}

std::string Tagged(const char* macro, const topics::Rows& rows) {
    std::string list = ".Bl -tag -width Ds\n";
    for (const auto& [name, text] : rows)
        list += std::string(".It ") + macro + " " + Escaped(name) + "\n" + Prose(text);
    return list + ".El\n";
}

std::string Statuses() {
    std::string list = ".Sh EXIT STATUS\n.Bl -tag -width Ds\n";
    for (const ExitStatusMeaning& status : ExitStatuses())
        list += ".It " + std::to_string(static_cast<int>(status.status)) + "\n" + Prose(status.meaning);
    return list + ".El\n";
}

std::string Examples(const CommandTable& commands) {
    std::string examples = ".Sh EXAMPLES\n";
    for (const CommandDefinition& command : commands.All()) {
        for (const ExampleDefinition& example : command.examples)
            examples += Prose(example.text + ":") + ".Bd -literal -offset indent\n" + Escaped(example.line) +
                        "\n.Ed\n.Pp\n";
    }
    // The last one is followed by a section.
    return examples.substr(0, examples.size() - std::string(".Pp\n").size());
}

} // namespace

std::string AsRoff(const CommandTable& commands) {
    return ".Dd November 21, 2026\n.Dt ANNOUNCE 1\n.Os\n.Sh NAME\n.Nm announce\n"
           ".Nd drives a running announcement controller\n" +
           Synopsis(commands) + ".Sh DESCRIPTION\n" + Prose(topics::Description()) +
           ".Pp\nThe options of every command are as follows:\n" + OptionList(CommonOptions()) +
           CommandSections(commands) + ".Sh THE CONNECTION\n" + Prose(topics::Connecting()) +
           ".Sh ENVIRONMENT\n" + Tagged("Ev", topics::Environment()) + ".Sh FILES\n" +
           Tagged("Pa", topics::Files()) + ".Pp\n" + "The keys are as follows:\n" +
           Tagged("Cm", topics::ConfigurationKeys()) + Statuses() + Examples(commands) +
           ".Sh SEE ALSO\n.Xr announcement-controller 1\n";
}

} // namespace manual
