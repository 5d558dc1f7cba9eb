#pragma once

#include "controller/agent/ISoundEngine.h"

#include <utility>

namespace controller {

/// The real engine behind the interface.
class EngineSound final : public ISoundEngine {
public:
    EngineSound(std::vector<audio::RoomConfig> rooms, audio::EngineServices services)
        : m_engine(std::move(rooms), std::move(services)) {}

    void OpenStream(std::function<void()> onReady) override { m_engine.OpenStream(std::move(onReady)); }
    void AddRoom(std::uint32_t room) override { m_engine.AddRoom(room); }
    void RemoveRoom(std::uint32_t room) override { m_engine.RemoveRoom(room); }
    void SetVolume(std::uint32_t room, unsigned volume) override { m_engine.SetVolume(room, volume); }
    void Play(const std::string& file, std::function<void(const audio::PlayResult&)> onDone) override {
        m_engine.Play(file, std::move(onDone));
    }
    void CloseStream(std::function<void()> onClosed) override { m_engine.CloseStream(std::move(onClosed)); }

private:
    audio::AudioEngine m_engine;
};

} // namespace controller
