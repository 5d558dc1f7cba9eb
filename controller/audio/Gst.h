#pragma once

#include <memory>
#include <string>

#include <gst/gst.h>

namespace controller::audio {

struct GstUnref {
    void operator()(gpointer object) const { gst_object_unref(object); }
};
template <typename T>
using GstPtr = std::unique_ptr<T, GstUnref>;

/// Starts GStreamer, once in a process; later calls cost nothing. From then on the process ignores SIGPIPE,
/// unless it handles it. Any thread.
/// @throws std::runtime_error
void StartGstreamer();

/// An element by its factory's name, floating.
/// @throws std::runtime_error when its plug-in is not installed.
[[nodiscard]] GstElement* MakeElement(const char* factory);

/// A bin from its description, floating; its first free input is its "sink" pad.
/// @throws std::runtime_error that says what is wrong with the description.
[[nodiscard]] GstElement* MakeBin(const std::string& description);

/// What an error message says, in one line, with the name of the element that said it.
[[nodiscard]] std::string ErrorText(GstMessage* message);

} // namespace controller::audio
