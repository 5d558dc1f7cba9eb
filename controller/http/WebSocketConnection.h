#pragma once

#include "controller/http/Connections.h"
#include "controller/http/HttpConnection.h"
#include "controller/http/HttpExchange.h"

#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http/message.hpp>
#include <boost/beast/websocket/ssl.hpp>
#include <boost/beast/websocket/stream.hpp>

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace controller {

/// A connection after it has become a WebSocket. Included by `HttpConnection.cpp` only.
///
/// What the client sends is read, so that its pongs and its end are seen, and thrown away.
template <class Stream>
class WebSocketConnection final : public WebSocket,
                                  public Connections::Member,
                                  public std::enable_shared_from_this<WebSocketConnection<Stream>> {
public:
    WebSocketConnection(std::shared_ptr<Stream> stream, std::shared_ptr<Connections::Place> place)
        : m_stream(std::move(stream))
        , m_place(std::move(place))
        , m_webSocket(*m_stream) {}

    template <class Request>
    void Start(const Request& request, std::function<void(std::shared_ptr<WebSocket>)> onOpen);

    void Send(std::shared_ptr<const std::string> text) override;
    void Close(unsigned code, const std::string& reason) override;
    void OnClosed(std::function<void()> listener) override;

    Connections::TimePoint Check(Connections::TimePoint now) override;
    void Stop() override;

private:
    using Clock = std::chrono::steady_clock;
    enum class State { Accepting, Open, Closing, Ended };

    void Accepted(const boost::system::error_code& error,
                  const std::function<void(std::shared_ptr<WebSocket>)>& onOpen);
    void Read();
    void CountMessage();
    void Write();
    void Written(const boost::system::error_code& error);
    void Drop();
    void Ended();
    [[nodiscard]] const HttpLimits& Limits() const noexcept { return m_place->Owner().Limits(); }

    const std::shared_ptr<Stream> m_stream;
    const std::shared_ptr<Connections::Place> m_place;
    boost::beast::websocket::stream<Stream&> m_webSocket;
    State m_state = State::Accepting;
    boost::beast::flat_buffer m_buffer;
    std::deque<std::shared_ptr<const std::string>> m_queue; ///< the first one is being written
    std::size_t m_queuedBytes = 0;                          ///< of all but the first
    std::function<void()> m_onClosed;
    Clock::time_point m_heard = Clock::now();
    Clock::time_point m_sent = Clock::now();
    Clock::time_point m_countedSince = Clock::now();
    std::size_t m_counted = 0; ///< messages of the client in the present minute
    bool m_isPinging = false;
};

template <class Stream>
template <class Request>
void WebSocketConnection<Stream>::Start(const Request& request,
                                        std::function<void(std::shared_ptr<WebSocket>)> onOpen) {
    auto& connections = m_place->Owner();
    connections.Join(this->shared_from_this());
    connections.LookBy(m_sent + Limits().handshake);
    m_webSocket.read_message_max(Limits().messageBytes);
    m_webSocket.auto_fragment(false);
    m_webSocket.text(true);
    m_webSocket.control_callback([this](boost::beast::websocket::frame_type kind, boost::beast::string_view) {
        m_heard = Clock::now();
        if (kind != boost::beast::websocket::frame_type::close)
            CountMessage();
    });
    m_webSocket.async_accept(request,
                             [self = this->shared_from_this(), onOpen = std::move(onOpen)](
                                 const boost::system::error_code& error) { self->Accepted(error, onOpen); });
}

template <class Stream>
void WebSocketConnection<Stream>::Accepted(const boost::system::error_code& error,
                                           const std::function<void(std::shared_ptr<WebSocket>)>& onOpen) {
    if (m_state != State::Accepting)
        return;
    if (error) {
        Drop();
        m_state = State::Ended;
        return;
    }
    m_state = State::Open;
    Read();
    onOpen(this->shared_from_this());
}

template <class Stream>
void WebSocketConnection<Stream>::Read() {
    m_webSocket.async_read(
        m_buffer, [self = this->shared_from_this()](const boost::system::error_code& error, std::size_t) {
            if (error) {
                self->Ended();
                return;
            }
            self->m_buffer.clear();
            self->m_heard = Clock::now();
            self->CountMessage();
            self->Read();
        });
}

template <class Stream>
void WebSocketConnection<Stream>::CountMessage() {
    const auto now = Clock::now();
    if (now - m_countedSince > std::chrono::minutes(1)) {
        m_countedSince = now;
        m_counted = 0;
    }
    if (++m_counted > Limits().messagesPerMinute)
        Drop();
}

template <class Stream>
void WebSocketConnection<Stream>::Send(std::shared_ptr<const std::string> text) {
    if (m_state != State::Open)
        return;
    if (!m_queue.empty()) {
        m_queuedBytes += text->size();
        if (m_queue.size() > Limits().queuedMessages || m_queuedBytes > Limits().queuedBytes) {
            Drop();
            return;
        }
    }
    m_queue.push_back(std::move(text));
    if (m_queue.size() == 1)
        Write();
}

template <class Stream>
void WebSocketConnection<Stream>::Write() {
    m_sent = Clock::now();
    const std::string& text = *m_queue.front();
    m_webSocket.async_write(boost::asio::const_buffer(text.data(), text.size()),
                            [self = this->shared_from_this()](const boost::system::error_code& error,
                                                              std::size_t) { self->Written(error); });
}

template <class Stream>
void WebSocketConnection<Stream>::Written(const boost::system::error_code& error) {
    if (error || m_state != State::Open) {
        m_queue.clear();
        return;
    }
    m_queue.pop_front();
    if (m_queue.empty())
        return;
    m_queuedBytes -= m_queue.front()->size();
    Write();
}

template <class Stream>
void WebSocketConnection<Stream>::Close(unsigned code, const std::string& reason) {
    if (m_state != State::Open)
        return;
    m_state = State::Closing;
    m_sent = Clock::now();
    m_place->Owner().LookBy(m_sent + Limits().handshake);
    const boost::beast::websocket::close_reason why(static_cast<boost::beast::websocket::close_code>(code),
                                                    reason.c_str());
    m_webSocket.async_close(why, [self = this->shared_from_this()](const boost::system::error_code&) {
        // Whether the client took part in it or not, the end is the same.
        self->Drop();
    });
}

template <class Stream>
void WebSocketConnection<Stream>::OnClosed(std::function<void()> listener) {
    m_onClosed = std::move(listener);
}

template <class Stream>
Connections::TimePoint WebSocketConnection<Stream>::Check(Connections::TimePoint now) {
    if (m_state == State::Ended)
        return Connections::TimePoint::max();
    if (m_state != State::Open) {
        const auto end = m_sent + Limits().handshake;
        if (now >= end)
            Drop();
        return end;
    }
    if (now - m_heard >= Limits().silence) {
        Drop();
        return Connections::TimePoint::max();
    }
    if (now - m_sent >= Limits().alive) {
        static const auto kAlive = std::make_shared<const std::string>(R"({"type":"alive"})");
        Send(kAlive);
    }
    // A client that hears from us is asked, too, whether it is still there.
    if (!m_isPinging && now - m_heard >= Limits().alive) {
        m_isPinging = true;
        m_webSocket.async_ping({}, [self = this->shared_from_this()](const boost::system::error_code&) {
            self->m_isPinging = false; // a failure is seen by the read
        });
    }
    return std::min(m_sent + Limits().alive, m_heard + Limits().silence);
}

template <class Stream>
void WebSocketConnection<Stream>::Stop() {
    m_onClosed = nullptr;
    if (m_state == State::Open)
        Close(boost::beast::websocket::close_code::going_away, "the controller ends");
    else
        Drop();
}

template <class Stream>
void WebSocketConnection<Stream>::Drop() {
    boost::system::error_code ignored; // closing is all that can be done
    boost::beast::get_lowest_layer(*m_stream).close(ignored);
    if (m_state != State::Accepting && m_state != State::Ended)
        m_state = State::Closing;
}

template <class Stream>
void WebSocketConnection<Stream>::Ended() {
    if (m_state == State::Ended)
        return;
    Drop();
    m_state = State::Ended;
    if (const auto listener = std::exchange(m_onClosed, nullptr))
        listener();
}

} // namespace controller
