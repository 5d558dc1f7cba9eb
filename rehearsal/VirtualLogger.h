#pragma once

#include "host/ILogger.h"
#include "rehearsal/Trace.h"

#include <string>

/// The log of objects that are not drivers.
class VirtualLogger final : public ILogger {
public:
    explicit VirtualLogger(Trace& trace) : m_trace(trace) {}

    void Log(int level, const std::string& text) override { m_trace.Call("ILogger.Log", level, text); }

private:
    Trace& m_trace;
};
