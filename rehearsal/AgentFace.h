#pragma once

#include "host/FindService.h"
#include "host/IAnnouncementAgent.h"
#include "rehearsal/Trace.h"

/// Goes into the agent through the face that it has published; without one, the operation has no handler.
template <class Entry>
void EnterFace(const IInstanceManager& registry, Trace& trace, const char* operation, const Entry& entry) {
    auto* const face = FindService<IAnnouncementAgent>(registry);
    if (face == nullptr) {
        trace.Tell(&TraceSink::HandlerMissing, operation);
        return;
    }
    trace.Enter([&] { entry(*face); });
}
