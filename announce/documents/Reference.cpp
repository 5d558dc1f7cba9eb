#include "announce/documents/Manual.h"
#include "announce/documents/Topics.h"

namespace manual {
namespace {

/// Bars would end a table's cell.
std::string Cell(const std::string& text) {
    std::string cell;
    for (const char letter : text)
        cell += letter == '|' ? std::string("\\|") : std::string(1, letter);
    return cell;
}

std::string Row(const std::string& left, const std::string& right) {
    return "| " + Cell(left) + " | " + Cell(right) + " |\n";
}

std::string TableOf(const char* left, const char* right) {
    return std::string("| ") + left + " | " + right + " |\n|---|---|\n";
}

std::string NamesOf(const OptionDefinition& option) {
    std::string names = option.names;
    const auto comma = names.find(',');
    if (comma != std::string::npos)
        names.replace(comma, 1, "`, `");
    if (!option.IsOption())
        return "`" + option.value + (option.isRepeated ? "...`" : "`");
    return "`" + names + (option.value.empty() ? "`" : " " + option.value + "`");
}

std::string OptionTable(const Options& options) {
    if (options.empty())
        return "";
    std::string table = TableOf("option", "what");
    for (const OptionDefinition& option : options)
        table += Row(NamesOf(option), option.text);
    return table + "\n";
}

std::string Summaries(const CommandTable& commands) {
    std::string table = TableOf("command", "what");
    for (const CommandDefinition& command : commands.ForPeople())
        table += Row("`" + command.name + "`", command.summary);
    return table + "\n";
}

std::string Section(const CommandDefinition& command) {
    std::string section = "### `" + command.Usage() + "`\n\n" + command.summary + ".";
    section += (command.text.empty() ? "" : " " + command.text) + "\n\n" + OptionTable(command.OwnOptions());
    for (const ExampleDefinition& example : command.examples)
        section += example.text + ":\n\n    " + example.line + "\n\n";
    return section;
}

std::string RowsOf(const topics::Rows& rows) {
    std::string lines;
    for (const auto& [name, text] : rows)
        lines += Row("`" + name + "`", text);
    return lines + "\n";
}

} // namespace

std::string AsMarkdown(const CommandTable& commands) {
    std::string text = "# The command line\n\n`announce COMMAND [OPTIONS]`\n\n" + topics::Description() +
                       "\n\n`announce COMMAND --help` and the manual page `announce(1)` say the same as this "
                       "text: all three come "
                       "from the program's definitions (`announce manual --markdown` prints this one).\n\n" +
                       Summaries(commands) + "## Options of every command\n\n" +
                       OptionTable(CommonOptions()) + "## The connection\n\n" + topics::Connecting() +
                       "\n\n" + TableOf("environment", "what") + RowsOf(topics::Environment()) + "`" +
                       topics::Files().front().first + "`: " + topics::Files().front().second + "\n\n" +
                       TableOf("key", "what") + RowsOf(topics::ConfigurationKeys()) + "## Exit status\n\n" +
                       TableOf("status", "when");
    for (const ExitStatusMeaning& status : ExitStatuses())
        text += Row(std::to_string(static_cast<int>(status.status)), status.meaning);
    text += "\n## Commands\n\n";
    for (const CommandDefinition& command : commands.ForPeople())
        text += Section(command);
    text.pop_back();
    return text;
}

} // namespace manual
