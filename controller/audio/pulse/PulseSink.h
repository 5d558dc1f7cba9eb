#pragma once

#include "controller/audio/Gst.h"
#include "controller/audio/Output.h"
#include "controller/audio/pulse/PulseDesk.h"

#include <optional>
#include <string>

namespace controller::audio {

/// A GStreamer sink that the sound server is told the purpose of, for those who have rules of their own for
/// announcements, and by which it is known that it is not to be lowered.
void MarkAsAnnouncement(GstElement* pulsesink);

/// Lowers, and pauses, what others play on the sink until the room has heard its last sample. Gives them the
/// time that it takes.
void LowerOthers(const std::string& sink, const Duck& duck, const OutputContext& context);

} // namespace controller::audio
