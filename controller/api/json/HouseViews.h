#pragma once

#include "controller/announcements/Announcement.h"
#include "controller/api/json/List.h"
#include "controller/events/Event.h"
#include "controller/rooms/Variables.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace controller {

fields::Object TableOf(fields::For<Variables::Variable> type);

} // namespace controller

/// The house and what stands in it, as the API gives it; `docs/api.md` says what the members mean.
namespace controller::events {

fields::Object TableOf(fields::For<ScreenSize> type);

} // namespace controller::events

namespace controller::view {

/// "unknown", "healthy", "silent", "unheard"
[[nodiscard]] std::string HealthName(events::RoomHealth health);
[[nodiscard]] std::vector<const char*> HealthNames();

using Time = std::chrono::system_clock::time_point;
using fields::Object;

struct Room {
    std::uint32_t id = 0;
    std::string name;
    std::string output;
    unsigned volume = 0;
    unsigned maxVolume = 0;
    unsigned leadSilenceMs = 0;
    bool isInAnnouncement = false;
    bool isAwake = false;
    bool isAnswering = true;
    std::string health;
    std::string trouble;

    static Object Table();
};

struct Popup {
    std::uint64_t number = 0;
    std::string message;
    std::string image;
    bool hasOkButton = false;
    std::int64_t remainingMs = 0;
    Time ends;

    static Object Table();
};

struct Navigator {
    std::uint32_t id = 0;
    std::string name;
    std::uint32_t room = 0;
    std::size_t pages = 0;
    bool isAwake = false;
    std::optional<Popup> popup;
    std::optional<events::ScreenSize> size;
    std::optional<bool> isArmed;

    static constexpr const char* kArmed =
        "Whether one of its pages can be heard; null where no room plays on it";

    static Object Table();
};

template <>
inline constexpr ListWords kListWords<std::vector<Room>>{"RoomList", "rooms"};
using RoomList = List<std::vector<Room>>;
template <>
inline constexpr ListWords kListWords<std::vector<Navigator>>{"NavigatorList", "navigators"};
using NavigatorList = List<std::vector<Navigator>>;
template <>
inline constexpr ListWords kListWords<std::vector<Variables::Variable>>{"VariableList", "variables"};
using VariableList = List<std::vector<Variables::Variable>>;

/// May be written on another thread than it is made on.
using SharedAnnouncements = std::shared_ptr<const std::vector<AnnouncementPointer>>;
template <>
inline constexpr ListWords kListWords<SharedAnnouncements>{"AnnouncementList", "announcements", "By id"};
using AnnouncementList = List<SharedAnnouncements>;

struct House {
    std::string name;
    std::vector<Room> rooms;
    std::vector<Navigator> navigators;

    static Object Table();
};

/// A room or navigator, as its page names it.
struct Named {
    std::uint32_t id = 0;
    std::string name;

    static Object Table();
};

/// What a navigator's page begins with.
struct PageState {
    Named navigator;
    Named room;
    std::string house;
    bool isAwake = false;
    std::optional<Popup> popup;
    bool isSpeaker = false;

    static Object Table();
};

} // namespace controller::view
