#pragma once

#include "announce/definitions/Arguments.h"
#include "announce/definitions/Definitions.h"

#include <string>
#include <vector>

/// What may stand in the place of the last word of a command line that is being typed.
namespace candidates {

struct Candidate {
    std::string text;
    std::string description;
};

/// What the definitions say about that place.
struct Place {
    std::vector<Candidate> fixed; ///< names of commands and options
    Completes completes = Completes::Nothing;
    std::string prefix; ///< "--room=", which stands before the value in the same word
    std::string begun;  ///< what of the value is there already
    Arguments given;    ///< the options with values that stand before it
};

/// `words` stand behind the program's name; there is at least one, which may be empty.
[[nodiscard]] Place FindPlace(const CommandTable& commands, const std::vector<std::string>& words);

/// Those that begin as the user has begun, in small or capital letters.
[[nodiscard]] std::vector<Candidate> Fitting(const std::vector<Candidate>& all, const Place& place);

} // namespace candidates
