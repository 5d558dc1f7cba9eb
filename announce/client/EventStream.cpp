#include "announce/client/EventStream.h"

#include "announce/client/Problem.h"
#include "announce/client/Transport.h"

#include <boost/beast/core/buffers_to_string.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http/string_body.hpp>
#include <boost/beast/ssl.hpp>
#include <boost/beast/websocket.hpp>
#include <boost/beast/websocket/ssl.hpp>

#include <deque>

namespace beast = boost::beast;
namespace websocket = boost::beast::websocket;
using boost::system::error_code;

/// One socket, whatever it runs over.
class EventStream::Implementation {
public:
    Implementation(EventLoop& loop, const Connection& connection) : m_loop(loop), m_connection(connection) {}
    Implementation(const Implementation&) = delete;
    Implementation& operator=(const Implementation&) = delete;
    virtual ~Implementation() = default;

    std::optional<Json> Next(std::optional<EventLoop::Duration> longest) {
        const auto hasSome = [this] {
            return !m_inbox->texts.empty() || m_inbox->error;
        };
        if (!longest)
            m_loop.WaitUntil(hasSome);
        else if (!m_loop.WaitFor(*longest, hasSome))
            return std::nullopt;
        if (m_inbox->texts.empty())
            throw Failure(ExitStatus::NoConnection, "the connection to " + m_connection.address.Text() +
                                                        " is lost: " + m_inbox->error.message());
        const std::string text = std::move(m_inbox->texts.front());
        m_inbox->texts.pop_front();
        Json event = Json::parse(text, nullptr, false);
        if (!event.is_object() || !event.contains("type"))
            throw Failure(ExitStatus::Failed, m_connection.address.Text() + " sends what is no event");
        return event;
    }

protected:
    /// What the reading leaves and the taking finds; a read that is under way may outlive the stream.
    struct Inbox {
        beast::flat_buffer buffer;
        std::deque<std::string> texts;
        error_code error;
    };

    EventLoop& m_loop;
    Connection m_connection;
    std::shared_ptr<Inbox> m_inbox = std::make_shared<Inbox>();
};

namespace {

/// The controller gives a sign of life every 20 s.
constexpr std::chrono::seconds kSilence{60};

template <class Stream>
void Begin(EventLoop& loop, const Connection& connection, websocket::stream<Stream>& socket) {
    beast::get_lowest_layer(socket).expires_never();
    socket.set_option(websocket::stream_base::timeout{connection.patience, kSilence, false});
    socket.set_option(websocket::stream_base::decorator([&connection](websocket::request_type& request) {
        request.set(beast::http::field::user_agent, "announce");
        if (!connection.token.empty())
            request.set(beast::http::field::authorization, "Bearer " + connection.token);
    }));
    websocket::response_type response;
    const error_code error = loop.Await([&](auto done) {
        socket.async_handshake(response, connection.address.Authority(), "/api/events", std::move(done));
    });
    if (error == websocket::error::upgrade_declined)
        ThrowProblem({response.result_int(), response.body(), "",
                      std::string(response[beast::http::field::retry_after])});
    transport::RequireConnected(error, connection);
}

} // namespace

/// A socket over `Stream`.
template <class Stream>
class SocketOver final : public EventStream::Implementation {
public:
    template <class... More>
    SocketOver(EventLoop& loop, const Connection& connection, More&&... more)
        : Implementation(loop, connection)
        , m_socket(std::make_shared<websocket::stream<Stream>>(loop.Context(), std::forward<More>(more)...)) {
    }

    [[nodiscard]] Stream& Below() { return m_socket->next_layer(); }

    void Start() {
        Begin(m_loop, m_connection, *m_socket);
        Read(m_socket, m_inbox);
    }

private:
    static void Read(const std::shared_ptr<websocket::stream<Stream>>& socket,
                     const std::shared_ptr<Inbox>& inbox) {
        socket->async_read(inbox->buffer,
                           [weak = std::weak_ptr(socket), inbox](const error_code& error, std::size_t) {
                               inbox->error = error;
                               const auto living = weak.lock();
                               if (error || !living)
                                   return;
                               inbox->texts.push_back(beast::buffers_to_string(inbox->buffer.data()));
                               inbox->buffer.clear();
                               Read(living, inbox);
                           });
    }

    const std::shared_ptr<websocket::stream<Stream>> m_socket;
};

namespace {

using Plain = SocketOver<beast::tcp_stream>;
using Secure = SocketOver<beast::ssl_stream<beast::tcp_stream>>;

std::unique_ptr<Plain> ConnectPlainly(EventLoop& loop, const Connection& connection) {
    auto socket = std::make_unique<Plain>(loop, connection);
    transport::Connect(loop, connection, socket->Below());
    socket->Start();
    return socket;
}

std::unique_ptr<Secure> ConnectSecurely(EventLoop& loop, const Connection& connection) {
    auto tls = transport::MakeTls(connection);
    auto socket = std::make_unique<Secure>(loop, connection, tls);
    auto& below = socket->Below();
    transport::CheckName(below.native_handle(), connection);
    transport::Connect(loop, connection, below.next_layer());
    const error_code error = loop.Await(
        [&](auto done) { below.async_handshake(boost::asio::ssl::stream_base::client, std::move(done)); });
    transport::RequireConnected(error, connection, below.native_handle());
    socket->Start();
    return socket;
}

} // namespace

EventStream::EventStream(EventLoop& loop, const Connection& connection) {
    if (connection.address.isSecure)
        m_implementation = ConnectSecurely(loop, connection);
    else
        m_implementation = ConnectPlainly(loop, connection);
}

EventStream::EventStream(EventStream&&) noexcept = default;
EventStream::~EventStream() = default;

Json EventStream::Next() {
    return std::move(*m_implementation->Next(std::nullopt));
}

std::optional<Json> EventStream::Next(EventLoop::Duration longest) {
    return m_implementation->Next(longest);
}
