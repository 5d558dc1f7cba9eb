#pragma once

#include "host/IRoomProxy.h"
#include "rehearsal/Trace.h"

#include <cstdint>

/// One room's interface.
class VirtualRoom final : public IRoomProxy {
public:
    VirtualRoom(std::uint32_t id, Trace& trace) : m_id(id), m_trace(trace) {}

    void SetUpAudio() override { m_trace.Call("IRoomProxy.SetUpAudio", m_id); }
    void SetAudioVolume(std::uint32_t volume) override {
        m_trace.Call("IRoomProxy.SetAudioVolume", m_id, volume);
    }
    void RestoreAudioState() override { m_trace.Call("IRoomProxy.RestoreAudioState", m_id); }
    void SetUpVideo() override { m_trace.Call("IRoomProxy.SetUpVideo", m_id); }
    void RestoreVideoState() override { m_trace.Call("IRoomProxy.RestoreVideoState", m_id); }
    void CancelRestoringState() override { m_trace.Call("IRoomProxy.CancelRestoringState", m_id); }

private:
    const std::uint32_t m_id;
    Trace& m_trace;
};
