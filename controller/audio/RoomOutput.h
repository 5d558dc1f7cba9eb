#pragma once

#include "controller/audio/EngineContext.h"
#include "controller/audio/IRoomPlayer.h"
#include "controller/audio/Output.h"
#include "controller/audio/Timeline.h"
#include "controller/audio/WholeSound.h"

#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace controller::audio {

/// One room: its volume, its player while it is in a stream, and the former one while that closes (a device
/// is opened again only when it is closed, or was given up). Driver thread.
class RoomOutput final {
public:
    enum class State { Out, Opening, Playing, Ended };

    /// `onChange` is called when the state has changed by itself, and when a player has closed.
    RoomOutput(RoomConfig config, std::shared_ptr<EngineContext> context, std::function<void()> onChange);

    void Join(std::shared_ptr<Timeline> timeline, unsigned take, bool isUrgent);
    void Leave();
    void SetVolume(unsigned volume);

    /// Gives up what does not answer in time.
    void CheckTime();

    [[nodiscard]] State GetState() const;

    /// Whether the stream's clip has been heard here to its last sample.
    [[nodiscard]] bool HasHeardClip() const;
    [[nodiscard]] const RoomConfig& Config() const { return m_config; }

    /// What it needs before a clip.
    [[nodiscard]] std::chrono::milliseconds LeadSilence() const;

    /// What it does with the file of a sound that it will probably play; null: nothing.
    using Preparation = std::function<void(const WholeSound::File& file)>;
    [[nodiscard]] Preparation GetPreparation();

    /// Whether it hands the clip on as a file.
    [[nodiscard]] bool NeedsWholeSound() const;
    [[nodiscard]] const std::string& LastTrouble() const { return m_lastTrouble; }

    /// Whether an output that was given up has not come back.
    [[nodiscard]] bool IsHanging() const { return m_hanging > 0; }

    /// The player that is closing, or null.
    [[nodiscard]] const std::shared_ptr<IRoomPlayer>& Closing() const { return m_closing; }

private:
    using Clock = std::chrono::steady_clock;
    /// Of an event: its player may be gone by then, and another one be where that was in memory.
    using Sender = std::weak_ptr<IRoomPlayer>;

    void Open();
    [[nodiscard]] std::shared_ptr<IRoomPlayer> MakePlayer();
    [[nodiscard]] OutputContext Context(std::function<void(const std::string&)> silent) const;
    void OnEvent(const Sender& sender, const PlayerEvent& event);
    void OnFailed(const Sender& sender, const PlayerEvent& event);
    void OnGone(const Sender& sender);
    void OnSilent(const std::shared_ptr<RoomSlot>& sender, const std::string& reason);
    void GiveUp(std::shared_ptr<IRoomPlayer>& player, const std::string& reason);
    void MoveToClosing();
    void LeaveTimeline();
    void Report(RoomTrouble::Kind kind, const std::string& reason);

    RoomConfig m_config;
    const Output m_output;
    const std::shared_ptr<EngineContext> m_context;
    const std::function<void()> m_onChange;
    std::shared_ptr<Timeline> m_timeline; ///< Null: the room is in no stream.
    std::shared_ptr<RoomSlot> m_slot;
    unsigned m_take = 0;
    bool m_isUrgent = false;
    std::shared_ptr<IRoomPlayer> m_current; ///< Null while it waits for the former one to close.
    std::shared_ptr<IRoomPlayer> m_closing;
    Clock::time_point m_closingSince;
    unsigned m_hanging = 0;
    bool m_isReadyInTime = true; ///< As far as is known; the other rooms wait for no known trouble.
    bool m_isSilent = false;
    std::string m_lastTrouble;
};

} // namespace controller::audio
