#pragma once

#include "controller/announcements/Announcement.h"
#include "controller/api/json/Fields.h"
#include "controller/rooms/Variables.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

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

    static const Object& Table();
};

struct Popup {
    std::uint64_t number = 0;
    std::string message;
    std::string image;
    bool hasOkButton = false;
    std::int64_t remainingMs = 0;
    Time ends;

    static const Object& Table();
};

struct Navigator {
    std::uint32_t id = 0;
    std::string name;
    std::uint32_t room = 0;
    std::size_t pages = 0;
    bool isAwake = false;
    std::optional<Popup> popup;

    static const Object& Table();
};

struct Variable {
    std::uint32_t device = 0;
    std::uint32_t variable = 0;
    std::string name;
    std::string value;

    static const Object& Table();
};

struct RoomList {
    std::vector<Room> rooms;

    static const Object& Table();
};

struct NavigatorList {
    std::vector<Navigator> navigators;

    static const Object& Table();
};

struct VariableList {
    std::vector<Variable> variables;

    static const Object& Table();
};

/// May be written on another thread than it is made on.
struct AnnouncementList {
    std::shared_ptr<const std::vector<AnnouncementPointer>> announcements;

    static const Object& Table();
};

struct House {
    std::string name;
    std::vector<Room> rooms;
    std::vector<Navigator> navigators;

    static const Object& Table();
};

struct Playing {
    std::uint32_t announcement = 0;
    std::string name;
    Time since;

    static const Object& Table();
};

struct Sound {
    std::string file;
    Time since;

    static const Object& Table();
};

struct ShownPopup {
    std::uint32_t navigator = 0;
    Popup popup;

    static const Object& Table();
};

/// In words, what the parts of the status are known from.
struct KnownFrom {
    std::string playing;
    std::string waiting;
    std::string sound;

    static const Object& Table();
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

    static const Object& Table();
};

/// What a socket that watches everything begins with.
struct WholeState {
    Status status;
    std::vector<Room> rooms;
    std::vector<Navigator> navigators;
    std::vector<Variable> variables;
    std::shared_ptr<const std::vector<AnnouncementPointer>> announcements;

    static const Object& Table();
};

/// A room or navigator, as its page names it.
struct Named {
    std::uint32_t id = 0;
    std::string name;

    static const Object& Table();
};

/// What a navigator's page begins with.
struct PageState {
    Named navigator;
    Named room;
    std::string house;
    bool isAwake = false;
    std::optional<Popup> popup;

    static const Object& Table();
};

} // namespace controller::view
