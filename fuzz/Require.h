#pragma once

#include <cstdlib>
#include <iostream>

/// Ends the process, which the fuzzer takes for a finding, when what must hold does not.
inline void Require(bool holds, const char* what) {
    if (holds)
        return;
    std::cerr << "does not hold: " << what << '\n';
    std::abort();
}
