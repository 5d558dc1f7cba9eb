#pragma once

#include <cstdint>
#include <string>

namespace controller {

/// How loud a sound of the media library is.
struct SoundLevelRow {
    std::string name;          ///< of its file
    std::string file;          ///< what tells the file that was measured from another one; empty: none was
    std::int64_t lufs = 0;     ///< hundredths
    std::int64_t truePeak = 0; ///< hundredths of dBTP
    bool isAsItIs = false;     ///< to be played so

    friend bool operator==(const SoundLevelRow& one, const SoundLevelRow& other) {
        return one.name == other.name && one.file == other.file && one.lufs == other.lufs &&
               one.truePeak == other.truePeak && one.isAsItIs == other.isAsItIs;
    }
};

} // namespace controller
