#pragma once

#include "controller/http/Connections.h"
#include "controller/http/HttpConnection.h"
#include "controller/http/HttpExchange.h"
#include "controller/http/MeteredStream.h"

#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/websocket/stream.hpp>

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace controller {

/// A connection after it has become a WebSocket. `WebSocketConnection.cpp` makes it for the
/// server's streams; for others include `WebSocketConnectionSteps.h`.
///
/// What the client sends is read also where nobody listens, so that its pongs and its end are seen.
template <class Stream>
class WebSocketConnection final : public WebSocket,
                                  public Connections::Member,
                                  public std::enable_shared_from_this<WebSocketConnection<Stream>> {
public:
    WebSocketConnection(const std::shared_ptr<Stream>& stream, std::shared_ptr<Connections::Place> place);

    /// Answers the request, which lives until `onOpen` is called or the connection has ended.
    void Start(const RequestReader::Message& request, std::function<void(std::shared_ptr<WebSocket>)> onOpen);

    void Send(std::shared_ptr<const std::string> text) override;
    void Close(unsigned code, const std::string& reason) override;
    void OnMessage(std::function<void(std::string_view)> listener) override {
        m_onMessage = std::move(listener);
    }
    void OnClosed(std::function<void()> listener) override { m_onClosed = std::move(listener); }

    Connections::TimePoint Check(Connections::TimePoint now) override;
    void Stop() override;
    [[nodiscard]] bool IsWaiting() const noexcept override { return false; }

private:
    enum class State { Accepting, Open, Closing, Ended };

    static constexpr bool kIsDeflated = false; ///< messages are many, and short

    void SetOptions();
    void Accepted(const boost::system::error_code& error,
                  const std::function<void(std::shared_ptr<WebSocket>)>& onOpen);
    void Read();
    void CountMessage();
    void TellMessage();
    void Write();
    void Written(const boost::system::error_code& error);
    void Drop();
    void Ended();
    [[nodiscard]] const HttpLimits& Limits() const noexcept { return m_place->Owner().Limits(); }

    const std::shared_ptr<Connections::Place> m_place;
    boost::beast::websocket::stream<MeteredStream<Stream>, kIsDeflated> m_webSocket;
    State m_state = State::Accepting;
    boost::beast::flat_buffer m_buffer;
    std::deque<std::shared_ptr<const std::string>> m_queue; ///< the first one is being written
    std::size_t m_queuedBytes = 0;                          ///< of all but the first
    std::function<void(std::string_view)> m_onMessage;
    std::function<void()> m_onClosed;
    Connections::TimePoint m_sent = std::chrono::steady_clock::now();
    PerMinute m_messages; ///< of the client
};

extern template class WebSocketConnection<HttpStream>;

} // namespace controller
