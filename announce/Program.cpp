#include "announce/Program.h"

#include "announce/basics/TextWidth.h"
#include "announce/client/Settings.h"
#include "announce/commands/Commands.h"
#include "announce/commands/Watch.h"
#include "announce/definitions/CommandLine.h"
#include "announce/documents/HelpText.h"

#include <exception>

#include <unistd.h>

namespace {

void RequireUtf8(const std::vector<std::string>& words) {
    for (const std::string& word : words) {
        if (!text::IsUtf8(word))
            throw Failure(ExitStatus::Usage, "\"" + text::Visible(word) + "\" is not UTF-8",
                          "a terminal that is set to UTF-8");
    }
}

std::string HelpOf(const CommandTable& commands, const CommandLine& line) {
    if (line.command != nullptr)
        return help_text::OfCommand(commands, *line.command);
    return line.group.empty() ? help_text::OfProgram(commands) : help_text::OfGroup(commands, line.group);
}

ExitStatus Run(const CommandTable& commands, const CommandLine& line, Output& output) {
    if (line.WantsHelp()) {
        output.Raw(HelpOf(commands, line));
        return ExitStatus::Done;
    }
    if (line.WantsVersion()) {
        output.Line("announce " ANNOUNCE_VERSION);
        return ExitStatus::Done;
    }
    if (line.command == nullptr)
        throw Failure(ExitStatus::Usage, "the command is missing",
                      "announce " + line.group + (line.group.empty() ? "" : " ") +
                          "COMMAND; --help lists them");
    ApiClient client(FindConnection(line.arguments));
    Session session{commands, client, output, line.arguments};
    return line.arguments.Has("watch") ? Watch(session, *line.command) : line.command->run(session);
}

ExitStatus RunAndPrint(const CommandTable& commands, const CommandLine& line) {
    Output output(Terminal::Of(STDOUT_FILENO), line.arguments.Has("json"));
    try {
        const ExitStatus status = Run(commands, line, output);
        output.Flush();
        return status;
    } catch (const Failure&) {
        // What was done before stays done, and is told first.
        output.Flush();
        throw;
    }
}

int End(const Failure& failure) {
    TellFailure(failure);
    return static_cast<int>(failure.Status());
}

} // namespace

int RunProgram(const std::vector<std::string>& words) {
    try {
        RequireUtf8(words);
        const CommandTable commands = AllCommands();
        const CommandLine line = ReadCommandLine(commands, words);
        return static_cast<int>(RunAndPrint(commands, line));
    } catch (const Interrupted&) {
        return static_cast<int>(ExitStatus::Interrupted);
    } catch (const Failure& failure) {
        return End(failure);
    } catch (const Json::exception&) {
        return End({ExitStatus::Failed, "what answers is no controller, or one of another version"});
    } catch (const std::exception& error) {
        return End({ExitStatus::Failed, error.what()});
    }
}
