#pragma once

#include "controller/http/HttpMessage.h"

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace controller {

/// The server's end of a WebSocket. Driver thread only.
class WebSocket {
public:
    virtual ~WebSocket() = default;

    /// Sends a text, some time. A client for which too much waits is dropped.
    virtual void Send(std::shared_ptr<const std::string> text) = 0;

    /// Ends the connection with a close code of the protocol; what waits is dropped.
    virtual void Close(unsigned code, const std::string& reason) = 0;

    /// What the client sends; until somebody listens it is thrown away. Replaces the former listener.
    virtual void OnMessage(std::function<void(std::string_view text)> listener) = 0;

    /// Called once, when the connection has ended, whoever ended it; not during a call of the two above.
    /// Replaces the former listener.
    virtual void OnClosed(std::function<void()> listener) = 0;
};

/// One request, and the way to its reply. Whoever handles it replies or upgrades exactly once, at once or
/// later; a connection whose exchange is dropped without that is closed. Driver thread only.
class HttpExchange {
public:
    virtual ~HttpExchange() = default;

    [[nodiscard]] virtual const HttpRequest& Request() const noexcept = 0;

    /// Reads the body and hands it over, at once when it is there already. A body over the limit, or one that
    /// has not come in time, is answered by the exchange itself, and `onBody` is not called; nor is it when
    /// the client goes.
    virtual void
    ReadBody(std::size_t limit, std::chrono::seconds time, std::function<void(std::string body)> onBody) = 0;

    virtual void Reply(HttpReply reply) = 0;

    /// The client has shown that it belongs here: its connection is kept when there are too many.
    virtual void TrustClient() = 0;

    /// Makes a WebSocket of the connection; the request must ask for it. `onOpen` is not called when the
    /// client goes before, or its request is no good.
    virtual void Upgrade(std::function<void(std::shared_ptr<WebSocket>)> onOpen) = 0;
};

/// Answers requests. Driver thread only.
class IHttpHandler {
public:
    /// The head of a request has come; its body has not been read.
    virtual void Handle(std::shared_ptr<HttpExchange> exchange) = 0;

    /// A request has been answered with this status, or has become a WebSocket.
    virtual void Answered(unsigned /*status*/) {}

    /// The reply to a request that the server itself refuses.
    [[nodiscard]] virtual HttpReply Explain(const HttpRefusal& refusal) = 0;

protected:
    ~IHttpHandler() = default;
};

} // namespace controller
