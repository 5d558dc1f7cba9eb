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
};

} // namespace controller
