#include "convert/Decoder.h"

#include "convert/Report.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

#include <gst/app/gstappsink.h>

namespace {

constexpr GstClockTime kSlice = 5 * GST_MSECOND;
const char* const kNotKnown = "cannot be decoded here: ";

/// What sounds are decoded with. What is not installed is left out; nothing else can be loaded later.
constexpr const char* kPlugIns[] = {
    "coreelements", "app",           "playback",     "typefindfunctions",
    "audioconvert", "audioresample", "audioparsers", "wavparse",
    "aiff",         "auparse",       "adpcmdec",     "alaw",
    "mulaw",        "id3demux",      "apetag",       "ogg",
    "vorbis",       "opus",          "flac",         "mpg123",
    "isomp4",       "matroska",      "faad",         "fdkaac",
    "speex",        "wavpack",
};

std::string TextOf(GError* error) {
    std::string text = error != nullptr ? error->message : "for no stated reason";
    g_clear_error(&error);
    std::replace(text.begin(), text.end(), '\n', ' ');
    return text;
}

/// What finds out what the file is; but GStreamer's reader of AIFF may begin before it is joined to what
/// follows, and is joined beforehand.
const char* DecoderFor(const MappedFile& file) {
    const bool isAiff = file.Size() >= 12 && std::memcmp(file.Data(), "FORM", 4) == 0 &&
                        std::memcmp(file.Data() + 8, "AIF", 3) == 0;
    return isAiff ? "aiffparse" : "decodebin expose-all-streams=false caps=audio/x-raw";
}

GstElement* MakePipeline(const MappedFile& file) {
    const std::string description =
        std::string("appsrc name=file stream-type=random-access format=bytes ! ") + DecoderFor(file) +
        " ! audioconvert ! audioresample quality=8 ! "
        "appsink name=sound sync=false max-buffers=16 "
        "caps=audio/x-raw,format=S16LE,layout=interleaved,rate=" +
        std::to_string(Decoder::kRate) + ",channels=[1,2]";
    GError* error = nullptr;
    GstElement* const pipeline =
        gst_parse_launch_full(description.c_str(), nullptr, GST_PARSE_FLAG_FATAL_ERRORS, &error);
    if (pipeline == nullptr)
        throw std::runtime_error("GStreamer cannot decode: " + TextOf(error));
    return pipeline;
}

void SeePad(const GValue* item, gpointer isRunning) {
    auto* const pad = static_cast<GstPad*>(g_value_get_object(item));
    GST_OBJECT_LOCK(pad);
    GstTask* const task = GST_PAD_TASK(pad);
    if (task != nullptr && gst_task_get_state(task) == GST_TASK_STARTED)
        *static_cast<bool*>(isRunning) = true;
    GST_OBJECT_UNLOCK(pad);
}

void SeeElement(const GValue* item, gpointer isRunning) {
    GstIterator* const pads = gst_element_iterate_pads(static_cast<GstElement*>(g_value_get_object(item)));
    // What changes just now runs.
    if (gst_iterator_foreach(pads, &SeePad, isRunning) != GST_ITERATOR_DONE)
        *static_cast<bool*>(isRunning) = true;
    gst_iterator_free(pads);
}

/// Whether any thread of the pipeline still carries something on.
bool IsAnythingRunning(GstElement* pipeline) {
    bool isRunning = false;
    GstIterator* const all = gst_bin_iterate_recurse(GST_BIN(pipeline));
    const bool isSeen = gst_iterator_foreach(all, &SeeElement, &isRunning) == GST_ITERATOR_DONE;
    gst_iterator_free(all);
    return isRunning || !isSeen;
}

} // namespace

void Decoder::Prepare() {
    // Sound is mixed by plain code: code that is made at run time needs memory that is written and run.
    (void)setenv("ORC_CODE", "backup", 1);
    GError* error = nullptr;
    if (gst_init_check(nullptr, nullptr, &error) == FALSE)
        throw std::runtime_error("GStreamer does not start: " + TextOf(error));
    for (const char* name : kPlugIns) {
        GstPlugin* const plugIn = gst_plugin_load_by_name(name);
        if (plugIn != nullptr)
            gst_object_unref(plugIn);
    }
}

Decoder::Decoder(const MappedFile& file)
    : m_file(file)
    , m_pipeline(MakePipeline(file))
    , m_sink(gst_bin_get_by_name(GST_BIN(m_pipeline.get()), "sound")) {
    const Pointer<GstElement> source(gst_bin_get_by_name(GST_BIN(m_pipeline.get()), "file"));
    gst_app_src_set_size(GST_APP_SRC(source.get()), static_cast<gint64>(file.Size()));
    GstAppSrcCallbacks callbacks{};
    callbacks.need_data = &Decoder::OnNeedData;
    callbacks.seek_data = &Decoder::OnSeek;
    gst_app_src_set_callbacks(GST_APP_SRC(source.get()), &callbacks, this, nullptr);
    (void)gst_element_set_state(m_pipeline.get(), GST_STATE_PLAYING); // what fails comes as a message
}

