#pragma once

#include "controller/audio/AudioEngine.h"
#include "controller/audio/DeviceSearch.h"
#include "controller/audio/Mailbox.h"
#include "controller/audio/Workers.h"

#include <functional>
#include <memory>
#include <set>
#include <string>

namespace controller::audio {

/// What the engine and its rooms share. Driver thread, except for mailbox, workers and devices.
struct EngineContext {
    EngineServices services;
    EngineLimits limits;
    std::shared_ptr<Mailbox> mailbox;
    Workers workers;
    std::shared_ptr<DeviceSearch> devices = std::make_shared<DeviceSearch>();
    std::set<std::string> noticesSaid;

    void Log(LogLevel level, const std::string& text) const {
        if (services.log)
            services.log(level, text);
    }

    /// Logs a text the first time that it comes.
    void Notice(const std::string& text) {
        if (noticesSaid.insert(text).second)
            Log(LogLevel::Info, text);
    }
};

} // namespace controller::audio
