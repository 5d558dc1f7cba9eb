#pragma once

#include "controller/audio/ISoundEngine.h"

namespace controller {

/// No sound: streams are ready and closed, and files played, as soon as that is asked.
class NoEngine final : public audio::ISoundEngine {
public:
    void OpenStream(OnReady onReady) override { onReady(); }
    void AddRoom(std::uint32_t /*roomId*/) override {}
    void RemoveRoom(std::uint32_t /*roomId*/) override {}
    void SetVolume(std::uint32_t /*roomId*/, unsigned /*volume*/) override {}
    void Play(const audio::PlayedSound& /*sound*/, OnDone onDone) override { onDone({"", {}, {}}); }
    void StopPlay() override {}
    void CloseStream(OnClosed onClosed) override {
        if (onClosed)
            onClosed();
    }
};

} // namespace controller
