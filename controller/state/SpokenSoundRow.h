#pragma once

#include <string>

namespace controller {

/// A sound of the media library that is spoken, and what it is made of.
struct SpokenSoundRow {
    std::string name; ///< as a file of the media folder would have it
    std::string text; ///< empty: takes the row away
    std::string voice;
    unsigned speed = 0; ///< percent
    std::string chime;

    friend bool operator==(const SpokenSoundRow& one, const SpokenSoundRow& other) {
        return one.name == other.name && one.text == other.text && one.voice == other.voice &&
               one.speed == other.speed && one.chime == other.chime;
    }
};

} // namespace controller
