#include "tests/support/FakeServices.h"

void FakeLogger::Log(int level, const std::string& text) {
    m_log.Call("ILogger.Log(" + std::to_string(level) + ", " + text + ")");
}

FakeAudio::FakeAudio(CallLog& log, FakeTimers& timers, std::function<IAnnouncementAgent*()> findAgent)
    : m_log(log)
    , m_timers(timers)
    , m_findAgent(std::move(findAgent)) {}

void FakeAudio::CreateStream() {
    m_log.Call("IDigitalAudio.CreateStream()");
    AnswerAfter(streamReadyAfter, "AudioStreamCreated", &IAnnouncementAgent::AudioStreamCreated);
}

void FakeAudio::ReleaseStream() {
    m_timers.DropAnswers();
    m_log.Call("IDigitalAudio.ReleaseStream()");
}

void FakeAudio::PlayFile(const std::string& path) {
    m_log.Call("IDigitalAudio.PlayFile(" + path + ")");
    AnswerAfter(playDoneAfter, "AudioAnnouncementComplete", &IAnnouncementAgent::AudioAnnouncementComplete);
}

void FakeAudio::AnswerAfter(const std::optional<std::uint64_t>& milliseconds,
                            const std::string& name,
                            void (IAnnouncementAgent::*answer)()) {
    if (!milliseconds)
        return;
    m_timers.AnswerAfter(*milliseconds, name, [this, answer] {
        if (IAnnouncementAgent* const agent = m_findAgent(); agent != nullptr)
            (agent->*answer)();
    });
}
