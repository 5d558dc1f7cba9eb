#pragma once

#include "announce/basics/Json.h"
#include "announce/client/Connection.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>

class EventLoop;

/// What happens in the house, as it happens. Events wait here until they are taken.
class EventStream {
public:
    /// Connects. Throws Failure: NoConnection, or what the controller answers instead.
    EventStream(EventLoop& loop, const Connection& connection);

    /// The next event; the first one is of type "state". Throws Failure (NoConnection) when the connection
    /// ends.
    [[nodiscard]] Json Next();

    /// The same, or nothing when none comes for so long.
    [[nodiscard]] std::optional<Json> Next(std::chrono::steady_clock::duration longest);

    struct Inbox;

private:
    [[nodiscard]] bool HasSome() const;

    EventLoop& m_loop;
    std::string m_address; ///< for people
    std::shared_ptr<Inbox> m_inbox;
    std::shared_ptr<void> m_socket; ///< its end ends the reading
};
