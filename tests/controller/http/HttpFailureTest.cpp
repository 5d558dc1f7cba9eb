#include "controller/http/HttpConnectionSteps.h"
#include "controller/http/WebSocketConnectionSteps.h"

#include <boost/asio/post.hpp>
#include <boost/beast/_experimental/test/stream.hpp>
#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace controller {

namespace {

/// Bytes in memory, without TLS.
class Stream final : public boost::beast::test::stream {
public:
    using stream::stream;

    template <class Handler>
    friend void async_teardown(boost::beast::role_type role, Stream& stream, Handler&& handler) {
        async_teardown(role, static_cast<boost::beast::test::stream&>(stream),
                       std::forward<Handler>(handler));
    }

    [[nodiscard]] static bool IsSecure() { return false; }
    template <class Done>
    void Handshake(const Done& /*done*/) {
        ADD_FAILURE() << "it is not secure";
    }
    template <class Done>
    void Shutdown(const Done& /*done*/) {
        ADD_FAILURE() << "it is not secure";
    }
};

/// Answers at once, later, with a body, with a long packed text, or opens a WebSocket that says three things.
class Handler final : public IHttpHandler {
public:
    explicit Handler(boost::asio::io_context& context) : m_context(context) {}

    HttpReply Explain(const HttpRefusal& refusal) override {
        HttpReply reply;
        reply.status = refusal.status;
        reply.contentType = "application/problem+json";
        reply.headers = refusal.headers;
        reply.body = refusal.detail + "; right: " + refusal.right;
        return reply;
    }

    void Handle(std::shared_ptr<HttpExchange> exchange) override {
        ++handled;
        const HttpRequest& request = exchange->Request();
        if (request.isUpgrade)
            exchange->Upgrade([this](const std::shared_ptr<WebSocket>& socket) { Opened(socket); });
        else if (request.path == "/later")
            boost::asio::post(m_context, [this, exchange] { Answer(*exchange, "later"); });
        else if (request.path == "/long")
            Answer(*exchange, std::string(4 * Packer::kSlice, 'x'));
        else if (request.hasBody)
            exchange->ReadBody(1000, std::chrono::seconds(1),
                               [this, exchange](const std::string& body) { Answer(*exchange, body); });
        else
            Answer(*exchange, "at once");
    }

    unsigned handled = 0;
    unsigned opened = 0;
    unsigned closed = 0;

private:
    void Answer(HttpExchange& exchange, const std::string& text) {
        for (int times = 0; times < 2; ++times) { // the second one is not sent
            HttpReply reply;
            reply.contentType = "text/plain";
            reply.body = text;
            exchange.Reply(std::move(reply));
        }
    }

    void Opened(const std::shared_ptr<WebSocket>& socket) {
        ++opened;
        socket->OnClosed([this] { ++closed; });
        for (const char* text : {"one", "two", "three"})
            socket->Send(std::make_shared<const std::string>(text));
        CloseAfter(20, socket); // closing drops what has not been written
    }

    void CloseAfter(int turns, const std::shared_ptr<WebSocket>& socket) {
        boost::asio::post(m_context, [this, turns, socket] {
            if (turns == 0)
                socket->Close(1000, "over");
            else
                CloseAfter(turns - 1, socket);
        });
    }

