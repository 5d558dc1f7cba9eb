#pragma once

#include <filesystem>

/// What the program does to a house that is not running. Everything throws `std::runtime_error` (or
/// `HouseError`), which says what is wrong; what went well is printed on standard output.
namespace controller::maintenance {

/// Reads a house file, for its mistakes.
void Check(const std::filesystem::path& house);

/// Writes a house to start from.
void Init(const std::filesystem::path& folder);

/// Writes the announcements as XML text to a file; to standard output when the name is empty or "-". The
/// controller may be running.
void Export(const std::filesystem::path& house, const std::filesystem::path& file);

/// Puts the announcements of an XML text in place of those that are stored. The controller must not be
/// running.
void Import(const std::filesystem::path& house, const std::filesystem::path& file);

} // namespace controller::maintenance
