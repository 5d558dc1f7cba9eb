#include "rehearsal/VirtualAudio.h"

#include "rehearsal/AgentFace.h"

void VirtualAudio::CreateStream() {
    m_trace.Call("IDigitalAudio.CreateStream");
    AnswerAfter(m_settings.streamReadyAfter, "AudioStreamCreated", &IAnnouncementAgent::AudioStreamCreated);
}

void VirtualAudio::ReleaseStream() {
    m_schedule.CancelAllOf(this);
    m_trace.Call("IDigitalAudio.ReleaseStream");
}

void VirtualAudio::PlayFile(const std::string& path) {
    m_trace.Call("IDigitalAudio.PlayFile", path);
    AnswerAfter(m_settings.playDoneAfter, "AudioAnnouncementComplete",
                &IAnnouncementAgent::AudioAnnouncementComplete);
}

void VirtualAudio::AnswerAfter(std::optional<VirtualTime> delay, const char* operation, Callback callback) {
    if (!delay)
        return;
    m_schedule.Add(*delay, this, 0, [this, operation, callback] {
        m_trace.Tell(&TraceSink::CalledBack, operation);
        EnterFace(m_registry, m_trace, operation, [&](IAnnouncementAgent& face) { (face.*callback)(); });
    });
}
