#pragma once

#include "controller/state/AnnouncementRow.h"

#include <filesystem>

/// The announcements of a house, and its spoken sounds, as a text. Everything throws `std::runtime_error`,
/// which says what is wrong; what went well is printed on standard output.
namespace controller::maintenance {

/// Writes the announcements as XML text to a file; to standard output when the name is empty or "-". The
/// controller may be running.
void Export(const std::filesystem::path& dataFolder, const std::filesystem::path& file);

/// Puts the announcements of an XML text in place of those that are stored. The controller must not be
/// running. Spoken sounds of the text take the place of those of their name. Gives the announcements.
AnnouncementRows Import(const std::filesystem::path& dataFolder, const std::filesystem::path& file);

} // namespace controller::maintenance
