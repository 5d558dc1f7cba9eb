#pragma once

#include "host/IDocument.h"
#include "host/auto_com.h"
#include "rehearsal/HostSettings.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

struct Reaction;

/// What a step does.
enum class StepKind {
    Host,
    Create,
    Initialize,
    Register,
    Command,
    Request,
    Advance,
    StreamReady,
    PlayDone,
    RoomAsked,
    Save,
    Destroy,
    On,
    Throw
};

/// What a host throws: a `const char*`, a `std::string`, or anything else.
enum class ThrownType { Characters, String, Other };

/// One step of a scenario or of a reaction, found good: only its kind's own members mean something.
struct Step {
    StepKind kind = StepKind::Host;
    /// The step as JSON text, without blanks, its members in the order in which they were given.
    std::string echo;

    HostChange host;                           ///< host
    std::optional<std::string> state;          ///< initialize: the saved state's text
    vq::auto_com<VqXML::IDocument> savedState; ///< and the document that it is; empty without one
    std::string name;                          ///< command, request
    std::vector<std::pair<std::string, std::string>> params; ///< command, request
    VirtualTime duration{0};                                 ///< advance
    std::uint32_t roomId = 0;                                ///< room_asked
    std::shared_ptr<Reaction> reaction;                      ///< on
    ThrownType thrownType = ThrownType::Other;               ///< throw
    std::string thrownText;                                  ///< throw

    /// Reads a scenario's line. Throws `std::invalid_argument`, which says what is wrong with it and what
    /// would be right.
    [[nodiscard]] static Step Read(const std::string& line);

    /// A step of a kind that needs no members.
    [[nodiscard]] static Step Plain(StepKind kind);
};
