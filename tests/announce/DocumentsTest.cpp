#include "announce/definitions/Definitions.h"
#include "announce/documents/CompletionScripts.h"
#include "announce/documents/HelpText.h"
#include "announce/documents/Manual.h"
#include "announce/house/AnnouncementForm.h"
#include "announce/output/TextWidth.h"

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
    EXPECT_EQ(ReadDocument("cli.md"), manual::AsMarkdown())
        << "Write it anew: announce manual --markdown > docs/cli.md";
}

TEST(DocumentsTest, EveryCommandAndOptionStandsInManualReferenceAndHelp) {
    const std::string page = manual::AsRoff();
    const std::string reference = manual::AsMarkdown();
    for (const CommandDefinition& command : Commands()) {
        if (command.isHidden)
            continue;
        SCOPED_TRACE(command.name);
        EXPECT_NE(page.find(".Ss announce " + command.name + "\n"), std::string::npos);
        EXPECT_NE(reference.find("`" + UsageOf(command) + "`"), std::string::npos);
        const std::string help = help_text::OfCommand(command);
        for (const OptionDefinition& option : OptionsOf(command))
            EXPECT_NE(help.find(option.IsOption() ? "--" + option.Key() : option.value), std::string::npos)
                << option.names;
    }
}

TEST(DocumentsTest, HelpFitsIntoAnOrdinaryTerminal) {
    std::string all = help_text::OfProgram();
    for (const CommandDefinition& command : Commands())
        all += command.examples.empty() ? help_text::OfCommand(command) : "";
    std::istringstream lines(all);
    for (std::string line; std::getline(lines, line);)
        EXPECT_LE(text::Width(line), 80U) << line;
}

TEST(DocumentsTest, LinesOfTheManualThatBeginLikeRequestsAreRequests) {
    std::istringstream lines(manual::AsRoff());
    for (std::string line; std::getline(lines, line);) {
        EXPECT_NE(line.rfind('\'', 0), 0U) << line;
        const bool isKnown =
            line.empty() || line[0] != '.' ||
            std::string(".Ar .Bd .Bl .Cm .Dd .Dt .Ed .El .It .Nd .Nm .Op .Os .Pp .Sh .Ss .Xr")
                    .find(line.substr(0, 3)) != std::string::npos;
        EXPECT_TRUE(isKnown) << line;
    }
}

TEST(DocumentsTest, MistakesStandOnTopOfAFormAndGoAgain) {
    const std::string form = "# Announcement 5\nname: Dinner\n";
    const std::string once = announcement_form::WithMistakes(form, announcement_form::Mistakes{{2, "no"}});
    EXPECT_EQ(once, "#! line 3: no\n" + form);
    EXPECT_EQ(announcement_form::WithMistakes(once, announcement_form::Mistakes{{1, "a"}, {0, "b"}}),
              "#! line 3: a\n#! b\n" + form);
    EXPECT_EQ(announcement_form::WithoutMistakes(once), form);
}

TEST(DocumentsTest, AFormOfCommentsAloneIsEmpty) {
    EXPECT_TRUE(announcement_form::IsEmpty(""));
    EXPECT_TRUE(announcement_form::IsEmpty("\n  # comment\n\t\r\n"));
    EXPECT_FALSE(announcement_form::IsEmpty("# comment\nname: x\n"));
}
