#include "announce/definitions/CommandLine.h"

#include "announce/basics/Failure.h"
#include "announce/commands/Commands.h"

#include <gtest/gtest.h>

#include <set>

namespace {

const CommandTable& Commands() {
    static const CommandTable kTable = AllCommands();
    return kTable;
}

CommandLine Read(const std::vector<std::string>& words) {
    return ReadCommandLine(Commands(), words);
}

Failure RefusalOf(const std::vector<std::string>& words) {
    try {
        (void)Read(words);
    } catch (const Failure& failure) {
        return failure;
    }
    return {ExitStatus::Done, "nothing was wrong"};
}

} // namespace

TEST(CommandLineTest, OptionsAndArgumentsAreFoundByTheirNames) {
    const auto line = Read({"add", "--name", "Dinner", "--room", "Kitchen:40", "--room=Hall", "--json"});

    ASSERT_NE(line.command, nullptr);
    EXPECT_EQ(line.command->name, "add");
    EXPECT_EQ(line.arguments.Text("name"), "Dinner");
    EXPECT_EQ(line.arguments.All("room"), (std::vector<std::string>{"Kitchen:40", "Hall"}));
    EXPECT_TRUE(line.arguments.Has("json"));
    EXPECT_FALSE(line.arguments.Has("text"));
}

TEST(CommandLineTest, CommonOptionsStandBeforeTheCommandOrBehindIt) {
    for (const auto& words : {std::vector<std::string>{"-a", "house", "list"}, {"list", "-a", "house"}})
        EXPECT_EQ(Read(words).arguments.Text("address"), "house");
}

TEST(CommandLineTest, ValuesAreTakenAsTheyAreTyped) {
    const auto line = Read({"add", "--name", "[a,b]", "--text", "", "--room", "[x]"});
    EXPECT_EQ(line.arguments.Text("name"), "[a,b]");
    EXPECT_TRUE(line.arguments.Has("text"));
    EXPECT_EQ(line.arguments.Text("text"), "");
    EXPECT_EQ(line.arguments.All("room"), std::vector<std::string>{"[x]"});
    EXPECT_EQ(Read({"variables", "set", "Outside", "--", "-5 °C"}).arguments.Text("value"), "-5 °C");
    EXPECT_EQ(Read({"media", "add", "[x].wav", "y.wav"}).arguments.All("file"),
              (std::vector<std::string>{"[x].wav", "y.wav"}));
}

TEST(CommandLineTest, AGroupIsACommandOfItsOwnAndHasFurtherOnes) {
    EXPECT_EQ(Read({"rooms"}).command->name, "rooms");
    EXPECT_EQ(Read({"rooms", "volume", "Kitchen", "40"}).command->name, "rooms volume");
}

TEST(CommandLineTest, MistypedCommandsAndOptionsAreRefusedWithTheNearest) {
    EXPECT_STREQ(RefusalOf({"lst"}).what(), "there is no command \"lst\"");
    EXPECT_EQ(RefusalOf({"lst"}).Right(), "list?");
    EXPECT_EQ(RefusalOf({"add", "--nme", "x"}).Right(), "--name?");
    EXPECT_STREQ(RefusalOf({"play", "a", "b"}).what(), "\"b\" is one word too many");
    for (const auto& words : {std::vector<std::string>{"play"},
                              {"add", "--name"},
                              {"add", "--name", "a", "--name", "b"},
                              {"list", "--jsn"}})
        EXPECT_EQ(RefusalOf(words).Status(), ExitStatus::Usage);
}

TEST(CommandLineTest, HelpNeedsNoArguments) {
    EXPECT_TRUE(Read({"play", "--help"}).WantsHelp());
    EXPECT_TRUE(Read({"-h"}).WantsHelp());
    EXPECT_TRUE(Read({"--version"}).WantsVersion());
}

TEST(CommandLineTest, NumbersAreWholeAndWithinTheirBounds) {
    const auto number = [](const char* text) {
        return Arguments(Arguments::Values{{"lines", {text}}}).Number("lines", 1, 1000, 20);
    };
    EXPECT_EQ(number("1000"), 1000);
    EXPECT_EQ(Arguments().Number("lines", 1, 1000, 20), 20);
    for (const char* wrong : {"", "0", "1001", "1.5", "x", "1x", "99999999999999999999"})
        EXPECT_THROW((void)number(wrong), Failure) << wrong;
}

TEST(DefinitionsTest, EveryCommandSaysWhatItIsFor) {
    std::set<std::string> names;
    for (const CommandDefinition& command : Commands().All()) {
        SCOPED_TRACE(command.name);
        EXPECT_TRUE(names.insert(command.name).second);
        EXPECT_FALSE(command.summary.empty());
        EXPECT_NE(command.summary.back(), '.');
        EXPECT_TRUE(command.run);
        for (const OptionDefinition& option : command.options)
            EXPECT_TRUE(command.isHidden || !option.text.empty()) << option.names;
    }
}

TEST(DefinitionsTest, NoCommandHasAnOptionThatAllHave) {
    std::set<std::string> common;
    for (const OptionDefinition& option : CommonOptions())
        common.insert(option.Key());
    for (const CommandDefinition& command : Commands().All()) {
        for (const OptionDefinition& option : command.OwnOptions())
            EXPECT_EQ(common.count(option.Key()), 0U) << command.name << " " << option.names;
    }
}

TEST(DefinitionsTest, ExitStatusesHaveNumbersOfTheirOwn) {
    std::set<int> numbers;
    for (const ExitStatusMeaning& status : ExitStatuses())
        EXPECT_TRUE(numbers.insert(static_cast<int>(status.status)).second);
    EXPECT_EQ(numbers, (std::set<int>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 130}));
}