    boost::asio::io_context& m_context;
};

/// What came of a conversation in which the server's stream fails at its n-th operation and from then on.
struct Outcome {
    std::string got; ///< what the client has read, its dates crossed out
    unsigned handled = 0;
    unsigned opened = 0;
    unsigned closed = 0;
    bool isGone = false; ///< nothing of the connection is left
};

std::string WithoutDates(std::string text) {
    static const std::string kDate = "\r\nDate: ";
    for (std::size_t at = text.find(kDate); at != std::string::npos; at = text.find(kDate, at + 1)) {
        for (std::size_t i = at + kDate.size(); i < text.size() && text[i] != '\r'; ++i)
            text[i] = '-';
    }
    return text;
}

Outcome Converse(const std::string& bytes, std::size_t failAt) {
    boost::asio::io_context context{1};
    const auto work = [&context] {
        while (context.poll() > 0) {
        }
        context.restart();
    };
    boost::beast::test::fail_count failures(failAt);
    const auto connections = std::make_shared<Connections>(context, HttpLimits());
    Handler handler(context);
    Stream client(context);
    auto server = std::make_shared<Stream>(context, failures);
    client.connect(*server);
    server->write_size(400); // so that a reply takes several writes
    auto connection = std::make_shared<HttpConnection<Stream>>(
        std::move(server), connections->Take(boost::asio::ip::address_v4::loopback()), handler);
    const std::weak_ptr<void> life = connection;
    connection->Start();
    connection.reset();
    (void)client.write_some(boost::asio::buffer(bytes));
    work();
    Outcome outcome{WithoutDates(std::string(client.str())), 0, 0, 0, false};
    client.close();
    work();
    outcome.handled = handler.handled;
    outcome.opened = handler.opened;
    outcome.closed = handler.closed;
    outcome.isGone = life.expired() && connections->Size() == 0;
    return outcome;
}

std::size_t Count(const std::string& text, const std::string& part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

/// Fails each operation in turn: the client gets the start of what it gets when none fails, and never more;
/// whatever was begun has ended. Gives what it gets when none fails.
Outcome FailEach(const std::string& bytes) {
    Outcome good = Converse(bytes, 1000000);
    EXPECT_TRUE(good.isGone);
    std::size_t differing = 0;
    for (std::size_t failAt = 0; failAt < 100; ++failAt) {
        const Outcome outcome = Converse(bytes, failAt);
        EXPECT_EQ(outcome.got, good.got.substr(0, outcome.got.size())) << failAt;
        EXPECT_LE(outcome.handled, good.handled) << failAt;
        EXPECT_EQ(outcome.opened, outcome.closed) << failAt;
        EXPECT_TRUE(outcome.isGone) << failAt;
        if (outcome.got == good.got && outcome.handled == good.handled)
            break;
        ++differing;
    }
    EXPECT_GT(differing, 2U);
    EXPECT_LT(differing, 100U);
    return good;
}

} // namespace

TEST(HttpFailureTest, FailureOfAnyReadOrWriteEndsTheConnectionAndNothingIsRepliedTwice) {
    const Outcome good = FailEach("GET /1 HTTP/1.1\r\nHost: x\r\n\r\n"
                                  "GET /later HTTP/1.1\r\nHost: x\r\n\r\n"
                                  "POST /2 HTTP/1.1\r\nHost: x\r\nContent-Length: 5\r\n\r\nhello"
                                  "GET /long HTTP/1.1\r\nHost: x\r\nAccept-Encoding: gzip\r\n\r\n"
                                  "GET /last HTTP/1.1\r\nHost: x\r\nConnection: close\r\n\r\n");

    EXPECT_EQ(good.handled, 5U);
    EXPECT_EQ(Count(good.got, "HTTP/1.1 200 OK\r\n"), 5U);
}

TEST(HttpFailureTest, FailureOfAnyReadOrWriteOfARefusalEndsTheConnection) {
    const Outcome good = FailEach("POST /1 HTTP/1.1\r\nHost: x\r\nContent-Length: 2000\r\n\r\nhello");

    EXPECT_EQ(good.handled, 1U);
    EXPECT_EQ(Count(good.got, "HTTP/1.1 413 "), 1U);
}

TEST(HttpFailureTest, FailureOfAnyReadOrWriteBeforeABodyEndsTheConnection) {
    const Outcome good =
        FailEach("POST /1 HTTP/1.1\r\nHost: x\r\nContent-Length: 5\r\nExpect: 100-continue\r\n\r\n");

    EXPECT_EQ(good.handled, 1U);
    EXPECT_EQ(Count(good.got, "HTTP/1.1 100 Continue\r\n\r\n"), 1U);
}

TEST(HttpFailureTest, FailureOfAnyReadOrWriteOfAWebSocketClosesItOnce) {
    const Outcome good = FailEach("GET /events HTTP/1.1\r\nHost: x\r\nUpgrade: websocket\r\n"
                                  "Connection: Upgrade\r\nSec-WebSocket-Version: 13\r\n"
                                  "Sec-WebSocket-Key: dGhlIHNhbXBsZSBub25jZQ==\r\n\r\n");

    EXPECT_EQ(good.opened, 1U);
    EXPECT_NE(good.got.find("\x81\x03one\x81\x03two\x81\x05three\x88"), std::string::npos);
}

} // namespace controller
