#pragma once

#include <optional>
#include <string>

/// What the command line asks for.
struct Options {
    std::string scenario = "-"; ///< a file's name; - for standard input
    std::string module;         ///< empty for the one that belongs to this program
    bool showLookUps = false;
    bool asTimeline = false;
};

/// Reads the command line. Without a value the program is to end, with `exitStatus`: what was asked for is
/// printed, or the message about what is wrong with the command line.
[[nodiscard]] std::optional<Options> ReadOptions(int argc, char** argv, int& exitStatus);
