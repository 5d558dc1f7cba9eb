#include "controller/audio/Output.h"

#include <stdexcept>

namespace controller::audio {

Output CreateSilentOutput(const std::string& text) {
    if (!text.empty())
        throw std::invalid_argument("\"silent\" takes nothing behind it, not \"" + text + "\"");
    return [](const OutputContext& /*context*/) {
        return MakeBin("fakesink sync=true");
    };
}

} // namespace controller::audio
