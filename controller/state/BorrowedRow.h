#pragma once

#include <string>
#include <vector>

namespace controller {

/// A value of another program that announcements have changed. One without `set` takes the entry of its thing
/// and property away.
struct BorrowedRow {
    std::string kind; ///< of output
    std::string thing;
    std::string property;
    std::string before;
    std::string set;
};

inline bool operator==(const BorrowedRow& one, const BorrowedRow& other) {
    return one.kind == other.kind && one.thing == other.thing && one.property == other.property &&
           one.before == other.before && one.set == other.set;
}

using BorrowedRows = std::vector<BorrowedRow>;

} // namespace controller
