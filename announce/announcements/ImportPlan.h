#pragma once

#include "announce/basics/Json.h"

#include <string>
#include <vector>

/// What an import has to do, found out before anything is done.
struct ImportPlan {
    struct Change {
        Json announcement; ///< as it shall be, without an id
        Json present;      ///< the one whose place it takes; null when it is new
    };
    std::vector<Change> changes;
    std::size_t unchanged = 0;

    /// The announcements in the text of a file. Throws Failure (Usage) that names the file and what would be
    /// right.
    [[nodiscard]] static std::vector<Json> Read(const std::string& file, const std::string& text);

    /// Compares by name: those that are there with the same content are left alone. Throws Failure
    /// (Ambiguous) when several have the name.
    [[nodiscard]] static ImportPlan Make(const std::vector<Json>& wanted, const Json& present);
};
