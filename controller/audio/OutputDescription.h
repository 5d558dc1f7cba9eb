#pragma once

#include <string>
#include <vector>

namespace controller::audio {

/// Where a room's sound goes, as the house file has it: "auto", "silent", "file: PATTERN",
/// "gstreamer: BIN", "multicast: ADDRESS:PORT". `kind` is the word before the colon, `text` what follows it,
/// without the spaces around it.
struct OutputDescription {
    std::string kind = "auto";
    std::string text;
};

/// The text of "page: own", the screen of the room itself; the house file's reader puts its id in place of
/// it.
constexpr const char* kOwnPage = "own";

/// What a kind of output is, for help and for messages.
struct OutputHelp {
    std::string kind;
    std::string form; ///< How it is written, such as "file: PATTERN".
    std::string meaning;
    std::vector<std::string> options; ///< What may be said beside it; in its text, `option=value` each.
};

/// What can be told of an output without opening it.
struct OutputFacts {
    std::vector<std::string> places; ///< where it sends, for those that can stand in each other's way
    std::vector<std::string> doubts; ///< What is allowed, and probably not meant.
    bool isAnswering = true;         ///< Whether it can be known that it is not heard.
};

/// Reads an output as written in the house file, and proves as much of it as can be proven without
/// opening anything: the kind exists, its text is there, a bin description parses and its elements are
/// installed. Any thread.
/// @throws std::invalid_argument that says what is wrong and what would be right.
[[nodiscard]] OutputDescription ParseOutput(const std::string& text);

/// Of a description that has been read.
[[nodiscard]] OutputFacts FactsOf(const OutputDescription& description);

/// Every kind of output, in the order of the manual.
[[nodiscard]] std::vector<OutputHelp> ListOutputs();

} // namespace controller::audio
