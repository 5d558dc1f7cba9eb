#include "tests/controller/http/HttpServerFixture.h"

namespace controller {

namespace {

using namespace std::chrono_literals;

class WebSocketTest : public HttpServerFixture {};

} // namespace

TEST_F(WebSocketTest, WebSocketThatSendsFragmentsWithoutEndIsDropped) {
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

TEST_F(WebSocketTest, WebSocketGetsTextsInTheirOrder) {
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

TEST_F(WebSocketTest, WebSocketThatDoesNotReadIsDropped) {
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

TEST_F(WebSocketTest, WebSocketThatFloodsIsDropped) {
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

TEST_F(WebSocketTest, WebSocketFrameThatIsTooLargeEndsTheConnection) {
    Start();
    TestClient client(m_port);
    client.Send(kUpgrade);
    client.ReadReply(false); // nothing may be sent before it

    client.Send(std::string("\x81\xfe\x20\x00\x00\x00\x00\x00", 8) + std::string(8192, 'x'));

    EXPECT_EQ(m_handler.closed.get_future().wait_for(20s), std::future_status::ready);
}

TEST_F(WebSocketTest, WebSocketIsToldThatTheServerGoesAway) {
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

} // namespace controller
