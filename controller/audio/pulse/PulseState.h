#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace controller::audio {

/// The volume of each channel, as the server counts: cubic, 65536 is that of the samples themselves.
using PulseVolume = std::vector<std::uint32_t>;

/// What some program plays on the sound server.
struct PulseStream {
    std::uint32_t index = 0; ///< While the server lives, no other stream gets it.
    std::uint32_t sink = 0;
    std::string program; ///< As the server remembers volumes: the program's next stream gets this one's.
    PulseVolume volume;
    bool isOurs = false;   ///< An announcement, be it another program's.
    bool isPaused = false; ///< By its program.
};

/// What the sound server said last.
struct PulseState {
    bool isThere = false;
    std::string reason; ///< Why it is not.
    std::map<std::string, std::uint32_t> sinks;
    std::map<std::string, std::string> names; ///< of the sinks, for people
    std::string defaultSink;
    std::vector<PulseStream> streams; ///< Those that have a volume which can be set.
};

} // namespace controller::audio
