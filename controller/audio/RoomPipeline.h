#pragma once

#include "controller/audio/AudioEngine.h"
#include "controller/audio/Gst.h"
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

/// What a room's pipeline has to say. Called on threads of the pipeline, one at a time, Gone last.
struct PipelineEvent {
    enum class Kind {
        Late,  ///< Runs, but a clip had begun before.
        Ended, ///< Its output has played everything.
        Failed,
        Gone ///< All its GStreamer objects are closed.
    };
    Kind kind = Kind::Gone;
    RoomTrouble::Kind trouble = RoomTrouble::Kind::Failed;
    std::string reason;
};

/// One room's output for one stream: opens, plays what its feed gives it, closes. All its GStreamer state
/// changes happen on one thread of its own, which keeps the pipeline alive, so a device that never returns
/// can be left behind: drop the pointer. Operations: any thread, they never block.
class RoomPipeline final : public std::enable_shared_from_this<RoomPipeline> {
public:
    using OnEvent = std::function<void(const PipelineEvent&)>;

    RoomPipeline(std::shared_ptr<Timeline> timeline, std::shared_ptr<RoomSlot> slot, unsigned volume);

    /// Opens the output and plays.
    /// @throws std::system_error when there is no thread for it.
    void Start(Workers& workers, OutputDescription output, OutputContext context, OnEvent onEvent);

    void SetVolume(unsigned volume) { m_feed.SetVolume(volume); }

    /// Ends the sound, lets the output play what it has, closes it.
    void Stop();

    /// Closes the output at once, whatever it still has to play.
    void Abort();

    [[nodiscard]] const std::shared_ptr<RoomSlot>& Slot() const { return m_slot; }

private:
    void Run(const OutputDescription& output, const OutputContext& context);
    void Build(const OutputDescription& output, const OutputContext& context);
    void Open();
    void PlayUntilStopped();
    void Close();
    [[nodiscard]] bool IsRunning();
    [[nodiscard]] bool HasDevice() const;
    static GstBusSyncReply OnBusMessage(GstBus* bus, GstMessage* message, gpointer pipeline);
    void Handle(GstMessage* message);

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
