#pragma once

#include <initializer_list>
#include <string>
#include <vector>

/// A list of calls, as `FakeHost::Take` gives it.
using Lines = std::vector<std::string>;

/// Several lists, one behind the other.
inline Lines Join(std::initializer_list<Lines> parts) {
    Lines all;
    for (const Lines& part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}
