#pragma once

#include "controller/http/HttpServer.h"
#include "tests/controller/http/TestClient.h"
#include "tests/controller/support/Within.h"

#include <boost/asio/executor_work_guard.hpp>
#include <boost/asio/post.hpp>
#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <future>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>

namespace controller {

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
        exchange->ReadBody(100, std::chrono::seconds(1), [exchange](const std::string& body) {
            HttpReply reply;
            reply.contentType = "text/plain";
            const HttpRequest& request = exchange->Request();
            reply.body = std::string(request.method).append(" ").append(request.path) + " " + body;
            exchange->Reply(std::move(reply));
        });
    }

    void Opened(std::shared_ptr<WebSocket> socket) {
        socket->OnClosed([this] { closed.set_value(); });
        opened.set_value(std::move(socket));
    }

    std::promise<std::shared_ptr<WebSocket>> opened;
    std::promise<void> closed;
};

/// A server on a thread of its own, which is its driver thread.
class HttpServerFixture : public testing::Test {
protected:
    void Start(const HttpLimits& limits = {}) {
        m_server = std::make_unique<HttpServer>(m_context, m_handler, m_log, limits, std::nullopt);
        m_port = m_server->Listen("127.0.0.1", 0);
        m_thread = std::thread([this] { m_context.run(); });
    }

    void TearDown() override {
        OnDriver([this] {
            m_server->Close();
            m_work.reset();
        });
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
    boost::asio::executor_work_guard<boost::asio::io_context::executor_type> m_work{
        m_context.get_executor()}; ///< the thread stays also when the server has nothing to do any more
    EchoHandler m_handler;
    Log m_log{STDERR_FILENO, Severity::Error, Log::Form::Plain};
    std::unique_ptr<HttpServer> m_server;
    std::uint16_t m_port = 0;
    std::thread m_thread;
};

} // namespace controller
