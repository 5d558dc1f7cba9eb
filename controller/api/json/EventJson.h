#pragma once

#include "controller/api/json/StatusViews.h"
#include "controller/events/Event.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace controller {

/// One event, as the API's sockets send it.
const fields::Type& TableOf(fields::For<Event> type);

namespace event_json {

/// The name of the event's kind: "popup_shown".
[[nodiscard]] const char* TypeOf(const Event& event);

/// The whole message.
[[nodiscard]] std::string Message(const Event& event);

/// The message for the pages of the navigator or room that it is about; nothing when it is none of a page's
/// business.
[[nodiscard]] std::optional<std::string> PageMessage(const Event& event);

} // namespace event_json

namespace view {

template <>
inline constexpr ListWords kListWords<std::vector<Event>>{"EventList", "events", "Oldest first"};
using EventList = List<std::vector<Event>>;

/// What a socket begins with.
template <class State>
struct FirstMessage {
    std::uint64_t number = 0; ///< of the last event
    Time time;
    fields::Written<State> state; ///< may have been written on another thread

    static Object Table();
};
using StateMessage = FirstMessage<WholeState>;    ///< of one that watches everything
using PageStateMessage = FirstMessage<PageState>; ///< of a page

/// A sign of life, which is no event.
struct Alive {
    static Object Table();
};

/// Whatever a socket is sent: only descriptions.
struct WatcherMessage {
    static const fields::Type& Table();
};
struct PageMessage {
    static const fields::Type& Table();
};

} // namespace view

} // namespace controller
