#pragma once

#include "controller/events/Event.h"

#include <string>

/// Events as the API's sockets send them.
namespace controller::event_json {

/// The name of the event's kind: "popup_shown"; null for a kind that is not told.
[[nodiscard]] const char* TypeOf(const Event& event);

/// The event's data, as JSON text. "announcement_stored" lacks its announcement, which the event does not
/// hold.
[[nodiscard]] std::string DataOf(const Event& event);

/// One message: the frame, and `data`, which is JSON text.
[[nodiscard]] std::string Message(const Event& event, const char* type, const std::string& data);

/// The same, for what is no event of the feed: with the number of the last one.
[[nodiscard]] std::string Message(std::uint64_t number, const char* type, const std::string& data);

/// The event for the page of the navigator that it is about: its type (null: none of a page's business) and
/// data.
struct PageMessage {
    const char* type = nullptr;
    std::string data;
};
[[nodiscard]] PageMessage ForPage(const Event& event);

} // namespace controller::event_json
