#include "announce/client/EventStream.h"

#include "announce/client/EventLoop.h"
#include "announce/client/Problem.h"
#include "announce/client/Transport.h"

#include <boost/beast/core/buffers_to_string.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http/string_body.hpp>
#include <boost/beast/websocket/stream.hpp>

#include <deque>

namespace beast = boost::beast;
namespace websocket = boost::beast::websocket;
using boost::system::error_code;

/// What the reading leaves and the taking finds; a read that is under way may outlive the stream.
struct EventStream::Inbox {
    beast::flat_buffer buffer;
    std::deque<std::string> texts;
    error_code error;
};

namespace {

/// The controller gives a sign of life every 20 s.
constexpr std::chrono::seconds kSilence{60};
/// It compresses no event, so nothing here need know how.
constexpr bool kIsDeflated = false;
using Socket = websocket::stream<net::ClientStream, kIsDeflated>;

void Begin(EventLoop& loop, const Connection& connection, Socket& socket) {
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

void Read(const std::shared_ptr<Socket>& socket, const std::shared_ptr<EventStream::Inbox>& inbox) {
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

} // namespace

EventStream::EventStream(EventLoop& loop, const Connection& connection)
    : m_loop(loop)
    , m_address(connection.address.Text())
    , m_inbox(std::make_shared<Inbox>()) {
    const auto socket = std::make_shared<Socket>(transport::Connect(loop, connection));
    Begin(loop, connection, *socket);
    Read(socket, m_inbox);
    m_socket = socket;
}

bool EventStream::HasSome() const {
    return !m_inbox->texts.empty() || m_inbox->error;
}

Json EventStream::Next() {
    m_loop.WaitUntil([this] { return HasSome(); });
    if (m_inbox->texts.empty())
        throw Failure(ExitStatus::NoConnection,
                      "the connection to " + m_address + " is lost: " + m_inbox->error.message());
    const std::string text = std::move(m_inbox->texts.front());
    m_inbox->texts.pop_front();
    Json event = Json::parse(text, nullptr, false);
    if (!event.is_object() || !event.contains("type"))
        throw Failure(ExitStatus::Failed, m_address + " sends what is no event");
    return event;
}

std::optional<Json> EventStream::Next(std::chrono::steady_clock::duration longest) {
    return m_loop.WaitFor(longest, [this] { return HasSome(); }) ? std::optional(Next()) : std::nullopt;
}
