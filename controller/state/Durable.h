#pragma once

#include <filesystem>

/// Files that survive a loss of power. Everything throws `std::filesystem::filesystem_error`.
namespace controller::durable {

/// Waits until what the file holds is on the disk.
void Sync(const std::filesystem::path& file);

/// Puts `from` in the place of `to`, which is one or the other at every moment. Both are in one folder, and
/// what `from` holds is on the disk.
void Replace(const std::filesystem::path& from, const std::filesystem::path& to);

} // namespace controller::durable
