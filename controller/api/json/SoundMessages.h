#pragma once

#include "controller/api/json/HouseViews.h"
#include "controller/rooms/ScreenSpeakers.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// What a screen's page and the controller say to each other over its socket, beside the events: the time,
/// and the sounds of the rooms that play on the page. Times are microseconds of the controller's own clock,
/// which begins anywhere.
namespace controller::view {

/// A factor, as a number.
struct Gain {
    double factor = 0;

    static const fields::Type& Table();
};

/// What becomes of a play, as its page says.
struct PlayNews {
    std::uint64_t play = 0;
    std::string news;

    static Object Table();
};

/// What a page says; what it leaves out is as before.
struct PageSays {
    std::optional<events::ScreenSize> size;
    std::optional<std::uint32_t> ping;
    std::optional<bool> isArmed;
    std::optional<PlayNews> play;

    static Object Table();
};

/// The answer to a ping.
struct Pong {
    std::uint32_t ping = 0;
    std::int64_t now = 0;

    static Object Table();
};

struct FetchSound {
    std::uint64_t sound = 0;
    std::string address;

    static Object Table();
};
struct PlaySound {
    std::uint64_t play = 0;
    std::uint64_t sound = 0;
    std::string address;
    std::int64_t at = 0;
    Gain gain;

    static Object Table();
};
struct SetGain {
    std::uint64_t play = 0;
    Gain gain;

    static Object Table();
};
struct StopSound {
    std::uint64_t play = 0;

    static Object Table();
};

/// Of that time, as messages have it.
[[nodiscard]] std::int64_t MicrosecondsOf(ScreenSpeakers::Time time);

/// The message of an order.
[[nodiscard]] std::string TextOf(const ScreenSpeakers::Order& order);

/// What a news text means; nothing for one that is not known.
[[nodiscard]] std::optional<ScreenSpeakers::News> NewsOf(const std::string& text);

/// All that are told beside events.
[[nodiscard]] std::vector<const fields::Type*> SoundMessages();

} // namespace controller::view
