#pragma once

#include "controller/audio/AudioEngine.h"
#include "controller/audio/EngineContext.h"
#include "controller/audio/Output.h"
#include "controller/audio/Playback.h"
#include "controller/audio/RoomOutput.h"
#include "controller/audio/Ticker.h"
#include "controller/audio/Timeline.h"
#include "controller/driver/Alarm.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <set>
#include <utility>
#include <vector>

namespace controller::audio {

/// The stream: its clock and its rooms. Another Play on it needs a new clock, since outputs end with a clip.
struct AudioEngine::Stream {
    std::shared_ptr<Timeline> timeline;
    unsigned take = 0;
    bool isUrgent = false;
    std::set<std::uint32_t> rooms;
    std::set<std::uint32_t> joining; ///< Those of them whose turn to open has not come.
};

struct AudioEngine::CurrentPlay {
    unsigned number = 0;
    OnDone onDone;
    std::chrono::steady_clock::time_point asked;
    std::chrono::microseconds startDelay{-1};
    bool isStopped = false;
    std::shared_ptr<Playback> playback;
    std::set<std::uint32_t> heard; ///< Rooms that left the stream when they had heard the clip.
};

/// A place that is tried, or was, and is being closed.
struct AudioEngine::Try {
    Try(IScheduler& driver, OnTried theOnTried)
        : onTried(std::move(theOnTried))
        , patience(driver, "the end of patience with an output that is tested") {}

    OnTried onTried;
    Alarm patience;
    bool isOver = false;        ///< and told; its output is being closed
    std::function<void()> next; ///< what waits for that
};

/// With what help places are asked, and looked for.
[[nodiscard]] OutputContext HelpWithoutRoom(const EngineContext& context);

struct AudioEngine::PendingClose {
    OnClosed onClosed;
    std::vector<std::pair<const RoomOutput*, std::shared_ptr<IRoomPlayer>>> players;
};

} // namespace controller::audio
