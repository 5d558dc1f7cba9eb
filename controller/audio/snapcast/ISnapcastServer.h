#pragma once

#include "controller/audio/snapcast/SnapcastState.h"

#include <functional>
#include <string>
#include <vector>

namespace controller::audio {

/// The control of one Snapcast server. Nothing waits for it: what it is told it does in that order, and each
/// answer comes by a call on the driver thread: an empty text, or why not.
class ISnapcastServer {
public:
    using Answered = std::function<void(const std::string& error)>;

    virtual ~ISnapcastServer() = default;

    /// What there is now is told to whoever made this, soon; and so is every change from then on.
    virtual void Look() = 0;

    virtual void SetVolume(const std::string& client, const SnapcastVolume& volume, Answered answered) = 0;
    virtual void SetStream(const std::string& group, const std::string& stream, Answered answered) = 0;
    virtual void SetMute(const std::string& group, bool isMuted, Answered answered) = 0;

    /// Those that were in the group and are not in the list get one of their own, with the same stream.
    virtual void
    SetClients(const std::string& group, const std::vector<std::string>& clients, Answered answered) = 0;
};

} // namespace controller::audio
