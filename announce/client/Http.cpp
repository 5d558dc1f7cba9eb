#include "announce/client/Http.h"

#include "announce/client/EventLoop.h"
#include "announce/client/Transport.h"

#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http.hpp>

#include <algorithm>

namespace {

namespace beast = boost::beast;
namespace http = boost::beast::http;
using boost::system::error_code;
using net::ClientStream;

using Request = http::request<http::string_body>;

/// Longer than any operation of the controller takes.
constexpr std::chrono::seconds kPatience{60};
constexpr std::size_t kPiece = 65536;
constexpr std::uint64_t kLongestAnswer = 256U << 20U;

Request MakeRequest(const Connection& connection, const HttpQuestion& question) {
    Request request(http::string_to_verb(question.method), question.target, 11);
    request.set(http::field::host, connection.address.Authority());
    request.set(http::field::user_agent, "announce");
    request.set(http::field::connection, "close");
    if (!connection.token.empty())
        request.set(http::field::authorization, "Bearer " + connection.token);
    if (!question.ifMatch.empty())
        request.set(http::field::if_match, question.ifMatch);
    if (!question.contentType.empty()) {
        request.set(http::field::content_type, question.contentType);
        request.body() = question.body;
    }
    request.prepare_payload();
    return request;
}

/// Sends the next piece; `sent` grows by its size.
error_code SendPiece(EventLoop& loop,
                     ClientStream& stream,
                     http::request_serializer<http::string_body>& serializer,
                     std::size_t& sent) {
    stream.next_layer().expires_after(kPatience);
    std::size_t piece = 0;
    const auto start = [&](auto done) {
        const auto keep = [&piece, done](const error_code& error, std::size_t size) {
            piece = size;
            done(error);
        };
        http::async_write_some(stream, serializer, keep);
    };
    const error_code error = loop.Await(start);
    sent += piece;
    return error;
}

/// Sends the request piece by piece. The error of a controller that has answered and stopped reading is not
/// told here: its answer says more.
void Send(EventLoop& loop, ClientStream& stream, const Request& request, const HttpQuestion& question) {
    http::request_serializer<http::string_body> serializer(request);
    serializer.limit(kPiece);
    std::size_t sent = 0;
    while (!serializer.is_done()) {
        const error_code error = SendPiece(loop, stream, serializer, sent);
        if (error && error != http::error::need_buffer)
            return;
        if (question.progress)
            question.progress(std::min(sent, question.body.size()));
    }
}

error_code Receive(EventLoop& loop, ClientStream& stream, http::response_parser<http::string_body>& parser) {
    beast::flat_buffer buffer;
    parser.body_limit(kLongestAnswer);
    stream.next_layer().expires_after(kPatience);
    return loop.Await([&](auto done) { http::async_read(stream, buffer, parser, std::move(done)); });
}

} // namespace

HttpAnswer Ask(EventLoop& loop, const Connection& connection, const HttpQuestion& question) {
    ClientStream stream = transport::Connect(loop, connection);
    Send(loop, stream, MakeRequest(connection, question), question);
    http::response_parser<http::string_body> parser;
    transport::RequireConnected(Receive(loop, stream, parser), connection);
    auto& response = parser.get();
    return {response.result_int(), std::move(response.body()), std::string(response[http::field::etag]),
            std::string(response[http::field::retry_after])};
}
