#include "controller/http/HttpConnection.h"

#include "controller/http/Problem.h"
#include "controller/http/ReplyHead.h"
#include "controller/http/RequestHead.h"
#include "controller/http/WebSocketConnection.h"

#include <boost/asio/ssl/stream.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/string_body.hpp>
#include <boost/beast/websocket/rfc6455.hpp>

#include <algorithm>
#include <array>
#include <exception>
#include <limits>
#include <optional>
#include <type_traits>

namespace controller {

// Beast takes long to compile: this and RequestHead.cpp are the only sources that include it.

namespace {

namespace http = boost::beast::http;
using Clock = std::chrono::steady_clock;
using TlsStream = boost::asio::ssl::stream<HttpSocket>;

template <class Stream>
class HttpConnection final : public HttpExchange,
                             public Connections::Member,
                             public std::enable_shared_from_this<HttpConnection<Stream>> {
public:
    static constexpr bool kIsSecure = !std::is_same_v<Stream, HttpSocket>;

    HttpConnection(std::shared_ptr<Stream> stream,
                   std::shared_ptr<Connections::Place> place,
                   IHttpHandler& handler)
        : m_stream(std::move(stream))
        , m_place(std::move(place))
        , m_handler(handler) {}

    void Start();

    [[nodiscard]] const HttpRequest& Request() const noexcept override { return m_request; }
    void ReadBody(std::size_t limit,
                  std::chrono::seconds time,
                  std::function<void(std::string body)> onBody) override;
    void Reply(HttpReply reply) override;
    void Upgrade(std::function<void(std::shared_ptr<WebSocket>)> onOpen) override;

    Connections::TimePoint Check(Connections::TimePoint now) override;
    void Stop() override { CloseSocket(); }

private:
    enum class State { Handshake, Idle, Head, Handling, Body, Replying, Draining, Ended };
    using Parser = http::request_parser<http::string_body>;

    void NextRequest();
    void Read(std::size_t size);
    void WasRead(const boost::system::error_code& error, std::size_t size);
    void Parse();
    void ParseFailed(const boost::system::error_code& error);
    void HeadIsRead();
    void FillRequest();
    void BodyIsRead();
    void Refuse(unsigned status, std::string_view detail, std::string_view right);
    void RefuseVersion();
    void Written(const boost::system::error_code& error);
    void Drain();
    void CloseSocket();
    void Enter(State state, std::chrono::seconds time);
    void EnterHandling() noexcept { m_state = State::Handling; }
    [[nodiscard]] const HttpLimits& Limits() const noexcept { return m_place->Owner().Limits(); }
    [[nodiscard]] HttpSocket& Socket() noexcept { return boost::beast::get_lowest_layer(*m_stream); }

    const std::shared_ptr<Stream> m_stream;
    const std::shared_ptr<Connections::Place> m_place;
    IHttpHandler& m_handler;
    State m_state = State::Handshake;
    Connections::TimePoint m_deadline = Connections::TimePoint::max();
    boost::beast::flat_buffer m_buffer;
    std::optional<Parser> m_parser;
    HttpRequest m_request;
    std::size_t m_bodyLimit = 0;
    std::function<void(std::string)> m_onBody;
    std::string m_head;
    HttpReply m_reply;
    bool m_isHeadRequest = false;
    bool m_isReading = false;
    bool m_isLast = false;
};

template <class Stream>
void HttpConnection<Stream>::Start() {
    m_place->Owner().Join(this->shared_from_this());
    if constexpr (kIsSecure) {
        Enter(State::Handshake, Limits().handshake);
        m_stream->async_handshake(boost::asio::ssl::stream_base::server,
                                  [self = this->shared_from_this()](const boost::system::error_code& error) {
                                      if (!error && self->m_state != State::Ended)
                                          self->NextRequest();
                                  });
    } else {
        NextRequest();
    }
}

template <class Stream>
void HttpConnection<Stream>::NextRequest() {
    m_parser.emplace();
    m_parser->header_limit(static_cast<std::uint32_t>(Limits().headerBytes));
    // The handler says how long a body may be, when it knows what it is for. (No limit at all refuses every
    // body in this version of the library.)
    m_parser->body_limit(std::numeric_limits<std::uint64_t>::max());
    m_isLast = false;
    if (m_buffer.size() == 0) {
        Enter(State::Idle, Limits().idle);
        Read(4096);
        return;
    }
    // What came with the former request is the next one already.
    Enter(State::Head, Limits().request);
    Parse();
}

template <class Stream>
void HttpConnection<Stream>::Read(std::size_t size) {
    m_isReading = true;
    m_stream->async_read_some(m_buffer.prepare(size), [self = this->shared_from_this()](
                                                          const boost::system::error_code& error,
                                                          std::size_t read) { self->WasRead(error, read); });
}

template <class Stream>
void HttpConnection<Stream>::WasRead(const boost::system::error_code& error, std::size_t size) {
    m_isReading = false;
    // While a reply is on its way, a read is left only of a request that took too long; nobody wants it any
    // more.
    if (m_state == State::Ended || m_state == State::Replying)
        return;
    if (error) {
        CloseSocket();
        return;
    }
    if (m_state == State::Draining) {
        Drain();
        return;
    }
    m_buffer.commit(size);
    if (m_state == State::Idle)
        Enter(State::Head, Limits().request);
    Parse();
}

template <class Stream>
void HttpConnection<Stream>::Parse() {
    boost::system::error_code error;
    while (m_buffer.size() > 0) {
        m_buffer.consume(m_parser->put(m_buffer.data(), error));
        if (m_state == State::Body && m_parser->get().body().size() > m_bodyLimit) {
            Refuse(413, "the body is too large", "at most " + std::to_string(m_bodyLimit) + " bytes");
            return;
        }
        if (error || m_state == State::Head || m_parser->is_done())
            break;
    }
    if (error && error != http::error::need_more) {
        ParseFailed(error);
        return;
    }
    if (m_state == State::Head && m_parser->is_header_done()) {
        HeadIsRead();
        return;
    }
    if (m_state == State::Body && m_parser->is_done()) {
        BodyIsRead();
        return;
    }
    Read(m_state == State::Body ? 65536 : 4096);
}

template <class Stream>
void HttpConnection<Stream>::ParseFailed(const boost::system::error_code& error) {
    if (error == http::error::header_limit) {
        Refuse(431, "the request's head is too large",
               "at most " + std::to_string(Limits().headerBytes) + " bytes");
        return;
    }
    if (error == http::error::bad_version) {
        Refuse(505, "the request is of an unknown version", "HTTP/1.1");
        return;
    }
    Refuse(400, "the request is no HTTP: " + error.message(), "an HTTP/1.1 request");
}

template <class Stream>
void HttpConnection<Stream>::FillRequest() {
    const auto& message = m_parser->get();
    m_request = RequestOf(message);
    m_isHeadRequest = m_request.method == "HEAD";
    if (m_isHeadRequest)
        m_request.method = "GET";
    m_request.peer = m_place->Address();
    m_request.isSecure = kIsSecure;
    m_request.isUpgrade = boost::beast::websocket::is_upgrade(message);
    m_request.hasBody = !m_parser->is_done();
}

template <class Stream>
void HttpConnection<Stream>::HeadIsRead() {
    m_parser->eager(true);
    FillRequest();
    EnterHandling();
    const auto& message = m_parser->get();
    if (message.target().size() > Limits().targetBytes) {
        Refuse(414, "the address is too long", "at most " + std::to_string(Limits().targetBytes) + " bytes");
        return;
    }
    if (message.version() != 10 && message.version() != 11) {
        Refuse(505, "the request is of an unknown version", "HTTP/1.1");
        return;
    }
    // Whoever forwards such a request may have taken its end to be somewhere else than we would.
    if (m_request.CountHeaders("content-length") + m_request.CountHeaders("transfer-encoding") > 1) {
        Refuse(400, "the request's length is given more than once",
               "Content-Length or Transfer-Encoding, once");
        return;
    }
    try {
        m_handler.Handle(this->shared_from_this());
    } catch (const std::exception&) {
        if (m_state == State::Handling)
            Refuse(500, "the controller failed to handle this request", {});
    }
}

template <class Stream>
void HttpConnection<Stream>::ReadBody(std::size_t limit,
                                      std::chrono::seconds time,
                                      std::function<void(std::string body)> onBody) {
    m_bodyLimit = limit;
    m_onBody = std::move(onBody);
    const auto length = m_parser->content_length();
    if (length && *length > limit) {
        Refuse(413, "the body is too large: " + std::to_string(*length) + " bytes",
               "at most " + std::to_string(limit) + " bytes");
        return;
    }
    if (m_parser->is_done()) {
        EnterHandling();
        BodyIsRead();
        return;
    }
    Enter(State::Body, time);
    if (m_request.Header("expect") != "100-continue" || m_buffer.size() > 0) {
        Parse();
        return;
    }
    static constexpr std::string_view kContinue = "HTTP/1.1 100 Continue\r\n\r\n";
    boost::asio::async_write(
        *m_stream, boost::asio::const_buffer(kContinue.data(), kContinue.size()),
        [self = this->shared_from_this()](const boost::system::error_code& error, std::size_t) {
            if (!error && self->m_state == State::Body)
                self->Parse();
        });
}

template <class Stream>
void HttpConnection<Stream>::BodyIsRead() {
    EnterHandling();
    const auto onBody = std::exchange(m_onBody, nullptr);
    try {
        onBody(std::move(m_parser->get().body()));
    } catch (const std::exception&) {
        if (m_state == State::Handling)
            Refuse(500, "the controller failed to handle this request", {});
    }
}

template <class Stream>
void HttpConnection<Stream>::Refuse(unsigned status, std::string_view detail, std::string_view right) {
    m_onBody = nullptr;
    m_isLast = true;
    EnterHandling();
    Reply(Problem(status, detail, right));
}

template <class Stream>
void HttpConnection<Stream>::RefuseVersion() {
    HttpReply reply =
        Problem(426, "the WebSocket request is of an unknown version", "Sec-WebSocket-Version: 13");
    reply.headers.emplace_back("Sec-WebSocket-Version", "13");
    reply.headers.emplace_back("Upgrade", "websocket");
    Reply(std::move(reply));
}

template <class Stream>
void HttpConnection<Stream>::Reply(HttpReply reply) {
    if (m_state != State::Handling)
        return; // the connection has ended, or has its reply
    m_reply = std::move(reply);
    const auto& message = m_parser->get();
    m_isLast = m_isLast || !m_parser->is_done() || !message.keep_alive();
    m_head.clear();
    AppendHead(m_head, m_reply,
               {m_place->Owner().Date(), m_request.Header("host"), message.version() == 10, m_isLast});
    const std::string_view body = m_isHeadRequest ? std::string_view() : ViewOf(m_reply.body);
    // A long reply may take as long as a slow line needs for it.
    Enter(State::Replying, Limits().reply + std::chrono::seconds(body.size() / 16384));
    const std::array<boost::asio::const_buffer, 2> buffers{
        boost::asio::const_buffer(m_head.data(), m_head.size()),
        boost::asio::const_buffer(body.data(), body.size())};
    boost::asio::async_write(*m_stream, buffers,
                             [self = this->shared_from_this()](const boost::system::error_code& error,
                                                               std::size_t) { self->Written(error); });
}

template <class Stream>
void HttpConnection<Stream>::Written(const boost::system::error_code& error) {
    if (m_state == State::Ended)
        return;
    if (error) {
        CloseSocket();
        return;
    }
    m_reply = {};
    if (!m_isLast) {
        NextRequest();
        return;
    }
    // A client that still sends would lose our reply if the socket were closed under its hands.
    boost::system::error_code ignored; // the client may have gone
    Socket().shutdown(HttpSocket::shutdown_send, ignored);
    Enter(State::Draining, std::chrono::seconds(2));
    Drain();
}

template <class Stream>
void HttpConnection<Stream>::Drain() {
    if (m_isReading)
        return;
    m_buffer.clear();
    Read(65536);
}

template <class Stream>
void HttpConnection<Stream>::Upgrade(std::function<void(std::shared_ptr<WebSocket>)> onOpen) {
    if (m_buffer.size() > 0) {
        Refuse(400, "data came before the WebSocket was open",
               "nothing behind the request until its reply has come");
        return;
    }
    // The library would refuse these, too, but with a text of its own.
    if (m_request.Header("sec-websocket-version") != "13") {
        RefuseVersion();
        return;
    }
    if (!IsWebSocketKey(m_request.Header("sec-websocket-key"))) {
        Refuse(400, "the WebSocket request has no proper key", "Sec-WebSocket-Key: 16 bytes in base64");
        return;
    }
    m_state = State::Ended; // the WebSocket has the socket now
    const auto webSocket = std::make_shared<WebSocketConnection<Stream>>(m_stream, m_place);
    webSocket->Start(m_parser->get(), std::move(onOpen));
}

template <class Stream>
void HttpConnection<Stream>::Enter(State state, std::chrono::seconds time) {
    m_state = state;
    m_deadline = Clock::now() + time;
    m_place->Owner().LookBy(m_deadline);
}

template <class Stream>
Connections::TimePoint HttpConnection<Stream>::Check(Connections::TimePoint now) {
    if (m_state == State::Handling || m_state == State::Ended)
        return Connections::TimePoint::max();
    if (now < m_deadline)
        return m_deadline;
    if (m_state != State::Head && m_state != State::Body) {
        CloseSocket();
        return Connections::TimePoint::max();
    }
    // The read that is under way ends without harm while the reply goes out.
    Refuse(408, "the request did not come in time", {});
    return m_deadline;
}

template <class Stream>
void HttpConnection<Stream>::CloseSocket() {
    if (m_state != State::Ended) {
        boost::system::error_code ignored; // closing is all that can be done
        Socket().close(ignored);
    }
    m_state = State::Ended;
    m_onBody = nullptr;
}

} // namespace

void ServeConnection(HttpSocket socket,
                     std::shared_ptr<Connections::Place> place,
                     IHttpHandler& handler,
                     boost::asio::ssl::context* tls) {
    if (tls == nullptr) {
        auto stream = std::make_shared<HttpSocket>(std::move(socket));
        std::make_shared<HttpConnection<HttpSocket>>(std::move(stream), std::move(place), handler)->Start();
        return;
    }
    auto stream = std::make_shared<TlsStream>(std::move(socket), *tls);
    std::make_shared<HttpConnection<TlsStream>>(std::move(stream), std::move(place), handler)->Start();
}

} // namespace controller
