#pragma once

#include "controller/audio/Gst.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace controller::audio {

class DeviceSearch;

/// For whom an output opens, and with what help.
struct OutputContext {
    std::uint32_t roomId = 0;
    unsigned take = 1;                                     ///< Counts the engine's streams, from 1.
    std::function<void(const std::string& reason)> silent; ///< Nothing will be heard, and why. Any thread.
    std::shared_ptr<DeviceSearch> devices;
};

/// A place where a room's sound can go: gives an element or bin, floating, whose "sink" pad takes raw audio;
/// what arrives there has been converted to what the pad asks for. Called on a thread of its own, so it may
/// block.
/// @throws std::runtime_error that says why there can be no sound.
using Output = std::function<GstElement*(const OutputContext& context)>;

/// A kind of output: one row of the table in Outputs.cpp, one source file.
struct OutputKind {
    const char* kind;
    const char* form;
    const char* meaning;
    /// `text` is what follows the kind. Opens nothing.
    /// @throws std::invalid_argument when it is not what the kind needs.
    Output (*create)(const std::string& text);
};

Output CreateAutoOutput(const std::string& text);
Output CreateSilentOutput(const std::string& text);
Output CreateFileOutput(const std::string& text);
Output CreateGstreamerOutput(const std::string& text);

struct OutputDescription;

/// @throws std::invalid_argument for an unknown kind or an unusable text.
[[nodiscard]] Output CreateOutput(const OutputDescription& description);

} // namespace controller::audio
