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

std::vector<Health> AskSilent(const std::vector<std::string>& texts, const OutputContext& /*context*/) {
    return std::vector<Health>(texts.size(), {Health::State::Silent, ""});
}

} // namespace controller::audio
