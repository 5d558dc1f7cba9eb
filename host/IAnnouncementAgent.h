#pragma once

#include <cstdint>

/// The agent's face for callbacks about the announcement that is playing. The agent publishes it at the
/// instance manager; the host looks it up there when a stream is ready or a file has been played. Without a
/// playing announcement the callbacks do nothing.
class IAnnouncementAgent {
public:
    static constexpr const char* kGuid = "{E869B37E-23C8-4334-9B26-0A96C0EF981C}";

    /// The stream that `IDigitalAudio::CreateStream` asked for is ready.
    virtual void AudioStreamCreated() = 0;

    /// The file that `IDigitalAudio::PlayFile` named has been played to its end, or cannot be played.
    virtual void AudioAnnouncementComplete() = 0;

    /// Whether the room belongs to the announcement that is playing.
    virtual bool IsRoomInCurrentAnnouncement(std::uint32_t roomId) = 0;

protected:
    ~IAnnouncementAgent() = default;
};
