#pragma once

#include "announce/Json.h"
#include "announce/client/Connection.h"
#include "announce/client/EventLoop.h"

#include <memory>
#include <optional>

/// What happens in the house, as it happens. Events wait here until they are taken.
class EventStream {
public:
    /// Connects. Throws Failure: NoConnection, or what the controller answers instead.
    EventStream(EventLoop& loop, const Connection& connection);
    EventStream(EventStream&&) noexcept;
    EventStream& operator=(EventStream&&) = delete;
    ~EventStream();

    /// The next event; the first one is of type "state". Throws Failure (NoConnection) when the connection
    /// ends.
    [[nodiscard]] Json Next();

    /// The same, or nothing when none comes for so long.
    [[nodiscard]] std::optional<Json> Next(EventLoop::Duration longest);

    class Implementation;

private:
    std::unique_ptr<Implementation> m_implementation;
};
