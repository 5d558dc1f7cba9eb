#pragma once

#include "controller/driver/DriverOnly.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <variant>

namespace controller {

/// The screens' pages as loudspeakers: which of them can be heard, and what they are told and tell of sounds.
/// A page is heard when it is armed: its browser lets it play, since somebody has tapped on it once. Of
/// several pages of a screen the one that was armed last plays. Driver thread only.
class ScreenSpeakers {
public:
    using PageId = std::uint64_t;
    using Time = std::chrono::steady_clock::time_point;

    /// A sound, under the address at which pages find it.
    struct Sound {
        std::uint64_t number = 0;
        std::string address;
    };

    /// What a page is told.
    struct Fetch {
        Sound sound; ///< is about to be played
    };
    struct Play {
        std::uint64_t play = 0; ///< its number in what follows
        Sound sound;
        Time at;
        double gain = 0; ///< a factor
    };
    struct Gain {
        std::uint64_t play = 0;
        double gain = 0;
    };
    struct Stop {
        std::uint64_t play = 0;
    };
    using Order = std::variant<Fetch, Play, Gain, Stop>;
    using Send = std::function<void(const Order&)>;

    /// What becomes of a play.
    enum class News {
        Started,  ///< It is heard, from its beginning.
        Late,     ///< It is heard, without its beginning.
        Ended,    ///< It is heard no more.
        Failed,   ///< The page cannot play it.
        Silenced, ///< The page may play nothing any more.
        Gone      ///< The page is not there any more.
    };
    using OnNews = std::function<void(News)>;

    /// `navigators`: those whose pages are loudspeakers.
    explicit ScreenSpeakers(const std::set<std::uint32_t>& navigators);
    ScreenSpeakers(const ScreenSpeakers&) = delete;
    ScreenSpeakers& operator=(const ScreenSpeakers&) = delete;

    /// Whether rooms play on this navigator's page.
    [[nodiscard]] bool IsSpeaker(std::uint32_t navigator) const { return m_speakers.count(navigator) != 0; }

    /// Why nothing would be heard there now; empty: it would.
    [[nodiscard]] std::string WhyNot(std::uint32_t navigator) const;
    [[nodiscard]] bool IsArmed(std::uint32_t navigator) const { return WhyNot(navigator).empty(); }

    /// Calls when that may be different, until it is given null. Replaces the former one.
    void Listen(std::function<void()> onChange) { m_onChange = std::move(onChange); }

    /// Pages come, and go; `send` is called until they do. Those of other navigators are passed by.
    void Open(std::uint32_t navigator, PageId page, Send send);
    void Close(std::uint32_t navigator, PageId page);
    void SetArmed(std::uint32_t navigator, PageId page, bool isArmed);

    /// What a page tells of a play; of one that is not its own it is passed by.
    void Hear(std::uint32_t navigator, PageId page, std::uint64_t play, News news);

    /// The page that would play now had better have this sound. Without one nothing happens.
    void Prepare(std::uint32_t navigator, const Sound& sound);

    /// The page plays the sound, at that moment, and `onNews` is told what becomes of it, never within this
    /// call. Gives the number of the play; 0: there is no page that plays.
    std::uint64_t Begin(std::uint32_t navigator, const Sound& sound, Time at, double gain, OnNews onNews);
    void SetGain(std::uint64_t play, double gain);

    /// What still sounds of it fades out, and nothing more is told. One that has ended is let go.
    void End(std::uint64_t play);

private:
    struct Page {
        Send send;
        std::uint64_t armed = 0; ///< Rises with each page that is armed; 0: it is not.
    };
    struct Playing {
        std::uint32_t navigator = 0;
        PageId page = 0;
        OnNews onNews;
    };
    using Pages = std::map<PageId, Page>;

    [[nodiscard]] const Pages::value_type* Newest(std::uint32_t navigator) const;
    void TellChange() const;
    void Tell(std::uint64_t play, const Order& order);
    void TellAll(PageId page, News news);
    void TellOne(std::uint64_t play, News news);
    [[nodiscard]] Pages* PagesOf(std::uint32_t navigator);

    std::map<std::uint32_t, Pages> m_speakers;
    std::map<std::uint64_t, Playing> m_plays;
    std::function<void()> m_onChange;
    std::uint64_t m_lastPlay = 0;
    std::uint64_t m_lastArmed = 0;
    DriverOnly m_driverOnly;
};

} // namespace controller
