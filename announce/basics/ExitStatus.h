#pragma once

#include <vector>

/// What the program ends with. The numbers are a promise to scripts.
enum class ExitStatus {
    Done = 0,
    Failed = 1,
    Usage = 2,
    NotFound = 3,
    Ambiguous = 4,
    NotAllowed = 5,
    Refused = 6,
    Conflict = 7,
    NoConnection = 8,
    EndedOtherwise = 9,
    NotSaved = 10,
    Interrupted = 130,
};

struct ExitStatusMeaning {
    ExitStatus status;
    const char* meaning;
};

/// Every status with what it means, for people.
[[nodiscard]] const std::vector<ExitStatusMeaning>& ExitStatuses();
