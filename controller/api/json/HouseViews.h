#pragma once

#include "controller/announcements/Announcement.h"
#include "controller/api/json/List.h"
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
namespace controller::view {

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

struct Playing {
    std::uint32_t announcement = 0;
    std::string name;
    Time since;

    static Object Table();
};

struct Sound {
    std::string file;
    Time since;

    static Object Table();
};

struct ShownPopup {
    std::uint32_t navigator = 0;
    Popup popup;

    static Object Table();
};

/// In words, what the parts of the status are known from.
struct KnownFrom {
    std::string playing;
    std::string waiting;
    std::string sound;

    static Object Table();
};

struct Status {
    std::string house;
    std::string version;
    Time started;
    bool isAgentRunning = false;
    std::optional<Playing> playing;
    std::vector<std::uint32_t> waiting;
    std::optional<Sound> sound;
    std::vector<ShownPopup> popups;
    bool isStateSaved = false;
    std::optional<std::string> stateError;
    std::uint64_t events = 0;
    KnownFrom knownFrom;

    static Object Table();
};

/// What a socket that watches everything begins with.
struct WholeState {
    Status status;
    std::vector<Room> rooms;
    std::vector<Navigator> navigators;
    std::vector<Variables::Variable> variables;
    SharedAnnouncements announcements;

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

    static Object Table();
};

} // namespace controller::view
