#pragma once

#include "controller/access/Access.h"
#include "controller/announcements/Announcements.h"
#include "controller/announcements/PassingSounds.h"
#include "controller/announcements/PlayProgress.h"
#include "controller/announcements/PlayQueue.h"
#include "controller/announcements/PlayStop.h"
#include "controller/api/ApiCall.h"
#include "controller/api/OutputDesk.h"
#include "controller/api/streams/EventStreams.h"
#include "controller/api/streams/HouseWatch.h"
#include "controller/api/streams/RecentEvents.h"
#include "controller/driver/DriverThread.h"
#include "controller/driver/Worker.h"
#include "controller/events/EventFeed.h"
#include "controller/house/House.h"
#include "controller/media/MediaShelf.h"
#include "controller/media/OneTimeSounds.h"
#include "controller/media/SoundLevels.h"
#include "controller/rooms/Popups.h"
#include "controller/rooms/RoomVolumes.h"
#include "controller/rooms/ScreenSpeakers.h"
#include "controller/rooms/Variables.h"
#include "controller/speech/SpokenSounds.h"
#include "controller/state/StateStore.h"

#include <chrono>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>

namespace controller {

/// The parts of the controller that the API shows and drives. All are borrowed for life.
struct ControllerParts {
    const House& house;
    DriverThread& driver;
    EventFeed& feed;
    Announcements& announcements;
    PlayQueue& queue;
    PlayStop& stop;
    PlayProgress& progress;
    Popups& popups;
    ScreenSpeakers& speakers;
    Variables& variables;
    RoomVolumes& volumes;
    Speech& speech;
    SpokenSounds& spoken;
    PassingSounds& passing;
    OneTimeSounds& oneTime;
    SoundLevels& levels;
    std::function<void(const SoundLevels::Entry&, WriteDone)> keepLevel;
    StateStore& store;
    Log& log;
    std::string moduleFile;                ///< of the agent, for rehearsals
    std::filesystem::path thumbnailFolder; ///< where small pictures are kept
    std::function<bool()> isAgentRunning;
    OutputDesk outputs;
};

/// What a handler works with.
struct ApiContext {
    ControllerParts& parts;
    Access& access;
    HouseWatch& watch;
    EventStreams& streams;
    RecentEvents& recent;
    MediaShelf& media;
    Worker& worker;     ///< for what would block the driver thread
    Worker& converting; ///< for files that come, which take so long that nothing else waits for them
    std::chrono::system_clock::time_point started;
    std::map<unsigned, std::uint64_t> replies; ///< how many, by status
    /// How many are under way.
    std::shared_ptr<unsigned> uploads = std::make_shared<unsigned>(0);
    std::shared_ptr<unsigned> thumbnails = std::make_shared<unsigned>(0);
    std::shared_ptr<unsigned> rehearsals = std::make_shared<unsigned>(0);
};

/// Counts one more as long as what it gives lives, which may be longer than the API does.
[[nodiscard]] inline std::shared_ptr<void> CountIn(const std::shared_ptr<unsigned>& counter) {
    ++*counter;
    return {nullptr, [counter](void*) {
                --*counter;
            }};
}

/// What is done elsewhere for a call. It goes from thread to thread as a whole, so that it ends, and what it
/// holds, on the driver thread.
template <class Work, class Done>
struct Errand {
    ApiCallPointer call;
    Work work;
    Done done;
    std::exception_ptr failure = nullptr;
    std::optional<std::invoke_result_t<Work>> result = std::nullopt;

    void Run() noexcept {
        try {
            result.emplace(work());
        } catch (...) {
            failure = std::current_exception();
        }
    }

    void Answer() {
        call->Guard([this] {
            if (failure)
                std::rethrow_exception(failure);
            done(*result);
        });
    }
};

/// Runs `work` on the worker and then `done` with what it gave, on the driver thread; what either throws
/// answers the call.
template <class Work, class Done>
void Elsewhere(Worker& worker, ApiContext& context, const ApiCallPointer& call, Work work, Done done) {
    auto errand =
        std::make_shared<Errand<Work, Done>>(Errand<Work, Done>{call, std::move(work), std::move(done)});
    worker.Submit([&driver = context.parts.driver, errand = std::move(errand)]() mutable {
        errand->Run();
        driver.Post("an answer of the API", [errand = std::move(errand)] { errand->Answer(); });
    });
}

template <class Work, class Done>
void Elsewhere(ApiContext& context, const ApiCallPointer& call, Work work, Done done) {
    Elsewhere(context.worker, context, call, std::move(work), std::move(done));
}

} // namespace controller
