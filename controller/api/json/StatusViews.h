#pragma once

#include "controller/api/json/HouseViews.h"
#include "controller/api/json/PlayViews.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace controller {

fields::Object TableOf(fields::For<PlayingSound> type);
fields::Object TableOf(fields::For<PlayingNow> type);

} // namespace controller

/// What the house is doing, as the API gives it; `docs/api.md` says what the members mean.
namespace controller::view {

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
    std::optional<PlayingNow> playing;
    std::vector<std::uint32_t> waiting;
    std::vector<Queued> queue;
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

} // namespace controller::view
