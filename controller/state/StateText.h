#pragma once

#include "controller/state/AnnouncementRow.h"
#include "controller/state/SoundText.h"

#include <filesystem>
#include <string>
#include <vector>

/// All announcements as one XML text: an "announcements" element, as the agent saves and takes its state.
namespace controller::state_text {

/// The agent's state: what it gave itself when these rows were written, to the byte.
[[nodiscard]] std::string ForAgent(const AnnouncementRows& rows);

/// The same with what the house adds, each as a "house" element at the end of its announcement, and the
/// sounds behind all of them.
[[nodiscard]] std::string ForPeople(const AnnouncementRows& rows, const SoundText& sounds = {});

/// The rows of such a text, in its order, without its sounds. Keys are the ids that the announcements
/// carry, or the next ones where that order would be lost. Throws `std::runtime_error`, which says what is
/// wrong.
[[nodiscard]] AnnouncementRows Split(const std::string& text);

/// The rows of a file. Throws `std::runtime_error`, which names the file.
[[nodiscard]] AnnouncementRows Read(const std::filesystem::path& file);

/// Writes the text to a file; in its place whole or not at all, unless the file is a device or a pipe.
void Write(const std::filesystem::path& file, const std::string& text);

} // namespace controller::state_text
