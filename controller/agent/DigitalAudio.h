#pragma once

#include "controller/audio/ISoundEngine.h"
#include "controller/driver/Alarm.h"
#include "controller/driver/DriverOnly.h"
#include "controller/driver/IScheduler.h"
#include "controller/driver/Log.h"
#include "controller/events/EventFeed.h"
#include "controller/rooms/RoomVolumes.h"
#include "host/IDigitalAudio.h"
#include "host/IInstanceManager.h"

#include <functional>
#include <set>
#include <string>

namespace controller {

/// The agent's audio service on the audio engine: one stream, the rooms that it reaches, and the file played
/// over it.
///
/// The agent is told what becomes of stream and file through the `IAnnouncementAgent` that is published,
/// always by posted work and never from inside a call of its own; answers for a stream that has been
/// released, or that an announcement no longer waits for, are dropped. Driver thread only.
class DigitalAudio final : public IDigitalAudio {
public:
    /// Looks up the file behind a name that the agent gives, elsewhere, and tells on the driver thread which
    /// it is, or why there is none.
    using Found = std::function<void(const audio::PlayedSound& sound, const std::string& error)>;
    using Locate = std::function<void(const std::string& path, Found found)>;

    struct Parts {
        audio::ISoundEngine& engine;
        RoomVolumes& volumes;
        const IInstanceManager& services;
        EventFeed& feed;
        Log& log;
        IScheduler& driver;
        Locate locate;
    };

    /// The agent gives a file up, and its rooms back, 20 s after it asked for it. It is told of the end so
    /// long after asking at the latest: it then leaves the rooms 2 s, in which the longest sound (20 s, and
    /// what it takes to begin) is heard whole.
    static constexpr std::chrono::milliseconds kLatestAnswer{19500};

    explicit DigitalAudio(Parts parts)
        : m_parts(std::move(parts))
        , m_latestAnswer(m_parts.driver, "the end of a long sound") {}
    DigitalAudio(const DigitalAudio&) = delete;
    DigitalAudio& operator=(const DigitalAudio&) = delete;
    ~DigitalAudio();

    void CreateStream() override;
    void ReleaseStream() override;
    void PlayFile(const std::string& path) override;

    /// The room hears the stream from now on, and its volume is kept for later.
    void AddRoom(std::uint32_t room);

    /// The room hears the stream no more, and goes back to its volume.
    void RemoveRoom(std::uint32_t room);

    /// Ends the sound of the announcement that plays, at whatever step it is: what is heard fades out, and a
    /// file that has not begun, or that is asked for later, counts as played. The agent is told as of any
    /// end.
    void Stop();

    /// The announcement is over: a stream that it asked for and never released is released, so that no answer
    /// reaches the next announcement and no room stays taken.
    void AnnouncementEnded();

    /// Ends the sound, gives every room back, and calls back when the outputs are closed.
    void Close(std::function<void()> onClosed);

    [[nodiscard]] bool IsPlaying() const noexcept { return m_isPlaying; }

private:
    enum class Answer { StreamCreated, Complete };

    void Tell(Answer answer);
    void Start(const std::string& path, const audio::PlayedSound& sound, const std::string& error);
    void Ended(const std::string& path, const std::string& error);
    void TellComplete();
    void Forget();

    Parts m_parts;
    std::uint64_t m_stream = 0; ///< counts streams; an answer for any other than the present one is dropped
    bool m_isWanted = false;    ///< the agent has asked for the stream and not released it
    bool m_isPlaying = false;
    bool m_isTold = false; ///< the agent, of the file's end
    bool m_isStopped = false;
    Alarm m_latestAnswer;
    std::set<std::uint32_t> m_rooms;
    DriverOnly m_driverOnly;
};

} // namespace controller
