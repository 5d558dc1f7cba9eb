#pragma once

#include "announce/client/Connection.h"

#include <cstddef>
#include <functional>
#include <string>

class EventLoop;

/// What is asked of the controller.
struct HttpQuestion {
    std::string method;
    std::string target;      ///< path and query, percent-encoded
    std::string contentType; ///< empty: no body
    std::string body;
    std::string ifMatch; ///< the ETag that must still be right; empty for any
    /// Hears how much of the body has been sent.
    std::function<void(std::size_t sent)> progress;
};

struct HttpAnswer {
    unsigned status = 0;
    std::string body;
    std::string etag;
    std::string retryAfter;
};

/// Asks over a connection of its own. Throws Failure (NoConnection), Interrupted.
[[nodiscard]] HttpAnswer Ask(EventLoop& loop, const Connection& connection, const HttpQuestion& question);
