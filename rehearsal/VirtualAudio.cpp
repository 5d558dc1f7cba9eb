#include "rehearsal/VirtualAudio.h"

#include "rehearsal/AgentFace.h"

void VirtualAudio::CreateStream() {
    constexpr std::string_view kCall = "IDigitalAudio.CreateStream";
    m_trace.CallBegins(kCall);
    AnswerAfter(m_settings.streamReadyAfter, "AudioStreamCreated", &IAnnouncementAgent::AudioStreamCreated);
    m_trace.React(kCall);
}

void VirtualAudio::ReleaseStream() {
    m_schedule.CancelAllOf(this);
    m_trace.Call("IDigitalAudio.ReleaseStream");
}

void VirtualAudio::PlayFile(const std::string& path) {
    constexpr std::string_view kCall = "IDigitalAudio.PlayFile";
    m_trace.CallBegins(kCall, path);
    AnswerAfter(m_settings.playDoneAfter, "AudioAnnouncementComplete",
                &IAnnouncementAgent::AudioAnnouncementComplete);
    m_trace.React(kCall);
}

void VirtualAudio::AnswerAfter(std::optional<VirtualTime> delay, const char* operation, Callback callback) {
    if (!delay)
        return;
    m_schedule.Add(*delay, this, 0, [this, operation, callback] {
        m_trace.Tell(&TraceSink::CalledBack, operation);
        EnterFace(m_registry, m_trace, operation, [&](IAnnouncementAgent& face) { (face.*callback)(); });
    });
}
