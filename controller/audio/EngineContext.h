#pragma once

#include "controller/audio/AudioEngine.h"
#include "controller/audio/DeviceSearch.h"
#include "controller/audio/Mailbox.h"
#include "controller/audio/Workers.h"
#include "controller/audio/home_assistant/HomeAssistantDesk.h"
#include "controller/audio/multicast/PacketSender.h"
#include "controller/audio/page/PageDesk.h"
#include "controller/audio/pulse/PulseDesk.h"

#include <memory>
#include <utility>

namespace controller::audio {

class SnapcastDesk;

/// What the engine and its rooms share. Driver thread, except for mailbox, workers, devices, packets, houses
/// and the sound server.
struct EngineContext {
    EngineContext(EngineServices theServices, const EngineLimits& theLimits)
        : services(std::move(theServices))
        , limits(theLimits)
        , mailbox(std::make_shared<Mailbox>(services.driver)) {}

    const EngineServices services;
    const EngineLimits limits;
    const std::shared_ptr<Mailbox> mailbox;
    Workers workers;
    std::shared_ptr<DeviceSearch> devices = std::make_shared<DeviceSearch>();
    std::shared_ptr<PacketSender> packets = std::make_shared<PacketSender>();
    std::shared_ptr<HomeAssistantDesk> houses = std::make_shared<HomeAssistantDesk>(limits.houses);
    std::shared_ptr<PulseDesk> pulse = std::make_shared<PulseDesk>(mailbox);
    std::shared_ptr<SnapcastDesk> snapcast; ///< made by the engine
    std::shared_ptr<PageDesk> pages = std::make_shared<PageDesk>(mailbox);
};

} // namespace controller::audio
