#pragma once

#include "controller/audio/IRoomPlayer.h"
#include "controller/audio/Output.h"
#include "controller/audio/Timeline.h"
#include "controller/audio/WholeSound.h"
#include "controller/audio/home_assistant/HomeAssistantRoom.h"
#include "controller/audio/home_assistant/HttpCall.h"

#include <boost/asio/steady_timer.hpp>

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace controller::audio {

class HomeAssistantDesk;

/// One player of Home Assistant in one stream: looks whether it is there, tells it to fetch the clip as a
/// file when that begins, and knows by the clip's length when it has ended. SetVolume: any thread; everything
/// else happens on the desk's thread.
class HomeAssistantPlay final : public std::enable_shared_from_this<HomeAssistantPlay> {
public:
    /// `desk` is borrowed until it has given this up.
    HomeAssistantPlay(PlayerOrder order, HomeAssistantRoom room, HomeAssistantDesk& desk);

    void SetVolume(unsigned volume) { m_volume = volume; }
    void Begin(IRoomPlayer::OnEvent onEvent);

    /// The stream is over here: what still plays is stopped.
    void Stop();
    void Abort();

private:
    using Clock = std::chrono::steady_clock;

    void Ask(const std::string& path, const std::string& body, HttpCall::Done done);
    void LookedAt(const HttpOutcome& outcome);
    void Opened(const std::string& ourAddress);
    void ClipChanged();
    void OrderWhenItBegins();
    void Order(const WholeSound::File& file);
    void Ordered(const HttpOutcome& outcome);
    void Lost();
    void LookWhetherFetched();
    void StopPlayer(const std::function<void(const std::string& error)>& stopped);
    void End();
    void Fail(const std::string& reason);
    void Leave();
    void After(Clock::time_point moment, void (HomeAssistantPlay::*next)());

    [[nodiscard]] std::string WhyNot(const HttpOutcome& outcome) const;
    [[nodiscard]] std::string OurUrl() const;
    [[nodiscard]] Clock::duration Length() const;
    [[nodiscard]] HttpOrder OrderOf(const std::string& path, const std::string& body) const;

    const PlayerOrder m_order;
    const HomeAssistantRoom m_room;
    HomeAssistantDesk& m_desk;
    std::atomic<unsigned> m_volume;
    IRoomPlayer::OnEvent m_onEvent;
    std::optional<boost::asio::steady_timer> m_timer;
    unsigned m_turn = 0;                 ///< Counts what the timer was set for.
    std::shared_ptr<HttpCall> m_call;    ///< that asks what the player is, or stops it
    std::shared_ptr<HttpCall> m_playing; ///< that has told it to play
    std::optional<Placement> m_clip;
    std::string m_ourAddress;
    std::string m_path; ///< of the sound; empty: none is offered
    bool m_isAnswered = false;
    bool m_isOpen = false;     ///< and has not ended
    bool m_isStopping = false; ///< The player is being told to stop.
    bool m_isOver = false;     ///< it is gone
    Clock::time_point m_ordered;
};

} // namespace controller::audio
