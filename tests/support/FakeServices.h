#pragma once

#include "host/IAnnouncementAgent.h"
#include "host/IDigitalAudio.h"
#include "host/ILogger.h"
#include "tests/support/CallLog.h"
#include "tests/support/FakeTimers.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

/// Notes the lines of the log.
class FakeLogger final : public ILogger {
public:
    explicit FakeLogger(CallLog& log) : m_log(log) {}

    void Log(int level, const std::string& text) override;

private:
    CallLog& m_log;
};

/// Notes streams and files, and answers by itself when it is told after how long.
class FakeAudio final : public IDigitalAudio {
public:
    /// `findAgent` gives the face that answers go to, or null.
    FakeAudio(CallLog& log, FakeTimers& timers, std::function<IAnnouncementAgent*()> findAgent);

    void CreateStream() override;
    void ReleaseStream() override;
    void PlayFile(const std::string& path) override;

    /// Milliseconds from `CreateStream` to `AudioStreamCreated`, and from `PlayFile` to
    /// `AudioAnnouncementComplete`; unset: the host never answers.
    std::optional<std::uint64_t> streamReadyAfter;
    std::optional<std::uint64_t> playDoneAfter;

private:
    void AnswerAfter(const std::optional<std::uint64_t>& milliseconds,
                     const std::string& name,
                     void (IAnnouncementAgent::*answer)());

    CallLog& m_log;
    FakeTimers& m_timers;
    std::function<IAnnouncementAgent*()> m_findAgent;
};
