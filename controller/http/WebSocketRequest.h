#pragma once

#include "controller/http/HttpMessage.h"

#include <optional>

namespace controller {

/// What is wrong with a request for a WebSocket; nothing when it is in order. The library would refuse it,
/// too, but with a text of its own.
[[nodiscard]] std::optional<HttpRefusal> RefusalOfWebSocket(const HttpRequest& request);

} // namespace controller
