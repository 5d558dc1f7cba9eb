#include "announce/documents/HelpText.h"

#include "announce/basics/TextWidth.h"

#include <algorithm>
#include <sstream>

namespace help_text {
namespace {

constexpr std::size_t kWidth = 80;

/// The words of `text` in lines of at most kWidth, each behind `indent` spaces; the first without them.
std::string Wrapped(const std::string& text, std::size_t indent) {
    std::istringstream words(text);
    std::string lines;
    std::size_t column = indent;
    for (std::string word; words >> word;) {
        const std::size_t width = text::Width(word);
        if (column > indent && column + 1 + width > kWidth) {
            lines += "\n" + std::string(indent, ' ');
            column = indent;
        }
        if (column > indent) {
            lines += ' ';
            ++column;
        }
        lines += word;
        column += width;
    }
    return lines;
}

std::string Paragraphs(const std::string& text) {
    std::string wrapped;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find("\n\n", start), text.size());
        wrapped += Wrapped(text.substr(start, end - start), 0) + "\n\n";
        start = end + 2;
    }
    return wrapped;
}

using Rows = std::vector<std::pair<std::string, std::string>>;

std::string TwoColumns(const Rows& rows) {
    static constexpr std::size_t kWidestLeft = 26;
    std::size_t width = 0;
    for (const auto& [left, right] : rows)
        width = std::max(width, std::min(left.size(), kWidestLeft));
    std::string lines;
    for (const auto& [left, right] : rows) {
        const std::string gap = left.size() > width ? "\n" + std::string(width + 4, ' ') : "  ";
        lines += "  " + text::PaddedRight(left, width) + gap + Wrapped(right, width + 4) + "\n";
    }
    return lines;
}

std::string LeftOf(const OptionDefinition& option) {
    std::string names = option.names;
    const auto comma = names.find(',');
    if (comma != std::string::npos)
        names.insert(comma + 1, " ");
    if (!option.IsOption())
        return option.value;
    return (comma == std::string::npos ? "    " : "") + names +
           (option.value.empty() ? "" : " " + option.value);
}

std::string OptionLines(const char* title, const Options& options) {
    Rows rows;
    for (const OptionDefinition& option : options)
        rows.emplace_back(LeftOf(option), option.text);
    return rows.empty() ? "" : std::string(title) + "\n" + TwoColumns(rows) + "\n";
}

std::string CommandLines(const std::vector<CommandDefinition>& commands) {
    Rows rows;
    for (const CommandDefinition& command : commands)
        rows.emplace_back(command.name, command.summary);
    return TwoColumns(rows);
}

} // namespace

std::string OfProgram(const CommandTable& commands) {
    return "announce COMMAND [OPTIONS]\n\n" +
           Wrapped("Drives a running controller: announcements, rooms, screens, and what happens.", 0) +
           "\n\nCommands:\n" + CommandLines(commands.ForPeople()) + "\n" +
           OptionLines("Options of every command:", CommonOptions()) +
           Wrapped("\"announce COMMAND --help\" tells more of a command, announce(1) everything.", 0) + "\n";
}

std::string OfGroup(const CommandTable& commands, const std::string& group) {
    return "announce " + group + " COMMAND [OPTIONS]\n\nCommands:\n" +
           CommandLines(commands.ForPeople(group + " "));
}

std::string OfCommand(const CommandTable& commands, const CommandDefinition& command) {
    std::string help = command.Usage() + "\n\n" + command.summary + ".\n\n" + Paragraphs(command.text);
    Options arguments;
    Options options;
    for (const OptionDefinition& option : command.OwnOptions())
        (option.IsOption() ? options : arguments).push_back(option);
    help += OptionLines("Arguments:", arguments) + OptionLines("Options:", options) +
            OptionLines("Options of every command:", CommonOptions());
    const std::string below = CommandLines(commands.ForPeople(command.name + " "));
    if (!below.empty())
        help += "Commands:\n" + below + "\n";
    for (const ExampleDefinition& example : command.examples)
        help += example.text + ":\n  " + example.line + "\n\n";
    help.pop_back();
    return help;
}

} // namespace help_text
