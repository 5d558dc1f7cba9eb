#include "controller/http/WebSocketRequest.h"

#include <algorithm>
#include <cctype>

namespace controller {

namespace {

/// Sixteen bytes, in base64.
bool IsKey(std::string_view key) noexcept {
    const std::string_view digits = key.substr(0, 22);
    return key.size() == 24 && key.substr(22) == "==" &&
           std::all_of(digits.begin(), digits.end(), [](unsigned char digit) {
               return std::isalnum(digit) != 0 || digit == '+' || digit == '/';
           });
}

} // namespace

std::optional<HttpRefusal> RefusalOfWebSocket(const HttpRequest& request) {
    if (request.Header("sec-websocket-version") != "13")
        return HttpRefusal{426,
                           "the WebSocket request is of an unknown version",
                           "Sec-WebSocket-Version: 13",
                           {{"Sec-WebSocket-Version", "13"}, {"Upgrade", "websocket"}}};
    if (!IsKey(request.Header("sec-websocket-key")))
        return HttpRefusal{400, "the WebSocket request has no proper key",
                           "Sec-WebSocket-Key: 16 bytes in base64"};
    return std::nullopt;
}

} // namespace controller
