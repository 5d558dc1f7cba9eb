#pragma once

#include "controller/audio/AudioEngine.h"

#include <cstdint>
#include <functional>
#include <string>

namespace controller {

/// The audio engine, as the rest of the controller calls it; `audio::AudioEngine` has the meaning of each
/// operation.
class ISoundEngine {
public:
    virtual void OpenStream(std::function<void()> onReady) = 0;
    virtual void AddRoom(std::uint32_t room) = 0;
    virtual void RemoveRoom(std::uint32_t room) = 0;
    virtual void SetVolume(std::uint32_t room, unsigned volume) = 0;
    virtual void Play(const std::string& file, std::function<void(const audio::PlayResult&)> onDone) = 0;
    virtual void CloseStream(std::function<void()> onClosed) = 0;

protected:
    ~ISoundEngine() = default;
};

} // namespace controller
