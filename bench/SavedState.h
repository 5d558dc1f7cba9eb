#pragma once

#include <cstddef>
#include <string>

/// One announcement of the saved state: sound and message, two rooms, two navigators.
[[nodiscard]] std::string AnnouncementText(std::size_t id);

/// A saved state of so many announcements, with the ids from 1.
[[nodiscard]] std::string SavedState(std::size_t count);
