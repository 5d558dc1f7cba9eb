#pragma once

#include "framework/AssertWriter.h"
#include "rehearsal/Trace.h"

/// Failed internal checks of this thread, for as long as it lives.
class TracedAsserts final : public AssertWriter {
public:
    explicit TracedAsserts(Trace& trace) : m_trace(trace) {}

    void Write(const char* file, int line, const vq::StackTrace& /*stack*/) override {
        m_trace.Call("vq.AssertWrite", file, line);
    }

private:
    Trace& m_trace;
};
