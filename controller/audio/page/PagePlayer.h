#pragma once

#include "controller/audio/IRoomPlayer.h"
#include "controller/audio/Output.h"
#include "controller/audio/Timeline.h"
#include "controller/audio/WholeSound.h"
#include "controller/audio/page/PageDesk.h"
#include "controller/driver/Alarm.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace controller::audio {

/// A room that a screen's page plays: tells it what to play when, and takes the end from the clip's length.
/// A page that has not begun in time, or goes away, is the trouble of this room alone. Driver thread.
class PagePlayer final : public IRoomPlayer, public std::enable_shared_from_this<PagePlayer> {
public:
    /// So far ahead pages are told of a clip.
    static constexpr std::chrono::milliseconds kLead{400};

    /// A page that has begun no later than that after the clip plays on, in step with the others; one that is
    /// even later is told to stop.
    static constexpr std::chrono::milliseconds kLatest{1500};

    PagePlayer(PlayerOrder order, std::uint32_t navigator);
    PagePlayer(const PagePlayer&) = delete;
    PagePlayer& operator=(const PagePlayer&) = delete;
    ~PagePlayer() override { EndPlay(); }

    void Start(OnEvent onEvent) override;
    void SetVolume(unsigned volume) override;
    void Stop() override { Close(); }
    void Abort() override { Close(); }

private:
    using Clock = Timeline::Clock;

    [[nodiscard]] IPageSpeakers* Speakers() const;
    void Look();
    void Play(const Placement& placed, const WholeSound::File& file);
    void Begin(const PageSound& sound, const Placement& placed, std::int64_t frames);
    void Hear(PageNews news);
    void FadeOut();
    void End();
    void Fail(RoomTrouble::Kind kind, const std::string& reason);
    void EndPlay();
    void Close();
    [[nodiscard]] std::string Page(const char* rest) const;

    const PlayerOrder m_order;
    const std::uint32_t m_navigator;
    OnEvent m_onEvent; ///< Null: not started, or closed.
    unsigned m_volume;
    bool m_isAsked = false; ///< The clip's file has been asked for.
    bool m_hasStarted = false;
    std::uint64_t m_play = 0; ///< 0: nothing plays
    Clock::time_point m_clipEnd;
    std::optional<Alarm> m_latest; ///< Until then it must have begun.
    std::optional<Alarm> m_end;
};

} // namespace controller::audio
