#include "controller/audio/pulse/PulseSink.h"

#include "controller/audio/Held.h"

namespace controller::audio {

void MarkAsAnnouncement(GstElement* pulsesink) {
    GstStructure* properties =
        gst_structure_new("props", "media.role", G_TYPE_STRING, "announcement", nullptr); // NOLINT(*-vararg)
    g_object_set(pulsesink, "client-name", "Announcements", "stream-properties",
                 properties, // NOLINT(*-vararg)
                 nullptr);
    gst_structure_free(properties);
}

void LowerOthers(const std::string& sink, const Duck& duck, const OutputContext& context) {
    if (context.pulse && context.held)
        context.held->Keep(context.pulse->Lower(sink, duck));
}

} // namespace controller::audio
