#pragma once

#include "controller/media/Converter.h"

#include <string>

namespace controller {

/// What becomes of a file that somebody brings: its content decides, and never its name.
struct Upload {
    std::string name;         ///< that it will have: a good one, with the ending of what it is
    std::string content;      ///< that will be stored
    bool isConverted = false; ///< it is another one than came
    std::string thumbnail;    ///< of a picture
};

/// What plays as it is (a WAV file of 16 bits, mono or stereo) stays as it is, unless a
/// part of it is wanted; every other sound becomes such a file. Pictures become what screens need of them.
/// Not for the driver thread. Throws `MediaError`.
[[nodiscard]] Upload MakeUpload(const std::string& name,
                                const std::string& content,
                                const SoundSpan& span,
                                const Converter& converter);

} // namespace controller
