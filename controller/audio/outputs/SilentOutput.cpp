#include "controller/audio/Output.h"

#include <stdexcept>

namespace controller::audio {

namespace {

class SilentOutput final : public IOutput {
public:
    [[nodiscard]] GstElement* CreateElement(const OutputContext& /*context*/) const override {
        return MakeBin("fakesink sync=true");
    }
};

} // namespace

std::unique_ptr<IOutput> CreateSilentOutput(const std::string& text) {
    if (!text.empty())
        throw std::invalid_argument("\"silent\" takes nothing behind it, not \"" + text + "\"");
    return std::make_unique<SilentOutput>();
}

} // namespace controller::audio
