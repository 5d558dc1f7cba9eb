#pragma once

#include "controller/audio/Gst.h"
#include "controller/audio/IRoomPlayer.h"
#include "controller/audio/Output.h"
#include "controller/audio/RoomFeed.h"
#include "controller/audio/Timeline.h"
#include "controller/audio/Workers.h"

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <string>

namespace controller::audio {

/// A room whose output is a GStreamer element, in a pipeline that is fed by the room's turns on the timeline.
/// It opens on a thread of its own and closes on one; in between it has none, and keeps itself alive.
class RoomPipeline final : public IRoomPlayer, public std::enable_shared_from_this<RoomPipeline> {
public:
    RoomPipeline(PlayerOrder order, ElementOutput output, Workers workers);

    void Start(OnEvent onEvent) override;
    void SetVolume(unsigned volume) override { m_feed.SetVolume(volume); }
    void Stop() override;
    void Abort() override;

private:
    void Open();
    void Build();
    void Advance();
    void Tell();
    void BeginToClose();
    void Close();
    [[nodiscard]] bool HasDevice() const;
    static GstBusSyncReply OnBusMessage(GstBus* bus, GstMessage* message, gpointer pipeline);
    void Handle(GstMessage* message);

    const OutputContext m_context;
    const ElementOutput m_output;
    Workers m_workers;
    const std::shared_ptr<Timeline> m_timeline;
    const std::shared_ptr<RoomSlot> m_slot;
    RoomFeed m_feed;
    OnEvent m_onEvent;
    GstPtr<GstElement> m_pipeline;

    std::mutex m_mutex;
    std::condition_variable m_changed;        ///< For the thread that closes.
    std::shared_ptr<RoomPipeline> m_lifeline; ///< Itself, until it is closed.
    bool m_isOpening = true;
    bool m_isRunning = false;
    bool m_hasEnded = false;
    bool m_isStopping = false;
    bool m_isAborted = false;
    std::string m_error;
    bool m_isRunningTold = false;
    bool m_isEndTold = false;
    bool m_isErrorTold = false;
    bool m_isClosing = false;
    bool m_isGone = false;
};

} // namespace controller::audio
