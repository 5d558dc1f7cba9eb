#include "announce/Program.h"

#include "announce/Session.h"
#include "announce/client/Settings.h"
#include "announce/commands/Watch.h"
#include "announce/definitions/CommandLine.h"
#include "announce/documents/HelpText.h"
#include "announce/output/TextWidth.h"

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

ExitStatus Help(const CommandLine& line, Output& output) {
    if (line.command != nullptr)
        output.Raw(help_text::OfCommand(*line.command));
    else
        output.Raw(line.group.empty() ? help_text::OfProgram() : help_text::OfGroup(line.group));
    return ExitStatus::Done;
}

ExitStatus Run(const CommandLine& line, Output& output) {
    if (line.wantsHelp)
        return Help(line, output);
    if (line.wantsVersion) {
        output.Line("announce " ANNOUNCE_VERSION);
        return ExitStatus::Done;
    }
    if (line.command == nullptr)
        throw Failure(ExitStatus::Usage, "the command is missing",
                      "announce " + line.group + (line.group.empty() ? "" : " ") +
                          "COMMAND; --help lists them");
    ApiClient client(FindConnection(line.arguments));
    Session session{client, output, line.arguments};
    return line.arguments.Has("watch") ? Watch(session, *line.command) : line.command->run(session);
}

int TellFailure(const Failure& failure) {
    std::string message = std::string("announce: ") + failure.what();
    if (!failure.Right().empty())
        message += "\n  right: " + failure.Right();
    Tell(message, Style::Bad);
    return static_cast<int>(failure.Status());
}

} // namespace

int RunProgram(const std::vector<std::string>& words) {
    try {
        RequireUtf8(words);
        const CommandLine line = ReadCommandLine(words);
        Output output(Terminal::Of(STDOUT_FILENO), line.arguments.Has("json"));
        const ExitStatus status = Run(line, output);
        output.Flush();
        return static_cast<int>(status);
    } catch (const Interrupted&) {
        return static_cast<int>(ExitStatus::Interrupted);
    } catch (const Failure& failure) {
        return TellFailure(failure);
    } catch (const Json::exception&) {
        return TellFailure({ExitStatus::Failed, "what answers is no controller, or one of another version"});
    } catch (const std::exception& error) {
        return TellFailure({ExitStatus::Failed, error.what()});
    }
}
