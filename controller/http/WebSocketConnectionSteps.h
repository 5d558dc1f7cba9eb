#pragma once

#include "controller/http/WebSocketConnection.h"

#include <utility>

namespace controller {

/// A message of the largest size that a client may send takes no more reads than that.
constexpr std::size_t kReadsOfMessage = 8;

template <class Stream>
WebSocketConnection<Stream>::WebSocketConnection(const std::shared_ptr<Stream>& stream,
                                                 std::shared_ptr<Connections::Place> place)
    : m_place(std::move(place))
    , m_webSocket(stream, kReadsOfMessage * Limits().messagesPerMinute)
    , m_messages(Limits().messagesPerMinute) {}

template <class Stream>
void WebSocketConnection<Stream>::Start(const RequestReader::Message& request,
                                        std::function<void(std::shared_ptr<WebSocket>)> onOpen) {
    m_place->Hold(this->weak_from_this());
    SetOptions();
    m_webSocket.async_accept(request,
                             [self = this->shared_from_this(), onOpen = std::move(onOpen)](
                                 const boost::system::error_code& error) { self->Accepted(error, onOpen); });
}

template <class Stream>
void WebSocketConnection<Stream>::SetOptions() {
    m_webSocket.read_message_max(Limits().messageBytes);
    m_webSocket.auto_fragment(false);
    m_webSocket.text(true);
    // A client that is silent is asked whether it is still there.
    m_webSocket.set_option(
        boost::beast::websocket::stream_base::timeout{Limits().handshake, Limits().silence, true});
    m_webSocket.control_callback([this](boost::beast::websocket::frame_type kind, boost::beast::string_view) {
        if (kind != boost::beast::websocket::frame_type::close)
            CountMessage();
    });
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
    m_sent = std::chrono::steady_clock::now();
    m_place->Owner().LookBy(m_sent + Limits().alive);
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
            self->CountMessage();
            self->TellMessage();
            self->m_buffer.clear();
            self->Read();
        });
}

template <class Stream>
void WebSocketConnection<Stream>::TellMessage() {
    if (m_state != State::Open || !m_onMessage)
        return;
    const auto listener = m_onMessage; // it may set another one
    const auto bytes = m_buffer.cdata();
    listener({static_cast<const char*>(bytes.data()), bytes.size()});
}

template <class Stream>
void WebSocketConnection<Stream>::CountMessage() {
    if (!m_messages.Count())
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
    m_sent = std::chrono::steady_clock::now();
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
    const boost::beast::websocket::close_reason why(static_cast<boost::beast::websocket::close_code>(code),
                                                    reason.c_str());
    m_webSocket.async_close(why, [self = this->shared_from_this()](const boost::system::error_code&) {
        // Whether the client took part in it or not, the end is the same.
        self->Drop();
    });
}

/// Browsers tell their pages nothing of pings: a page that hears nothing else hears that we are there.
template <class Stream>
Connections::TimePoint WebSocketConnection<Stream>::Check(Connections::TimePoint now) {
    if (m_state != State::Open)
        return Connections::TimePoint::max();
    if (now - m_sent >= Limits().alive) {
        static const auto kAlive = std::make_shared<const std::string>(R"({"type":"alive"})");
        Send(kAlive);
    }
    return m_sent + Limits().alive;
}

template <class Stream>
void WebSocketConnection<Stream>::Stop() {
    m_onClosed = nullptr;
    m_onMessage = nullptr;
    if (m_state == State::Open)
        Close(boost::beast::websocket::close_code::going_away, "the controller ends");
    else
        Drop();
}

template <class Stream>
void WebSocketConnection<Stream>::Drop() {
    boost::beast::close_socket(boost::beast::get_lowest_layer(m_webSocket));
    if (m_state != State::Accepting && m_state != State::Ended)
        m_state = State::Closing;
}

template <class Stream>
void WebSocketConnection<Stream>::Ended() {
    if (m_state == State::Ended)
        return;
    Drop();
    m_state = State::Ended;
    m_onMessage = nullptr;
    using Timeout = boost::beast::websocket::stream_base;
    m_webSocket.set_option(
        Timeout::timeout{Timeout::none(), Timeout::none(), false}); // somebody may still hold us
    if (const auto listener = std::exchange(m_onClosed, nullptr))
        listener();
}

} // namespace controller
