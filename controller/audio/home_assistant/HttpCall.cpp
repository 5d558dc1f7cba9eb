#include "controller/audio/home_assistant/HttpCall.h"

#include "net/ClientStream.h"

#include <boost/asio/connect.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/read.hpp>
#include <boost/beast/http/string_body.hpp>
#include <boost/beast/http/write.hpp>

#include <array>
#include <utility>

namespace controller::audio {

namespace {

namespace asio = boost::asio;
namespace http = boost::beast::http;
using boost::system::error_code;
using net::ClientStream;

constexpr std::uint64_t kMostOfAnswer = std::uint64_t{1024} * 1024;

http::request<http::string_body> RequestOf(const HttpOrder& order) {
    http::request<http::string_body> request;
    request.version(11);
    request.method(order.body.empty() ? http::verb::get : http::verb::post);
    request.target(order.server.path + order.path);
    request.set(http::field::host, order.server.Authority());
    request.set(http::field::authorization, "Bearer " + order.token);
    request.set(http::field::accept, "application/json");
    if (!order.body.empty())
        request.set(http::field::content_type, "application/json");
    request.body() = order.body;
    request.prepare_payload();
    return request;
}

ClientStream StreamOf(const HttpMeans& means, const HttpPlace& server) {
    return server.isSecure ? ClientStream(means.context, means.tls) : ClientStream(means.context);
}

/// One over TCP or TLS.
class NetworkCall final : public HttpCall, public std::enable_shared_from_this<NetworkCall> {
public:
    NetworkCall(const HttpMeans& means, HttpOrder order, Done done, Lost lost)
        : m_names(means.names)
        , m_order(std::move(order))
        , m_done(std::move(done))
        , m_lost(std::move(lost))
        , m_stream(StreamOf(means, m_order.server))
        , m_deadline(means.context)
        , m_request(RequestOf(m_order)) {
        m_parser.body_limit(kMostOfAnswer);
    }

    void Begin() {
        m_deadline.expires_after(m_order.limit);
        m_deadline.async_wait([self = shared_from_this()](const error_code& error) {
            if (!error)
                self->Fail("has not answered within " + std::to_string(self->m_order.limit.count()) + " ms");
        });
        m_names.Find(m_order.server.host, m_order.server.port,
                     [weak = weak_from_this()](const auto& endpoints, const std::string& error) {
                         const auto self = weak.lock();
                         if (self && !self->m_isOver)
                             self->Connect(endpoints, error);
                     });
    }

    void Cancel() override {
        m_done = {};
        m_lost = {};
        Close();
    }

private:
    [[nodiscard]] asio::ip::tcp::socket& Socket() { return m_stream.next_layer().socket(); }

    /// What is to happen when this step has succeeded; `doing` says what failed.
    template <class Next>
    auto Then(const char* doing, Next next) {
        return [self = shared_from_this(), doing, next](const error_code& error, const auto&... /*what*/) {
            if (self->m_isOver)
                return;
            if (error)
                self->Fail(doing + error.message());
            else
                next(*self);
        };
    }

    void Connect(const NameSearch::Endpoints& endpoints, const std::string& error) {
        if (endpoints.empty()) {
            Fail("cannot be reached: " + error);
            return;
        }
        asio::async_connect(Socket(), endpoints, Then("cannot be reached: ", [](NetworkCall& self) {
                                error_code none;
                                const auto local = self.Socket().local_endpoint(none);
                                self.m_outcome.ourAddress = none ? "" : local.address().to_string();
                                self.Secured();
                            }));
    }

    void Secured() {
        if (!m_order.server.isSecure)
            Write();
        else if (!m_stream.ExpectName(m_order.server.host))
            Fail("cannot be reached safely: no certificate can have its name");
        else
            m_stream.Handshake(Then("cannot be reached safely: ", [](NetworkCall& self) { self.Write(); }));
    }

    void Write() {
        http::async_write(m_stream, m_request,
                          Then("has broken off: ", [](NetworkCall& self) { self.Read(); }));
    }

    void Read() {
        http::async_read(m_stream, m_buffer, m_parser,
                         Then("has broken off: ", [](NetworkCall& self) { self.Answered(); }));
    }

    void Answered() {
        m_outcome.status = m_parser.get().result_int();
        m_outcome.body = std::move(m_parser.get().body());
        m_deadline.cancel();
        if (m_lost && m_parser.keep_alive())
            Watch();
        else
            Close();
        Tell();
    }

    /// Nothing more is asked here, so whatever comes is the end of it.
    void Watch() {
        m_stream.async_read_some(asio::buffer(m_rest),
                                 [self = shared_from_this()](const error_code& /*error*/, std::size_t) {
                                     if (self->m_isOver)
                                         return;
                                     self->Close();
                                     if (const auto lost = std::exchange(self->m_lost, {}))
                                         lost();
                                 });
    }

    void Fail(const std::string& reason) {
        if (m_isOver)
            return;
        m_outcome.error = reason;
        Close();
        Tell();
    }

    void Tell() {
        if (const auto done = std::exchange(m_done, {}))
            done(m_outcome);
    }

    void Close() {
        m_isOver = true;
        m_deadline.cancel();
        error_code ignored; // It is closed, however well that went.
        Socket().close(ignored);
    }

    NameSearch& m_names;
    const HttpOrder m_order;
    Done m_done;
    Lost m_lost;
    ClientStream m_stream;
    asio::steady_timer m_deadline;
    http::request<http::string_body> m_request;
    http::response_parser<http::string_body> m_parser;
    boost::beast::flat_buffer m_buffer;
    std::array<char, 1> m_rest{};
    HttpOutcome m_outcome;
    bool m_isOver = false;
};

} // namespace

std::shared_ptr<HttpCall>
BeginHttpCall(const HttpMeans& means, HttpOrder order, HttpCall::Done done, HttpCall::Lost lost) {
    auto call = std::make_shared<NetworkCall>(means, std::move(order), std::move(done), std::move(lost));
    call->Begin();
    return call;
}

} // namespace controller::audio
