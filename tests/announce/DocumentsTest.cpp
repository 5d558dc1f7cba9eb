#include "announce/basics/Failure.h"
#include "announce/basics/TextWidth.h"
#include "announce/commands/Commands.h"
#include "announce/documents/CompletionScripts.h"
#include "announce/documents/HelpText.h"
#include "announce/documents/Manual.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace {

std::string ReadDocument(const std::string& name) {
    std::ifstream stream(std::string(DOCUMENTS) + "/" + name);
    std::ostringstream content;
    content << stream.rdbuf();
    return content.str();
}

} // namespace

TEST(DocumentsTest, ReferenceInTheDocumentsIsTheOneThatTheProgramPrints) {
    EXPECT_EQ(ReadDocument("cli.md"), manual::AsMarkdown(AllCommands()))
        << "Write it anew: announce manual --markdown > docs/cli.md";
}

TEST(DocumentsTest, EveryCommandAndOptionStandsInManualReferenceAndHelp) {
    const std::string page = manual::AsRoff(AllCommands());
    const std::string reference = manual::AsMarkdown(AllCommands());
    const CommandTable commands = AllCommands();
    for (const CommandDefinition& command : commands.ForPeople()) {
        SCOPED_TRACE(command.name);
        EXPECT_NE(page.find(".Ss announce " + command.name + "\n"), std::string::npos);
        EXPECT_NE(reference.find("`" + command.Usage() + "`"), std::string::npos);
        const std::string help = help_text::OfCommand(commands, command);
        for (const OptionDefinition& option : command.OwnOptions())
            EXPECT_NE(help.find(option.IsOption() ? "--" + option.Key() : option.value), std::string::npos)
                << option.names;
    }
}

TEST(DocumentsTest, HelpFitsIntoAnOrdinaryTerminal) {
    const CommandTable commands = AllCommands();
    std::string all = help_text::OfProgram(commands) + help_text::OfGroup(commands, "media");
    for (const CommandDefinition& command : commands.All())
        all += command.examples.empty() ? help_text::OfCommand(commands, command) : "";
    std::istringstream lines(all);
    for (std::string line; std::getline(lines, line);)
        EXPECT_LE(text::Width(line), 80U) << line;
}

TEST(DocumentsTest, LinesOfTheManualThatBeginLikeRequestsAreRequests) {
    std::istringstream lines(manual::AsRoff(AllCommands()));
    for (std::string line; std::getline(lines, line);) {
        EXPECT_NE(line.rfind('\'', 0), 0U) << line;
        const bool isKnown =
            line.empty() || line[0] != '.' ||
            std::string(".Ar .Bd .Bl .Cm .Dd .Dt .Ed .El .It .Nd .Nm .Op .Os .Pp .Sh .Ss .Xr")
                    .find(line.substr(0, 3)) != std::string::npos;
        EXPECT_TRUE(isKnown) << line;
    }
}

TEST(DocumentsTest, HelpOfAGroupListsItsCommandsAndNoOthers) {
    EXPECT_EQ(help_text::OfGroup(AllCommands(), "media"),
              "announce media COMMAND [OPTIONS]\n\nCommands:\n"
              "  media list      List the sounds and images\n"
              "  media add       Bring files into the media folder\n"
              "  media speak     Store a spoken sound, or another text for one\n"
              "  media loudness  Say how loud a sound is played\n"
              "  media remove    Remove files from the media folder\n");
}

TEST(DocumentsTest, EveryShellThatIsOfferedHasItsCompletionAndNoOtherHas) {
    for (const char* shell : {"bash", "zsh", "fish"})
        EXPECT_NE(CompletionScript(shell).find("announce complete"), std::string::npos) << shell;
    EXPECT_THROW((void)CompletionScript("tcsh"), Failure);
}
