#include "controller/CommandLine.h"

#include "controller/Controller.h"
#include "controller/HouseSpeech.h"
#include "controller/ModuleFile.h"
#include "controller/OutputsCommand.h"
#include "controller/api/MissingTargets.h"
#include "controller/api/OpenApi.h"
#include "controller/audio/BorrowGuard.h"
#include "controller/driver/Text.h"
#include "controller/house/HouseFile.h"
#include "controller/house/NewHouse.h"
#include "controller/house/TokenCommand.h"
#include "controller/state/Maintenance.h"

#include <CLI/CLI.hpp>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <unistd.h>

namespace controller {

namespace {

namespace fs = std::filesystem;

/// Nobody calls it by hand: no help names it.
constexpr const char* kGuard = "guard-borrowed";

constexpr int kFailed = 1;
constexpr int kWrongInput = 2;
constexpr int kUnusableDatabase = 3;

struct Arguments {
    std::string program; ///< as it was called, which is how it can be called again
    std::string house;
    std::string module;
    std::string data;
    std::optional<std::uint16_t> port;
    std::string folder = ".";
    std::string file;
    std::string token;
    std::vector<std::string> rights;
    std::vector<std::uint32_t> play;
    bool isRecovering = false;
    bool isStaying = false;
    bool isVerbose = false;
};

/// Where the demo house lives when no house is given.
fs::path DemoFolder() {
    const char* state = std::getenv("XDG_STATE_HOME");
    const char* home = std::getenv("HOME");
    const fs::path base = state != nullptr && *state != '\0' ? fs::path(state)
                          : home != nullptr                  ? fs::path(home) / ".local" / "state"
                                                             : fs::temp_directory_path();
    return base / "announcement-controller" / "demo";
}

fs::path DemoHouse() {
    const fs::path folder = DemoFolder();
    fs::path file = folder / "house.yaml";
    if (!fs::exists(file))
        WriteNewHouse(folder);
    std::cout << "No house file is given; this is the demo house in " << folder.string() << ".\n"
              << std::flush;
    return file;
}

std::vector<std::string> DoubtsAbout(const House& house, const fs::path& file) {
    std::vector<std::string> lines;
    for (const House::Doubt& doubt : house.doubts)
        lines.push_back(file.string() + ":" + std::to_string(doubt.line) + ": " + doubt.key +
                        ": warning: " + doubt.text);
    return lines;
}

void RunController(const Arguments& arguments) {
    Log log(STDERR_FILENO, arguments.isVerbose ? Severity::Information : Severity::Notice,
            Log::FormOfStandardError());
    const fs::path file = arguments.house.empty() ? DemoHouse() : fs::path(arguments.house);
    House house = ReadHouseFile(file);
    for (const std::string& doubt : DoubtsAbout(house, file))
        log.Warning(doubt);
    if (!arguments.data.empty())
        house.dataFolder = arguments.data;
    if (arguments.port)
        house.port = *arguments.port;
    Controller::Options options;
    options.household.module = arguments.module.empty() ? FindModuleFile() : fs::path(arguments.module);
    options.household.guard = {"/proc/self/exe", kGuard};
    options.play = arguments.play;
    options.household.isRecovering = arguments.isRecovering;
    options.isStaying = arguments.isStaying;
    Controller(std::move(house), std::move(options), log).Run();
}

void Check(const fs::path& file) {
    const House house = ReadHouseFile(file);
    for (const std::string& doubt : DoubtsAbout(house, file))
        std::cerr << doubt << '\n';
    std::cout << file.string() << ": " << house.name << " is in order ("
              << CountOf(house.rooms.size(), "room") << ", " << CountOf(house.navigators.size(), "navigator")
              << ", " << CountOf(house.variables.size(), "variable") << ", "
              << CountOf(house.tokens.size(), "token") << ")\n"
              << std::flush;
    // No mistake in the file: what is missing here may be there where it is served.
    for (const std::string& trouble : HouseSpeech::TroublesOf(house))
        std::cerr << "on this machine " << trouble << '\n';
}

/// What is imported may come from another house, or from before this one was changed.
void TellMissing(const AnnouncementRows& rows, const House& house) {
    for (const AnnouncementRow& row : rows) {
        const std::string missing = missing_targets::ListedIn(row, house);
        if (!missing.empty())
            std::cerr << "announcement " << row.key << " names what this house does not have: " << missing
                      << '\n';
    }
}

void Import(const Arguments& arguments) {
    const House house = ReadHouseFile(arguments.house);
    TellMissing(maintenance::Import(house.dataFolder, arguments.file), house);
}

/// As a shell takes it for one word.
std::string Quoted(const std::string& word) {
    constexpr std::string_view kPlain =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_./+:,@%=";
    if (!word.empty() && word.find_first_not_of(kPlain) == std::string::npos)
        return word;
    std::string quoted = "'";
    for (const char letter : word)
        quoted += letter == '\'' ? "'\\''" : std::string(1, letter);
    return quoted + "'";
}

void Init(const fs::path& folder, const std::string& program) {
    const auto files = WriteNewHouse(folder);
    for (const fs::path& file : files)
        std::cout << "wrote " << file.string() << '\n';
    std::cout << "Start it with: " << Quoted(program) << ' ' << Quoted(files.front().string())
              << " --play 1\n";
}

void DeclareRun(CLI::App& app, Arguments& arguments) {
    app.add_option("house", arguments.house, "The house file; without one the demo house is used")
        ->option_text("HOUSE.yaml");
    app.add_option("--play", arguments.play, "Play these announcements at the start")
        ->delimiter(',')
        ->allow_extra_args(false)
        ->option_text("ID[,ID...]");
    app.add_option("--data", arguments.data, "Keep the data in this folder instead of the house file's")
        ->option_text("FOLDER");
    app.add_option("--port", arguments.port,
                   "Serve this port instead of the house file's; 0 takes a free one")
        ->option_text("PORT");
    app.add_option("--module", arguments.module, "The agent's module, when it is not beside this program")
        ->option_text("FILE");
    app.add_flag("--recover", arguments.isRecovering,
                 "Set a damaged database aside, and go on with what can be read");
    app.add_flag("--stay", arguments.isStaying, "Go on running at the end of standard input");
    app.add_flag("--verbose", arguments.isVerbose, "Log what the agent says, too");
}

void DeclareMaintenance(CLI::App& app, Arguments& arguments) {
    CLI::App* check = app.add_subcommand("check", "Tell every mistake in a house file");
    check->add_option("house", arguments.house)->required()->option_text("HOUSE.yaml");
    check->callback([&arguments] { Check(arguments.house); });
    CLI::App* outputs = app.add_subcommand(
        "outputs", "List where rooms could be heard, each with its line for the house file");
    outputs->add_option("house", arguments.house, "A house whose servers are asked as well")
        ->option_text("HOUSE.yaml");
    outputs->callback(
        [&arguments] { PrintOutputs(arguments.house.empty() ? House{} : ReadHouseFile(arguments.house)); });
    CLI::App* init = app.add_subcommand("init", "Write a house to start from");
    init->add_option("folder", arguments.folder)->option_text("FOLDER");
    init->callback([&arguments] { Init(arguments.folder, arguments.program); });
    CLI::App* exporting = app.add_subcommand("export", "Write the announcements as XML text");
    exporting->add_option("house", arguments.house)->required()->option_text("HOUSE.yaml");
    exporting->add_option("file", arguments.file)->option_text("FILE");
    exporting->callback(
        [&arguments] { maintenance::Export(ReadHouseFile(arguments.house).dataFolder, arguments.file); });
    CLI::App* importing = app.add_subcommand("import", "Replace the announcements by those of an XML text");
    importing->add_option("house", arguments.house)->required()->option_text("HOUSE.yaml");
    importing->add_option("file", arguments.file)->required()->option_text("FILE");
    importing->callback([&arguments] { Import(arguments); });
    app.add_subcommand(kGuard)->group("")->callback([] {
        if (const int status = audio::GuardBorrowed(STDIN_FILENO); status != EXIT_SUCCESS)
            throw CLI::RuntimeError(status);
    });
    app.add_subcommand("openapi", "Print the description of the API, as OpenAPI")->callback([] {
        std::cout << DescribeAsOpenApi(Operations());
    });
}

void DeclareTokens(CLI::App& app, Arguments& arguments) {
    CLI::App* tokens = app.add_subcommand("token", "Make, list and remove the tokens of a house file");
    tokens->require_subcommand(1);
    CLI::App* add = tokens->add_subcommand("add", "Make a token, and print it once");
    add->add_option("name", arguments.token)->required()->option_text("NAME");
    add->add_option("--right", arguments.rights, "What it allows: admin, play, navigator:ID; may come again")
        ->required()
        ->option_text("RIGHT");
    add->add_option("--house", arguments.house, "The house file")->required()->option_text("HOUSE.yaml");
    add->callback([&arguments] { token_command::Add(arguments.house, arguments.token, arguments.rights); });
    CLI::App* list = tokens->add_subcommand("list", "List names and rights");
    list->add_option("--house", arguments.house, "The house file")->required()->option_text("HOUSE.yaml");
    list->callback([&arguments] { token_command::List(arguments.house); });
    CLI::App* remove = tokens->add_subcommand("remove", "Remove a token");
    remove->add_option("name", arguments.token)->required()->option_text("NAME");
    remove->add_option("--house", arguments.house, "The house file")->required()->option_text("HOUSE.yaml");
    remove->callback([&arguments] { token_command::Remove(arguments.house, arguments.token); });
}

} // namespace

int RunCommandLine(int argc, const char* const* argv) {
    // Whoever closes standard output shall not end the house with it.
    (void)std::signal(SIGPIPE, SIG_IGN);
    // A file that may not grow any more is an error to report, not an end.
    (void)std::signal(SIGXFSZ, SIG_IGN);
    Arguments arguments;
    arguments.program = argc > 0 ? argv[0] : "announcement-controller";
    CLI::App app("Plays announcements in the rooms of a house and shows them on its screens.",
                 "announcement-controller");
    app.footer(
        "Exit status: 0 at a good end, 1 when something could not be done, 2 when command line or house file "
        "are wrong, 3 when the database cannot be used.");
    DeclareRun(app, arguments);
    DeclareMaintenance(app, arguments);
    DeclareTokens(app, arguments);
    try {
        app.parse(argc, argv);
        if (app.get_subcommands().empty())
            RunController(arguments);
        return EXIT_SUCCESS;
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? EXIT_SUCCESS : kWrongInput;
    } catch (const HouseError& error) {
        std::cerr << error.what() << '\n';
        return kWrongInput;
    } catch (const UnusableDatabase& error) {
        std::cerr << "announcement-controller: " << error.what() << '\n';
        return kUnusableDatabase;
    } catch (const std::exception& error) {
        std::cerr << "announcement-controller: " << error.what() << '\n';
        return kFailed;
    }
}

} // namespace controller
