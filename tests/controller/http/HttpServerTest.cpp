#include "controller/http/HttpServer.h"

#include "tests/controller/http/TestClient.h"
#include "tests/controller/support/Within.h"

#include <boost/asio/post.hpp>
#include <gtest/gtest.h>

#include <future>
#include <thread>

namespace controller {

namespace {

using namespace std::chrono_literals;

/// Answers every request with what it got, and WebSockets with what the test says.
class EchoHandler final : public IHttpHandler {
public:
    HttpReply Explain(const HttpRefusal& refusal) override {
        HttpReply reply;
        reply.status = refusal.status;
        reply.contentType = "application/problem+json";
        reply.headers = refusal.headers;
        reply.body = "{\"detail\":\"" + refusal.detail + "\",\"right\":\"" + refusal.right + "\"}";
        return reply;
    }

    void Handle(std::shared_ptr<HttpExchange> exchange) override {
        if (exchange->Request().isUpgrade) {
            exchange->Upgrade([this](std::shared_ptr<WebSocket> socket) { Opened(std::move(socket)); });
            return;
        }
        if (exchange->Request().path == "/throw")
            throw std::runtime_error("oops");
        if (exchange->Request().path == "/drop")
            return;
        exchange->ReadBody(100, 1s, [exchange](const std::string& body) {
            HttpReply reply;
            reply.contentType = "text/plain";
            const HttpRequest& request = exchange->Request();
            reply.body = std::string(request.method).append(" ").append(request.path) + " " + body;
            exchange->Reply(std::move(reply));
        });
    }

    void Opened(std::shared_ptr<WebSocket> socket) {
        socket->OnClosed([this, key = socket.get()] {
            closed.set_value();
            (void)key;
        });
        opened.set_value(std::move(socket));
    }

    std::promise<std::shared_ptr<WebSocket>> opened;
    std::promise<void> closed;
};

/// A server on a thread of its own, which is its driver thread.
class HttpServerTest : public testing::Test {
protected:
    void Start(const HttpLimits& limits = {}) {
        m_server = std::make_unique<HttpServer>(m_context, m_handler, m_log, limits, std::nullopt);
        m_port = m_server->Listen("127.0.0.1", 0);
        m_thread = std::thread([this] { m_context.run(); });
    }

    void TearDown() override {
        OnDriver([this] { m_server->Close(); });
        m_thread.join();
    }

    void OnDriver(std::function<void()> work) {
        std::promise<void> done;
        boost::asio::post(m_context, [&] {
            work();
            done.set_value();
        });
        Within("the driver thread", done.get_future());
    }

    std::string Ask(const std::string& request) const {
        TestClient client(m_port);
        client.Send(request);
        return client.ReadReply();
    }

    static bool HasStatus(const std::string& reply, int status) {
        return reply.rfind("HTTP/1.1 " + std::to_string(status) + " ", 0) == 0;
    }

    static std::string BodyOf(const std::string& reply) { return reply.substr(reply.find("\r\n\r\n") + 4); }

    static constexpr const char* kUpgrade = "GET /events HTTP/1.1\r\nHost: x\r\nUpgrade: websocket\r\n"
                                            "Connection: Upgrade\r\nSec-WebSocket-Version: 13\r\n"
                                            "Sec-WebSocket-Key: dGhlIHNhbXBsZSBub25jZQ==\r\n\r\n";

