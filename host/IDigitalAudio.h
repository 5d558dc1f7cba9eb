#pragma once

#include <string>

/// The host's audio service: one stream for the announcement that is playing. While a stream is open the host
/// may ask `IAnnouncementAgent::IsRoomInCurrentAnnouncement` which rooms belong to it.
class IDigitalAudio {
public:
    static constexpr const char* kGuid = "{3C11AB22-A8E6-45c7-9C22-1EC400C6AF45}";

    /// Opens a stream; once it is ready the host calls `IAnnouncementAgent::AudioStreamCreated`.
    virtual void CreateStream() = 0;

    /// Closes the stream.
    virtual void ReleaseStream() = 0;

    /// Plays the file over the stream; at its end the host calls
    /// `IAnnouncementAgent::AudioAnnouncementComplete`.
    virtual void PlayFile(const std::string& path) = 0;

protected:
    ~IDigitalAudio() = default;
};
