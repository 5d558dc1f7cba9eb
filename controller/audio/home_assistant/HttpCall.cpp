#include "controller/audio/home_assistant/HttpCall.h"

#include <boost/asio/connect.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/ssl/context.hpp>
#include <boost/asio/ssl/host_name_verification.hpp>
#include <boost/asio/ssl/stream.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/read.hpp>
#include <boost/beast/http/string_body.hpp>
#include <boost/beast/http/write.hpp>

#include <array>
#include <type_traits>
#include <utility>

namespace controller::audio {

namespace {

namespace asio = boost::asio;
namespace http = boost::beast::http;
using asio::ip::tcp;
using boost::system::error_code;

constexpr std::uint64_t kMostOfAnswer = std::uint64_t{1024} * 1024;

using Secure = asio::ssl::stream<tcp::socket>;

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

/// On a connection of this kind: plain, or secured.
template <class Stream>
class CallOver final : public HttpCall, public std::enable_shared_from_this<CallOver<Stream>> {
public:
    CallOver(const HttpMeans& means, Stream stream, HttpOrder order, Done done, Lost lost)
        : m_names(means.names)
        , m_order(std::move(order))
        , m_done(std::move(done))
        , m_lost(std::move(lost))
        , m_stream(std::move(stream))
        , m_deadline(means.context)
        , m_request(RequestOf(m_order)) {
        m_parser.body_limit(kMostOfAnswer);
    }

    void Begin() {
        m_deadline.expires_after(m_order.limit);
        m_deadline.async_wait([self = this->shared_from_this()](const error_code& error) {
            if (!error)
                self->Fail("has not answered within " + std::to_string(self->m_order.limit.count()) + " ms");
        });
        m_names.Find(m_order.server.host, m_order.server.port,
                     [weak = this->weak_from_this()](const auto& endpoints, const std::string& error) {
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
    [[nodiscard]] tcp::socket& Socket() {
        if constexpr (std::is_same_v<Stream, Secure>)
            return m_stream.next_layer();
        else
            return m_stream;
    }

    /// What is to happen when this step has succeeded; `doing` says what failed.
    template <class Next>
    auto Then(const char* doing, Next next) {
        return
            [self = this->shared_from_this(), doing, next](const error_code& error, const auto&... /*what*/) {
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
        asio::async_connect(Socket(), endpoints, Then("cannot be reached: ", [](CallOver& self) {
                                error_code none;
                                const auto local = self.Socket().local_endpoint(none);
                                self.m_outcome.ourAddress = none ? "" : local.address().to_string();
                                self.Secured();
                            }));
    }

    void Secured() {
        if constexpr (std::is_same_v<Stream, Secure>) {
            // For servers that are several.
            (void)SSL_set_tlsext_host_name(m_stream.native_handle(), m_order.server.host.c_str()); // NOLINT
            m_stream.set_verify_callback(asio::ssl::host_name_verification(m_order.server.host));
            m_stream.async_handshake(
                asio::ssl::stream_base::client,
                Then("cannot be reached safely: ", [](CallOver& self) { self.Write(); }));
        } else {
            Write();
        }
    }

    void Write() {
        http::async_write(m_stream, m_request, Then("has broken off: ", [](CallOver& self) { self.Read(); }));
    }

    void Read() {
        http::async_read(m_stream, m_buffer, m_parser,
                         Then("has broken off: ", [](CallOver& self) { self.Answered(); }));
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
                                 [self = this->shared_from_this()](const error_code& /*error*/, std::size_t) {
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
    Stream m_stream;
    asio::steady_timer m_deadline;
    http::request<http::string_body> m_request;
    http::response_parser<http::string_body> m_parser;
    boost::beast::flat_buffer m_buffer;
    std::array<char, 1> m_rest{};
    HttpOutcome m_outcome;
    bool m_isOver = false;
};

template <class Stream>
std::shared_ptr<HttpCall>
BeginOver(const HttpMeans& means, Stream stream, HttpOrder order, HttpCall::Done done, HttpCall::Lost lost) {
    auto call = std::make_shared<CallOver<Stream>>(means, std::move(stream), std::move(order),
                                                   std::move(done), std::move(lost));
    call->Begin();
    return call;
}

} // namespace

std::shared_ptr<HttpCall>
BeginHttpCall(const HttpMeans& means, HttpOrder order, HttpCall::Done done, HttpCall::Lost lost) {
    if (order.server.isSecure)
        return BeginOver(means, Secure(means.context, means.tls), std::move(order), std::move(done),
                         std::move(lost));
    return BeginOver(means, tcp::socket(means.context), std::move(order), std::move(done), std::move(lost));
}

} // namespace controller::audio
