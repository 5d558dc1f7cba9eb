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
/// All its GStreamer state changes happen on one thread of its own.
class RoomPipeline final : public IRoomPlayer, public std::enable_shared_from_this<RoomPipeline> {
public:
    /// `workers` is borrowed until `Start` has returned.
    RoomPipeline(PlayerOrder order, ElementOutput output, Workers& workers);

    void Start(OnEvent onEvent) override;
    void SetVolume(unsigned volume) override { m_feed.SetVolume(volume); }
    void Stop() override;
    void Abort() override;

private:
    void Run();
    void Build();
    void Open();
    void PlayUntilStopped();
    void Close();
    [[nodiscard]] bool IsRunning();
    [[nodiscard]] bool HasDevice() const;
    static GstBusSyncReply OnBusMessage(GstBus* bus, GstMessage* message, gpointer pipeline);
    void Handle(GstMessage* message);

    const OutputContext m_context;
    const ElementOutput m_output;
    Workers& m_workers;
    const std::shared_ptr<Timeline> m_timeline;
    const std::shared_ptr<RoomSlot> m_slot;
    RoomFeed m_feed;
    OnEvent m_onEvent;
    GstPtr<GstElement> m_pipeline;

    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_isRunning = false;
    bool m_hasEnded = false;
    bool m_isStopping = false;
    bool m_isAborted = false;
    std::string m_error;
};

} // namespace controller::audio