Decoder::~Decoder() {
    gst_element_set_state(m_pipeline.get(), GST_STATE_NULL);
}

void Decoder::OnNeedData(GstAppSrc* source, guint size, gpointer decoder) {
    static_cast<Decoder*>(decoder)->Feed(source, size);
}

gboolean Decoder::OnSeek(GstAppSrc* /*source*/, guint64 place, gpointer decoder) {
    auto& self = *static_cast<Decoder*>(decoder);
    ++self.m_asked;
    self.m_place = std::min<std::size_t>(place, self.m_file.Size());
    return TRUE;
}

void Decoder::Feed(GstAppSrc* source, std::size_t size) {
    // Who asks for a piece gets no more than that; who takes whatever comes asks for the greatest number.
    constexpr std::size_t kMost = std::size_t{1} << 20U;
    ++m_asked;
    const std::size_t count = std::min({size, kMost, m_file.Size() - m_place});
    if (count == 0) {
        (void)gst_app_src_end_of_stream(source);
        return;
    }
    GstBuffer* const buffer = gst_buffer_new_allocate(nullptr, count, nullptr);
    if (buffer == nullptr)
        return;
    gst_buffer_fill(buffer, 0, m_file.Data() + m_place, count);
    GST_BUFFER_OFFSET(buffer) = m_place;
    GST_BUFFER_OFFSET_END(buffer) = m_place + count;
    m_place += count;
    (void)gst_app_src_push_buffer(source, buffer); // refused only where it is all over
}

GstSample* Decoder::Pull(Deadline deadline) {
    constexpr std::chrono::seconds kStandstill{2};
    // An error that comes while the decoders are put together is lost, and then nothing runs any more.
    constexpr std::chrono::milliseconds kLost{200};
    GstAppSink* const sink = GST_APP_SINK(m_sink.get());
    auto moved = std::chrono::steady_clock::now();
    auto ran = moved;
    // In slices, since an error does not wake who waits for sound.
    for (unsigned asked = m_asked;;) {
        GstSample* const sample = gst_app_sink_try_pull_sample(sink, kSlice);
        if (sample != nullptr)
            return sample;
        ThrowOnError();
        const auto now = std::chrono::steady_clock::now();
        if (asked != m_asked)
            moved = now;
        asked = m_asked;
        if (moved == now || IsAnythingRunning(m_pipeline.get()))
            ran = now;
        if (gst_app_sink_is_eos(sink) != FALSE || now >= deadline)
            return nullptr;
        if (now - moved >= kStandstill || now - ran >= kLost)
            ThrowStandstill(now - ran >= kLost);
    }
}

void Decoder::ThrowStandstill(bool isLost) const {
    if (m_hasSound)
        throw report::Refusal(report::kDamaged, "is damaged: it stops in its midst");
    throw report::Refusal(report::kUnknown,
                          std::string(kNotKnown) + (isLost ? "it breaks off before its sound begins"
                                                           : "nothing could be decoded"));
}

std::optional<Decoder::Piece> Decoder::Read(Deadline deadline) {
    GstSample* const sample = Pull(deadline);
    if (sample == nullptr)
        return gst_app_sink_is_eos(GST_APP_SINK(m_sink.get())) != FALSE ? std::optional(Piece{})
                                                                        : std::nullopt;
    Piece piece;
    const GstStructure* const format = gst_caps_get_structure(gst_sample_get_caps(sample), 0);
    (void)gst_structure_get_int(format, "channels", &piece.channels);
    GstBuffer* const buffer = gst_sample_get_buffer(sample);
    piece.samples.resize(gst_buffer_get_size(buffer));
    gst_buffer_extract(buffer, 0, piece.samples.data(), piece.samples.size());
    gst_sample_unref(sample);
    m_hasSound = true;
    return piece;
}

std::optional<std::chrono::milliseconds> Decoder::ClaimedLength() const {
    gint64 length = 0;
    if (gst_element_query_duration(m_pipeline.get(), GST_FORMAT_TIME, &length) == FALSE || length <= 0)
        return std::nullopt;
    return std::chrono::milliseconds(length / 1'000'000);
}

void Decoder::ThrowOnError() const {
    const Pointer<GstBus> bus(gst_element_get_bus(m_pipeline.get()));
    GstMessage* const message = gst_bus_pop_filtered(bus.get(), GST_MESSAGE_ERROR);
    if (message == nullptr)
        return;
    GError* error = nullptr;
    gst_message_parse_error(message, &error, nullptr);
    gst_message_unref(message);
    const std::string text = TextOf(error);
    if (!m_hasSound)
        throw report::Refusal(report::kUnknown, kNotKnown + text);
    throw report::Refusal(report::kDamaged, "is damaged: " + text);
}
