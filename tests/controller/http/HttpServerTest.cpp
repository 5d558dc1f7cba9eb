#include "tests/controller/http/HttpServerFixture.h"

namespace controller {

namespace {

using namespace std::chrono_literals;

class HttpServerTest : public HttpServerFixture {};

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
