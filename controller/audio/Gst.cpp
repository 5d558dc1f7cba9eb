#include "controller/audio/Gst.h"

#include <algorithm>
#include <stdexcept>

#include <signal.h>

namespace controller::audio {

namespace {

struct ErrorFree {
    void operator()(GError* error) const { g_error_free(error); }
};
using ErrorPtr = std::unique_ptr<GError, ErrorFree>;

/// An output that writes into a pipe or a socket must fail when the reader goes, not end the program. A
/// handler that somebody has set stays.
void IgnoreBrokenPipes() {
    struct sigaction action {};
    if (sigaction(SIGPIPE, nullptr, &action) == 0 && action.sa_handler == SIG_DFL)
        (void)signal(SIGPIPE, SIG_IGN); // Cannot fail for this signal.
}

} // namespace

void StartGstreamer() {
    IgnoreBrokenPipes();
    GError* raw = nullptr;
    if (gst_init_check(nullptr, nullptr, &raw))
        return;
    const ErrorPtr error(raw);
    throw std::runtime_error(std::string("GStreamer does not start: ") +
                             (error ? error->message : "no reason given"));
}

GstElement* MakeElement(const char* factory) {
    GstElement* element = gst_element_factory_make(factory, nullptr);
    if (!element)
        throw std::runtime_error(std::string("GStreamer has no element \"") + factory +
                                 "\"; its plug-in is not installed");
    return element;
}

GstElement* MakeBin(const std::string& description) {
    GError* raw = nullptr;
    GstElement* bin = gst_parse_bin_from_description_full(description.c_str(), TRUE, nullptr,
                                                          GST_PARSE_FLAG_FATAL_ERRORS, &raw);
    const ErrorPtr error(raw);
    const GstPtr<GstPad> input(bin ? gst_element_get_static_pad(bin, "sink") : nullptr);
    if (bin && input && !error)
        return bin;
    if (bin)
        gst_object_unref(gst_object_ref_sink(bin));
    throw std::runtime_error("\"" + description +
                             "\": " + (error ? error->message : "has no free input for the room's sound"));
}

std::string ErrorText(GstMessage* message) {
    GError* raw = nullptr;
    gst_message_parse_error(message, &raw, nullptr);
    const ErrorPtr error(raw);
    std::string text = error ? error->message : "unknown error";
    std::replace(text.begin(), text.end(), '\n', ' ');
    const char* source = GST_MESSAGE_SRC_NAME(message);
    return text + " (" + (source ? source : "unknown element") + ")";
}

} // namespace controller::audio
