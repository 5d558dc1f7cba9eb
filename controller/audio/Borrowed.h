#pragma once

#include <string>
#include <tuple>

namespace controller::audio {

/// A value of another program that announcements have changed: what it was, and what they have set.
struct Borrowed {
    std::string kind;     ///< of output
    std::string thing;    ///< As the kind names it, such as a stream of a server.
    std::string property; ///< Such as "volume".
    std::string before;
    std::string set; ///< Never empty.

    [[nodiscard]] auto Key() const { return std::tie(kind, thing, property); }
};

inline bool operator==(const Borrowed& one, const Borrowed& other) {
    return one.Key() == other.Key() && one.before == other.before && one.set == other.set;
}

} // namespace controller::audio
