#include "tests/random/PlayRecorder.h"

void PlayRecorder::Restart() {
    m_trace.Flush();
    m_text.str("");
    m_begin.reset();
    m_numbers.clear();
}

std::string PlayRecorder::Text() {
    m_trace.Flush();
    return m_text.str();
}

VirtualTime PlayRecorder::Since(VirtualTime now) {
    if (!m_begin)
        m_begin = now;
    return now - *m_begin;
}

std::uint32_t PlayRecorder::NumberOf(std::uint32_t timerId) {
    if (timerId == 0)
        return 0;
    const auto next = static_cast<std::uint32_t>(m_numbers.size() + 1);
    return m_numbers.try_emplace(timerId, next).first->second;
}

void PlayRecorder::StepBegins(VirtualTime now, const Step& step) {
    m_next.StepBegins(now, step);
    m_trace.StepBegins(Since(now), step);
}

void PlayRecorder::Called(VirtualTime now, const HostCall& call) {
    m_next.Called(now, call);
    if (call.operation == "VqBaseDriver.AddTimer")
        return;
    HostCall shown = call;
    if (call.operation == "ITimerManager.AddTimer")
        shown.returned = NumberOf(std::get<std::uint32_t>(call.returned));
    if (call.operation == "ITimerManager.KillTimer")
        shown.arguments = Arguments(static_cast<std::int64_t>(
            NumberOf(static_cast<std::uint32_t>(std::get<std::int64_t>(call.arguments[0])))));
    m_trace.Called(Since(now), shown);
}

void PlayRecorder::TimerFired(VirtualTime now, std::uint32_t timerId, TimerOwner owner) {
    m_next.TimerFired(now, timerId, owner);
    if (owner == TimerOwner::Announcement)
        m_trace.TimerFired(Since(now), NumberOf(timerId), owner);
}

void PlayRecorder::CalledBack(VirtualTime now, std::string_view operation) {
    m_next.CalledBack(now, operation);
    m_trace.CalledBack(Since(now), operation);
}

void PlayRecorder::Replied(VirtualTime now, const std::string& xml) {
    m_next.Replied(now, xml);
    m_trace.Replied(Since(now), xml);
}

void PlayRecorder::Saved(VirtualTime now, const std::string& xml) {
    m_next.Saved(now, xml);
    m_trace.Saved(Since(now), xml);
}

void PlayRecorder::Answered(VirtualTime now, bool answer) {
    m_next.Answered(now, answer);
    m_trace.Answered(Since(now), answer);
}

void PlayRecorder::HandlerMissing(VirtualTime now, std::string_view name) {
    m_next.HandlerMissing(now, name);
    m_trace.HandlerMissing(Since(now), name);
}

void PlayRecorder::Thrown(VirtualTime now, std::string_view type, std::string_view text) {
    m_next.Thrown(now, type, text);
    m_trace.Thrown(Since(now), type, text);
}

void PlayRecorder::ReactionBegins(VirtualTime now, std::string_view operation) {
    m_next.ReactionBegins(now, operation);
}

void PlayRecorder::GoesOn(VirtualTime now, std::string_view operation) {
    m_next.GoesOn(now, operation);
    m_trace.GoesOn(Since(now), operation);
}
