#pragma once

#include "controller/http/HttpConnection.h"
#include "controller/http/WebSocketConnection.h"
#include "controller/http/WebSocketRequest.h"

#include <boost/asio/write.hpp>
#include <boost/beast/core/stream_traits.hpp>
#include <boost/beast/websocket/teardown.hpp>

#include <exception>

namespace controller {

template <class Stream>
HttpConnection<Stream>::HttpConnection(std::shared_ptr<Stream> stream,
                                       std::shared_ptr<Connections::Place> place,
                                       IHttpHandler& handler)
    : m_stream(std::move(stream))
    , m_place(std::move(place))
    , m_handler(handler)
    , m_reader(Limits(), m_place->Address(), m_stream->IsSecure()) {}

template <class Stream>
void HttpConnection<Stream>::Start() {
    m_place->Hold(this->weak_from_this());
    if (!m_stream->IsSecure()) {
        NextRequest();
        return;
    }
    Enter(State::Handshake, Limits().handshake);
    m_stream->Handshake([self = this->shared_from_this()](const boost::system::error_code& error) {
        if (!error && !self->HasEnded())
            self->NextRequest();
    });
}

template <class Stream>
void HttpConnection<Stream>::NextRequest() {
    m_reader.Begin();
    m_isLast = false;
    if (!m_reader.HasBytes()) {
        Enter(State::Idle, Limits().idle);
        Read();
        return;
    }
    // What came with the former request is the next one already.
    Enter(State::Head, Limits().request);
    Do(m_reader.Parse());
}

template <class Stream>
void HttpConnection<Stream>::Read() {
    m_stream->async_read_some(
        m_reader.Room(), [self = this->shared_from_this()](const boost::system::error_code& error,
                                                           std::size_t read) { self->WasRead(error, read); });
}

template <class Stream>
void HttpConnection<Stream>::WasRead(const boost::system::error_code& error, std::size_t size) {
    // What still comes of a request that took too long is wanted by nobody.
    if (m_state != State::Idle && m_state != State::Head && m_state != State::Body)
        return;
    if (error) {
        CloseSocket();
        return;
    }
    m_reader.Commit(size);
    const auto step = m_reader.Parse();
    if (m_state == State::Idle && step == RequestReader::Step::Read)
        Enter(State::Head, Limits().request);
    Do(step);
}

template <class Stream>
void HttpConnection<Stream>::Do(RequestReader::Step step) {
    switch (step) {
    case RequestReader::Step::Read:
        Read();
        break;
    case RequestReader::Step::Head:
        Handle();
        break;
    case RequestReader::Step::Body:
        HandBody();
        break;
    case RequestReader::Step::Refused:
        Refuse(m_reader.TakeRefusal());
        break;
    }
}

template <class Stream>
template <class Work>
void HttpConnection<Stream>::Guard(const Work& work) {
    m_state = State::Handling;
    try {
        work();
    } catch (const std::exception&) {
        if (m_state == State::Handling)
            Refuse({500, "the controller failed to handle this request", ""});
    }
}

template <class Stream>
void HttpConnection<Stream>::Handle() {
    Guard([this] { m_handler.Handle(this->shared_from_this()); });
}

template <class Stream>
void HttpConnection<Stream>::ReadBody(std::size_t limit,
                                      std::chrono::seconds time,
                                      std::function<void(std::string body)> onBody) {
    m_onBody = std::move(onBody);
    const auto step = m_reader.WantBody(limit);
    if (step == RequestReader::Step::Read)
        Enter(State::Body, time);
    if (step == RequestReader::Step::Read && m_reader.AwaitsContinue())
        SendContinue();
    else
        Do(step);
}

template <class Stream>
void HttpConnection<Stream>::SendContinue() {
    static constexpr std::string_view kContinue = "HTTP/1.1 100 Continue\r\n\r\n";
    boost::asio::async_write(
        *m_stream, boost::asio::const_buffer(kContinue.data(), kContinue.size()),
        [self = this->shared_from_this()](const boost::system::error_code& error, std::size_t) {
            if (error)
                self->CloseSocket();
            else if (self->m_state == State::Body)
                self->Read();
        });
}

template <class Stream>
void HttpConnection<Stream>::HandBody() {
    Guard([this, onBody = std::exchange(m_onBody, nullptr)] { onBody(m_reader.TakeBody()); });
}

template <class Stream>
void HttpConnection<Stream>::Refuse(const HttpRefusal& refusal) {
    m_onBody = nullptr;
    m_isLast = true;
    m_state = State::Handling;
    Reply(m_handler.Explain(refusal));
}

template <class Stream>
void HttpConnection<Stream>::Reply(HttpReply reply) {
    if (m_state != State::Handling)
        return; // the connection has ended, or has its reply
    m_handler.Answered(reply.status);
    m_isLast = m_isLast || !m_reader.IsWhole() || !m_reader.KeepsAlive();
    const HttpRequest& request = m_reader.Request();
    m_writer.Begin(std::move(reply),
                   {m_place->Owner().Date(), request.Header("host"), request.Header("accept-encoding"),
                    m_reader.IsOld(), m_reader.IsHeadRequest(), m_stream->IsSecure(), m_isLast});
    // A long reply may take as long as a slow line needs for it.
    Enter(State::Replying, Limits().reply + std::chrono::seconds(m_writer.Size() / 16384));
    Write();
}

template <class Stream>
void HttpConnection<Stream>::Write() {
    m_stream->async_write_some(
        m_writer.Next(), [self = this->shared_from_this()](const boost::system::error_code& error,
                                                           std::size_t size) { self->Written(error, size); });
}

template <class Stream>
void HttpConnection<Stream>::Written(const boost::system::error_code& error, std::size_t size) {
    if (HasEnded())
        return;
    if (error)
        CloseSocket();
    else if (m_writer.Advance(size))
        Write();
    else if (m_isLast)
        CloseInOrder();
    else
        NextRequest();
}

/// A client that still sends would lose our reply if the socket were closed under its hands: it is told that
/// nothing more comes, and heard out.
template <class Stream>
void HttpConnection<Stream>::CloseInOrder() {
    Enter(State::Closing, std::chrono::seconds(2));
    if (m_stream->IsSecure())
        m_stream->Shutdown(
            [self = this->shared_from_this()](const boost::system::error_code&) { self->CloseTransport(); });
    else
        CloseTransport();
}

template <class Stream>
void HttpConnection<Stream>::CloseTransport() {
    if (HasEnded())
        return;
    using boost::beast::websocket::async_teardown;
    async_teardown(
        boost::beast::role_type::server, boost::beast::get_lowest_layer(*m_stream),
        [self = this->shared_from_this()](const boost::system::error_code&) { self->CloseSocket(); });
}

template <class Stream>
void HttpConnection<Stream>::Upgrade(std::function<void(std::shared_ptr<WebSocket>)> onOpen) {
    if (m_reader.HasBytes() || !m_reader.IsWhole()) {
        Refuse({400, "data came before the WebSocket was open",
                "nothing behind the request until its reply has come"});
        return;
    }
    if (auto refusal = RefusalOfWebSocket(m_reader.Request())) {
        Reply(m_handler.Explain(*refusal));
        return;
    }
    m_handler.Answered(101);
    m_state = State::Ended; // the WebSocket has the socket now
    const auto webSocket = std::make_shared<WebSocketConnection<Stream>>(m_stream, m_place);
    webSocket->Start(m_reader.BeastRequest(), std::move(onOpen));
}

template <class Stream>
void HttpConnection<Stream>::Enter(State state, std::chrono::seconds time) {
    m_state = state;
    m_deadline = std::chrono::steady_clock::now() + time;
    m_place->Owner().LookBy(m_deadline);
}

template <class Stream>
Connections::TimePoint HttpConnection<Stream>::Check(Connections::TimePoint now) {
    if (m_state == State::Handling || HasEnded())
        return Connections::TimePoint::max();
    if (now < m_deadline)
        return m_deadline;
    if (m_state == State::Head || m_state == State::Body)
        Refuse({408, "the request did not come in time", "a whole request"});
    else
        CloseSocket();
    return HasEnded() ? Connections::TimePoint::max() : m_deadline;
}

template <class Stream>
bool HttpConnection<Stream>::IsWaiting() const noexcept {
    return m_state == State::Handshake || m_state == State::Idle || m_state == State::Head;
}

template <class Stream>
void HttpConnection<Stream>::CloseSocket() {
    if (!HasEnded())
        boost::beast::close_socket(boost::beast::get_lowest_layer(*m_stream));
    m_state = State::Ended;
    m_onBody = nullptr;
}

} // namespace controller
