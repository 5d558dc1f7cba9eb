#include "rehearsal/Options.h"

#include <CLI/CLI.hpp>

std::optional<Options> ReadOptions(int argc, char** argv, int& exitStatus) {
    constexpr int kBadCommandLine = 2;
    Options options;
    CLI::App app("Runs the announcement agent against a host with a virtual clock and prints every call that "
                 "it makes.\n"
                 "No real time passes, and the same scenario always gives the same trace.",
                 "announcement-rehearsal");
    app.add_option("SCENARIO", options.scenario, "The steps, one JSON object a line; - for standard input");
    app.add_flag("--look-ups", options.showLookUps, "Also print the agent's look-ups of services and rooms");
    app.add_flag("--timeline", options.asTimeline, "Print the run for people to read");
    app.add_option("--module", options.module, "Load this driver module instead of the program's own")
        ->type_name("FILE");
    app.set_version_flag("--version", "announcement-rehearsal " PROJECT_VERSION,
                         "Print the version and exit");
    app.footer("Exit status: 0 when the whole scenario was run; 1 when the module cannot be loaded or the "
               "trace cannot\n"
               "be written; 2 for a bad line, an unreadable scenario or a bad command line.");
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        exitStatus = app.exit(error) == 0 ? 0 : kBadCommandLine;
        return std::nullopt;
    }
    return options;
}
