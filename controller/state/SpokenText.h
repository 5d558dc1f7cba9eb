#pragma once

#include "controller/state/SpokenSoundRow.h"

#include <filesystem>
#include <string>
#include <vector>

/// Spoken sounds in the XML text of all announcements: each a "spoken_sound" element behind those.
namespace controller::spoken_text {

constexpr const char* kElement = "spoken_sound";

/// The elements.
[[nodiscard]] std::string Of(const std::vector<SpokenSoundRow>& sounds);

/// The sounds of such a text. Throws `std::runtime_error`, which says what is wrong.
[[nodiscard]] std::vector<SpokenSoundRow> Split(const std::string& text);

/// Those of a file. Throws `std::runtime_error`, which names the file.
[[nodiscard]] std::vector<SpokenSoundRow> Read(const std::filesystem::path& file);

} // namespace controller::spoken_text
