#pragma once

#include <filesystem>
#include <vector>

namespace controller {

/// Writes a house to start from into a folder, which is made when it is missing: `house.yaml` with a comment
/// to every key, `announcements.xml` with two announcements, and their sounds in `media`. Gives the files,
/// the house file first.
///
/// Throws `std::runtime_error`, and writes nothing, when one of the files is there already.
std::vector<std::filesystem::path> WriteNewHouse(const std::filesystem::path& folder);

} // namespace controller
