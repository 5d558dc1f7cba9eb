#include "controller/audio/RoomPipeline.h"

#include "controller/audio/Held.h"

#include <chrono>
#include <exception>
#include <stdexcept>
#include <system_error>
#include <utility>

#include <gst/audio/gstaudiobasesink.h>

namespace controller::audio {

namespace {

/// How long an output may take to play out what it has when it is stopped.
constexpr std::chrono::milliseconds kPlayOut{1000};

gint IsDeviceSink(gconstpointer item, gconstpointer /*unused*/) {
    return GST_IS_AUDIO_BASE_SINK(g_value_get_object(static_cast<const GValue*>(item))) ? 0 : 1;
}

void AddTo(GstElement* pipeline, GstElement* element) {
    if (!gst_bin_add(GST_BIN(pipeline), element))
        throw std::runtime_error("the output cannot be added to the room's pipeline");
}

} // namespace

RoomPipeline::RoomPipeline(PlayerOrder order, ElementOutput output, Workers workers)
    : m_context(std::move(order.context))
    , m_output(std::move(output))
    , m_workers(std::move(workers))
    , m_timeline(std::move(order.timeline))
    , m_slot(std::move(order.slot))
    , m_feed(m_timeline, m_slot, order.volume) {}

void RoomPipeline::Start(OnEvent onEvent) {
    m_onEvent = std::move(onEvent);
    m_workers.Start([self = shared_from_this()] { self->Open(); });
}

void RoomPipeline::Stop() {
    m_timeline->Remove(m_slot);
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_isStopping = true;
    Advance();
}

void RoomPipeline::Abort() {
    m_timeline->Abort(m_slot);
    m_context.held->LetGo();
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_isAborted = true;
    Advance();
}

void RoomPipeline::Open() {
    std::string error;
    try {
        Build();
        if (gst_element_set_state(m_pipeline.get(), GST_STATE_PLAYING) == GST_STATE_CHANGE_FAILURE)
            error = "the output does not open";
    } catch (const std::exception& refusal) {
        error = refusal.what();
    }
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_isOpening = false;
    m_lifeline = shared_from_this();
    if (m_error.empty())
        m_error = error;
    Advance();
}

void RoomPipeline::Build() {
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_pipeline.reset(GST_ELEMENT(gst_object_ref_sink(gst_pipeline_new(nullptr))));
    }
    GstElement* source = m_feed.CreateSource();
    AddTo(m_pipeline.get(), source);
    // Without dithering, what needs no conversion but that to integers stays what it is.
    GstElement* converter = MakeBin("audioconvert dithering=none ! audioresample");
    AddTo(m_pipeline.get(), converter);
    GstElement* sink = m_output(m_context);
    AddTo(m_pipeline.get(), sink);
    if (!gst_element_link_many(source, converter, sink, nullptr)) // NOLINT(*-vararg)
        throw std::runtime_error("the output takes no raw audio");

    // One clock and one base time for all rooms; without a start time the base time stays as it is set.
    gst_pipeline_use_clock(GST_PIPELINE(m_pipeline.get()), m_timeline->GetClock());
    gst_element_set_start_time(m_pipeline.get(), GST_CLOCK_TIME_NONE);
    gst_element_set_base_time(m_pipeline.get(), m_timeline->BaseTime());

    const GstPtr<GstBus> bus(gst_element_get_bus(m_pipeline.get()));
    gst_bus_set_sync_handler(bus.get(), &RoomPipeline::OnBusMessage, this, nullptr);
}

/// Called with the lock when something has changed, on whatever thread that was.
void RoomPipeline::Advance() {
    if (m_isGone)
        return;
    Tell();
    const bool isOver = m_isStopping || m_isAborted || !m_error.empty();
    if (isOver && !m_isOpening && !m_isClosing)
        BeginToClose();
    m_changed.notify_all();
}

void RoomPipeline::Tell() {
    if (!m_error.empty()) {
        // What fails after its last sample has done its duty.
        if (!m_isEndTold && !std::exchange(m_isErrorTold, true))
            m_onEvent({PlayerEvent::Kind::Failed,
                       m_isRunning ? RoomTrouble::Kind::Failed : RoomTrouble::Kind::Refused, m_error});
        return;
    }
    if (m_isRunning && !std::exchange(m_isRunningTold, true) && !m_timeline->SetRunning(*m_slot, HasDevice()))
        m_onEvent({PlayerEvent::Kind::Late, {}, {}});
    if (!m_hasEnded || m_isStopping || m_isAborted || std::exchange(m_isEndTold, true))
        return;
    m_timeline->SetDone(*m_slot);
    m_context.held->LetGo();
    m_onEvent({PlayerEvent::Kind::Ended, {}, {}});
}

/// Without a thread it stays open, until it is given up and that is tried once more.
void RoomPipeline::BeginToClose() {
    try {
        m_workers.Start([self = shared_from_this()] { self->Close(); });
        m_isClosing = true;
    } catch (const std::system_error&) {
        m_isClosing = false;
    }
}

void RoomPipeline::Close() {
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        if (m_isStopping && m_isRunning)
            m_changed.wait_for(lock, kPlayOut,
                               [this] { return m_hasEnded || m_isAborted || !m_error.empty(); });
        m_isGone = true;
    }
    // The source's thread must not wait for its turn any more when the pipeline waits for that thread.
    m_timeline->Abort(m_slot);
    if (m_pipeline) {
        gst_element_set_state(m_pipeline.get(), GST_STATE_NULL);
        const GstPtr<GstBus> bus(gst_element_get_bus(m_pipeline.get()));
        gst_bus_set_sync_handler(bus.get(), nullptr, nullptr, nullptr);
    }
    m_context.held->LetGo();
    GstPtr<GstElement> last;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        last.swap(m_pipeline);
        m_lifeline = nullptr;
    }
    m_onEvent({PlayerEvent::Kind::Gone, {}, {}});
}

bool RoomPipeline::HasDevice() const {
    GstIterator* all = gst_bin_iterate_recurse(GST_BIN(m_pipeline.get()));
    GValue found = G_VALUE_INIT;
    const bool has = gst_iterator_find_custom(all, &IsDeviceSink, &found, nullptr) == TRUE;
    if (has)
        g_value_unset(&found);
    gst_iterator_free(all);
    return has;
}

GstBusSyncReply RoomPipeline::OnBusMessage(GstBus* /*bus*/, GstMessage* message, gpointer pipeline) {
    static_cast<RoomPipeline*>(pipeline)->Handle(message);
    gst_message_unref(message);
    return GST_BUS_DROP;
}

void RoomPipeline::Handle(GstMessage* message) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    const bool isOwn = GST_MESSAGE_SRC(message) == GST_OBJECT(m_pipeline.get());
    switch (GST_MESSAGE_TYPE(message)) {
    case GST_MESSAGE_STATE_CHANGED: {
        GstState state = GST_STATE_NULL;
        gst_message_parse_state_changed(message, nullptr, &state, nullptr);
        m_isRunning = m_isRunning || (isOwn && state == GST_STATE_PLAYING);
        break;
    }
    case GST_MESSAGE_EOS:
        m_hasEnded = m_hasEnded || isOwn;
        break;
    case GST_MESSAGE_ERROR:
        if (m_error.empty())
            m_error = ErrorText(message);
        break;
    default:
        return;
    }
    Advance();
}

} // namespace controller::audio
