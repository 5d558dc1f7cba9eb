#pragma once

#include "controller/agent/DigitalAudio.h"
#include "controller/agent/NowPlaying.h"
#include "controller/announcements/PlayQueue.h"
#include "controller/driver/Alarm.h"
#include "controller/driver/DriverOnly.h"
#include "controller/events/EventFeed.h"

#include <cstdint>

namespace controller {

/// Stops what plays, by what a host may tell the agent: the sound has ended, the popup was dismissed. The
/// agent then lets go of the announcement by its own timers: what has not been heard or shown by then never
/// is. Driver thread only.
class PlayStop {
public:
    /// All are borrowed for life.
    struct Parts {
        const NowPlaying& playing;
        DigitalAudio& audio;
        Announcements& announcements;
        PlayQueue& queue;
        EventFeed& feed;
        IScheduler& scheduler;
    };

    explicit PlayStop(Parts parts);

    /// The sound fades out in every room and the popups go; of what is not ready to play yet, nothing comes.
    /// False when nothing plays.
    bool Stop();

    /// What plays wants a popup shown. True when it has been stopped: then the popup is not to be shown, and
    /// the agent is told soon that it was dismissed.
    [[nodiscard]] bool RefusePopup();

private:
    void Dismiss();

    const Parts m_parts;
    std::uint64_t m_stopped = 0; ///< the number of the playing that was stopped last
    Alarm m_dismissal;
    DriverOnly m_driverOnly;
};

} // namespace controller
