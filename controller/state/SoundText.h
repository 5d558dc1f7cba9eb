#pragma once

#include "controller/state/SpokenSoundRow.h"

#include <filesystem>
#include <string>
#include <vector>

namespace controller {

class StateDatabase;

/// What is written of the sounds of the media library beside the announcements.
struct SoundText {
    std::vector<SpokenSoundRow> spoken;
    std::vector<std::string> asItIs; ///< the names of those that are played as loud as they are
};

/// Sounds in the XML text of all announcements, behind those: each spoken one a "spoken_sound" element, and a
/// "sound_as_it_is" element for each that is played so.
namespace sound_text {

/// Whether an element of this name is no announcement.
[[nodiscard]] bool IsElement(const std::string& name);

/// The elements.
[[nodiscard]] std::string Of(const SoundText& sounds);

/// The sounds of such a text. Throws `std::runtime_error`, which says what is wrong.
[[nodiscard]] SoundText Split(const std::string& text);

/// Those of a file. Throws `std::runtime_error`, which names the file.
[[nodiscard]] SoundText Read(const std::filesystem::path& file);

/// Puts them beside those that the database has.
void Write(const SoundText& sounds, StateDatabase& database);

} // namespace sound_text

} // namespace controller