    boost::asio::io_context m_context{1};
    EchoHandler m_handler;
    Log m_log{STDERR_FILENO, Severity::Error, Log::Form::Plain};
    std::unique_ptr<HttpServer> m_server;
    std::uint16_t m_port = 0;
    std::thread m_thread;
};

} // namespace

TEST_F(HttpServerTest, RequestGetsItsReply) {
    Start();

    const std::string reply = Ask("POST /a?b HTTP/1.1\r\nHost: x\r\nContent-Length: 3\r\n\r\nabc");

    EXPECT_TRUE(HasStatus(reply, 200));
    EXPECT_EQ(BodyOf(reply), "POST /a abc");
}

TEST_F(HttpServerTest, PipelinedRequestsAreAnsweredInTheirOrder) {
    Start();
    TestClient client(m_port);

    client.Send("GET /1 HTTP/1.1\r\nHost: x\r\n\r\nPOST /2 HTTP/1.1\r\nHost: x\r\nContent-Length: 2\r\n\r\nhi"
                "GET /3 HTTP/1.1\r\nHost: x\r\n\r\n");

    EXPECT_EQ(BodyOf(client.ReadReply()), "GET /1 ");
    EXPECT_EQ(BodyOf(client.ReadReply()), "POST /2 hi");
    EXPECT_EQ(BodyOf(client.ReadReply()), "GET /3 ");
}

TEST_F(HttpServerTest, RequestThatComesByteByByteIsAnswered) {
    Start();
    TestClient client(m_port);

    for (const char byte : std::string("PUT /slow HTTP/1.1\r\nHost: x\r\nTransfer-Encoding: chunked\r\n\r\n"
                                       "3\r\nabc\r\n0\r\n\r\n"))
        client.Send(std::string(1, byte));

    EXPECT_EQ(BodyOf(client.ReadReply()), "PUT /slow abc");
}

TEST_F(HttpServerTest, WebSocketRequestThatIsNoGoodIsRefusedInOurOwnWords) {
    Start();
    const std::string head =
        "GET /events HTTP/1.1\r\nHost: x\r\nUpgrade: websocket\r\nConnection: Upgrade\r\n";
    const std::string version = "Sec-WebSocket-Version: 13\r\n";
    const std::string key = "Sec-WebSocket-Key: dGhlIHNhbXBsZSBub25jZQ==\r\n";
    const auto replyTo = [&](const std::string& headers) {
        return Ask(head + headers + "\r\n");
    };

    for (const std::string& bad :
         {std::string(), std::string("Sec-WebSocket-Key: \r\n"),
          std::string("Sec-WebSocket-Key: dGhlIA==\r\n"),
          std::string("Sec-WebSocket-Key: dGhlIHNhbXBsZSBub25jZQdGhlIHNhbXBsZSBub25jZQ==\r\n")}) {
        const std::string reply = replyTo(version + bad);
        EXPECT_TRUE(HasStatus(reply, 400)) << reply;
        EXPECT_NE(reply.find("application/problem+json"), std::string::npos) << reply;
    }
    for (const std::string& bad : {std::string(), std::string("Sec-WebSocket-Version: 8\r\n")}) {
        const std::string reply = replyTo(bad + key);
        EXPECT_TRUE(HasStatus(reply, 426)) << reply;
        EXPECT_NE(reply.find("Sec-WebSocket-Version: 13\r\n"), std::string::npos) << reply;
        EXPECT_NE(reply.find("application/problem+json"), std::string::npos) << reply;
    }
}

TEST_F(HttpServerTest, HeadIsAnsweredWithoutBody) {
    Start();
    TestClient client(m_port);

    client.Send("HEAD /h HTTP/1.1\r\nHost: x\r\n\r\nGET /g HTTP/1.1\r\nHost: x\r\n\r\n");

    EXPECT_NE(client.ReadReply(false).find("Content-Length: 7\r\n"), std::string::npos);
    EXPECT_EQ(BodyOf(client.ReadReply()), "GET /g ");
}

TEST_F(HttpServerTest, BodyOverItsLimitIsRefusedAndTheConnectionClosed) {
    Start();
    TestClient declared(m_port);
    TestClient chunked(m_port);

    declared.Send("POST / HTTP/1.1\r\nHost: x\r\nContent-Length: 101\r\n\r\n");
    chunked.Send("POST / HTTP/1.1\r\nHost: x\r\nTransfer-Encoding: chunked\r\n\r\n65\r\n" +
                 std::string(101, 'a') + "\r\n0\r\n\r\n");

    EXPECT_TRUE(HasStatus(declared.ReadReply(), 413));
    EXPECT_TRUE(declared.IsClosed());
    EXPECT_TRUE(HasStatus(chunked.ReadReply(), 413));
    EXPECT_TRUE(chunked.IsClosed());
}

TEST_F(HttpServerTest, WhatIsRefusedEndsTheConnection) {
    Start();
    for (const auto& [status, request] : std::vector<std::pair<int, std::string>>{
             {400, "hello\r\n\r\n"},
             {400, "POST / HTTP/1.1\r\nHost: x\r\nTransfer-Encoding: gzip\r\n\r\n"},
             {413, "POST / HTTP/1.1\r\nHost: x\r\nTransfer-Encoding: chunked\r\n\r\n1;" +
                       std::string(200000, 'a')},
             {414, "GET /" + std::string(3000, 'a') + " HTTP/1.1\r\nHost: x\r\n\r\n"},
             {431, "GET / HTTP/1.1\r\nHost: x\r\nLong: " + std::string(9000, 'a') + "\r\n\r\n"}}) {
        TestClient client(m_port);
        client.Send(request + "GET /inside HTTP/1.1\r\nHost: x\r\n\r\n");
        const std::string reply = client.ReadReply();
        EXPECT_TRUE(HasStatus(reply, status)) << reply;
        EXPECT_NE(reply.find("\r\nConnection: close\r\n"), std::string::npos) << reply;
        EXPECT_NE(reply.find("\"right\":"), std::string::npos) << reply;
        EXPECT_TRUE(client.IsClosed());
        EXPECT_EQ(client.ReadReply(), "");
    }
}

TEST_F(HttpServerTest, WebSocketRequestWithABodyIsRefused) {
    Start();
    std::string upgrade = kUpgrade;
    upgrade.insert(upgrade.size() - 2, "Content-Length: 5\r\n");

    EXPECT_TRUE(HasStatus(Ask(upgrade), 400));
}

TEST_F(HttpServerTest, WebSocketThatSendsFragmentsWithoutEndIsDropped) {
    HttpLimits limits;
    limits.messagesPerMinute = 10;
    Start(limits);
    TestClient client(m_port);
    client.Send(kUpgrade);
    client.ReadReply(false); // nothing may be sent before it
    client.Send(std::string("\x01\x80\x00\x00\x00\x00", 6));
    std::string fragments;
    for (int i = 0; i < 10000; ++i)
        fragments.append("\x00\x80\x00\x00\x00\x00", 6);

    for (int i = 0; i < 1000 && client.Send(fragments); ++i) {
    }

    EXPECT_EQ(m_handler.closed.get_future().wait_for(20s), std::future_status::ready);
}

TEST_F(HttpServerTest, HandlerThatThrowsIsAnsweredForAndTheServerGoesOn) {
    Start();

    EXPECT_TRUE(HasStatus(Ask("GET /throw HTTP/1.1\r\nHost: x\r\n\r\n"), 500));
    EXPECT_TRUE(HasStatus(Ask("GET / HTTP/1.1\r\nHost: x\r\n\r\n"), 200));
}

TEST_F(HttpServerTest, ConnectionWhoseExchangeIsDroppedIsClosed) {
    Start();
    TestClient client(m_port);

    client.Send("GET /drop HTTP/1.1\r\nHost: x\r\n\r\n");

    EXPECT_TRUE(client.IsClosed());
}

TEST_F(HttpServerTest, RequestThatDoesNotComeInTimeIsAnsweredAndClosed) {
    HttpLimits limits;
    limits.request = 0s;
    Start(limits);
    TestClient client(m_port);

    client.Send("GET / HTTP/1.1\r\nHos");

    EXPECT_TRUE(HasStatus(client.ReadReply(), 408));
    EXPECT_TRUE(client.IsClosed());
}

TEST_F(HttpServerTest, IdleConnectionIsClosed) {
    HttpLimits limits;
    limits.idle = 0s;
    Start(limits);
    TestClient client(m_port);

    EXPECT_TRUE(client.IsClosed());
}

TEST_F(HttpServerTest, ConnectionsOverTheLimitAreClosedAndPlacesComeBack) {
    HttpLimits limits;
    limits.connections = 2;
    Start(limits);
    {
        TestClient one(m_port);
        TestClient two(m_port);
        one.Send("GET /1 HTTP/1.1\r\nHost: x\r\n\r\n");
        two.Send("GET /2 HTTP/1.1\r\nHost: x\r\n\r\n");
        EXPECT_TRUE(HasStatus(one.ReadReply(), 200));
        EXPECT_TRUE(HasStatus(two.ReadReply(), 200));
        TestClient three(m_port);
        EXPECT_TRUE(three.IsClosed());
    }
    std::size_t left = 2;
    while (left != 0)
        OnDriver([&] { left = m_server->Size(); });

    EXPECT_TRUE(HasStatus(Ask("GET / HTTP/1.1\r\nHost: x\r\n\r\n"), 200));
}

TEST_F(HttpServerTest, ContinueIsSentBeforeALargeBody) {
    Start();
    TestClient client(m_port);

    client.Send("POST /big HTTP/1.1\r\nHost: x\r\nExpect: 100-continue\r\nContent-Length: 2\r\n\r\n");

    EXPECT_TRUE(HasStatus(client.ReadReply(), 100));
    client.Send("ok");
    EXPECT_EQ(BodyOf(client.ReadReply()), "POST /big ok");
}

TEST_F(HttpServerTest, WebSocketGetsTextsInTheirOrder) {
    Start();
    TestClient client(m_port);
    client.Send(kUpgrade);
    EXPECT_TRUE(HasStatus(client.ReadReply(false), 101));
    const auto socket = Within("an open socket", m_handler.opened.get_future());

    OnDriver([&] {
        socket->Send(std::make_shared<const std::string>("one"));
        socket->Send(std::make_shared<const std::string>(std::string(70000, 'x')));
        socket->Send(std::make_shared<const std::string>("three"));
    });

    EXPECT_EQ(client.ReadText(), "one");
    EXPECT_EQ(client.ReadText(), std::string(70000, 'x'));
    EXPECT_EQ(client.ReadText(), "three");
}

TEST_F(HttpServerTest, WebSocketThatDoesNotReadIsDropped) {
    HttpLimits limits;
    limits.queuedMessages = 10;
    Start(limits);
    TestClient client(m_port);
    client.Send(kUpgrade);
    const auto socket = Within("an open socket", m_handler.opened.get_future());
    const auto text = std::make_shared<const std::string>(std::string(8U << 20U, 'x'));

    OnDriver([&] {
        for (int i = 0; i < 20; ++i)
            socket->Send(text);
    });

    EXPECT_EQ(m_handler.closed.get_future().wait_for(20s), std::future_status::ready);
}

TEST_F(HttpServerTest, WebSocketThatFloodsIsDropped) {
    HttpLimits limits;
    limits.messagesPerMinute = 50;
    Start(limits);
    TestClient client(m_port);
    client.Send(kUpgrade);
    client.ReadReply(false); // nothing may be sent before it
    const std::string frame("\x81\x81\x00\x00\x00\x00x", 7);

    for (int i = 0; i < 1000 && client.Send(frame); ++i) {
    }

    EXPECT_EQ(m_handler.closed.get_future().wait_for(20s), std::future_status::ready);
}

TEST_F(HttpServerTest, WebSocketFrameThatIsTooLargeEndsTheConnection) {
    Start();
    TestClient client(m_port);
    client.Send(kUpgrade);
    client.ReadReply(false); // nothing may be sent before it

    client.Send(std::string("\x81\xfe\x20\x00\x00\x00\x00\x00", 8) + std::string(8192, 'x'));

    EXPECT_EQ(m_handler.closed.get_future().wait_for(20s), std::future_status::ready);
}

TEST_F(HttpServerTest, WebSocketIsToldThatTheServerGoesAway) {
    Start();
    TestClient client(m_port);
    client.Send(kUpgrade);
    client.ReadReply(false);
    (void)Within("an open socket", m_handler.opened.get_future());

    OnDriver([this] { m_server->Close(); });

    const std::string frame = client.Read(4);
    ASSERT_EQ(frame.size(), 4U);
    EXPECT_EQ(frame[0], '\x88');
    EXPECT_EQ(frame.substr(2, 2), std::string("\x03\xe9", 2)); // 1001
}

TEST_F(HttpServerTest, PortInUseIsReportedWithItsNumber) {
    Start();

    try {
        OnDriver([] {});
        HttpServer second(m_context, m_handler, m_log, {}, std::nullopt);
        (void)second.Listen("127.0.0.1", m_port);
        FAIL() << "two servers on one port";
    } catch (const std::runtime_error& error) {
        EXPECT_NE(std::string(error.what()).find("port " + std::to_string(m_port)), std::string::npos);
    }
}

TEST_F(HttpServerTest, CertificateThatIsNoneIsReported) {
    Start();

    EXPECT_THROW(HttpServer(m_context, m_handler, m_log, {}, TlsFiles{"/dev/null", "/dev/null"}),
                 std::runtime_error);
}

} // namespace controller
