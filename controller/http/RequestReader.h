#pragma once

#include "controller/http/HttpLimits.h"
#include "controller/http/HttpMessage.h"

#include <boost/asio/buffer.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/string_body.hpp>

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace controller {

/// Takes what comes over a connection apart into requests, and refuses what is too large, no HTTP, or leaves
/// open where a request ends. Knows no socket.
class RequestReader {
public:
    /// What comes next: more bytes are needed; the head is whole; the body is; the request is refused.
    enum class Step { Read, Head, Body, Refused };
    using Message = boost::beast::http::request<boost::beast::http::string_body>;

    /// Limits and peer, the client's address, are borrowed for life.
    RequestReader(const HttpLimits& limits, std::string_view peer, bool isSecure);

    /// Forgets the former request; what came behind it is the next one.
    void Begin();

    /// Where the next bytes go, of which `Commit` says how many came.
    [[nodiscard]] boost::asio::mutable_buffer Room();
    void Commit(std::size_t size) { m_buffer.commit(size); }

    /// Goes on with what is there.
    [[nodiscard]] Step Parse();

    /// The head is whole, and a body of so many bytes is wanted: `Read` when it is not there yet; `Body`,
    /// `Refused`.
    [[nodiscard]] Step WantBody(std::size_t limit);

    [[nodiscard]] const HttpRequest& Request() const noexcept { return m_request; }
    [[nodiscard]] const Message& BeastRequest() const noexcept { return m_parser->get(); }
    [[nodiscard]] std::string TakeBody() { return std::move(m_parser->get().body()); }
    [[nodiscard]] HttpRefusal TakeRefusal() { return std::move(m_refusal); }

    /// Whether something has come that belongs to no former request.
    [[nodiscard]] bool HasBytes() const noexcept { return m_buffer.size() > 0; }
    [[nodiscard]] bool IsWhole() const noexcept { return m_parser->is_done(); }
    [[nodiscard]] bool KeepsAlive() const noexcept { return m_parser->get().keep_alive(); }
    [[nodiscard]] bool IsOld() const noexcept { return m_parser->get().version() == 10; }
    [[nodiscard]] bool IsHeadRequest() const noexcept { return m_isHeadRequest; }
    /// The client waits for word before it sends the body.
    [[nodiscard]] bool AwaitsContinue() const noexcept;

private:
    using Parser = boost::beast::http::request_parser<boost::beast::http::string_body>;
    using Error = boost::system::error_code;

    [[nodiscard]] Step ParseHead();
    [[nodiscard]] Step ParseBody();
    [[nodiscard]] bool HasFoldedLine() const noexcept;
    [[nodiscard]] Step CheckHead();
    [[nodiscard]] bool HasClearLength() const noexcept;
    [[nodiscard]] bool IsMostlyPadding() const noexcept;
    [[nodiscard]] Step Failed(const Error& error);
    [[nodiscard]] Step Refuse(unsigned status, std::string detail, std::string right);
    void FillRequest();

    const HttpLimits& m_limits;
    boost::beast::flat_buffer m_buffer;
    std::function<void(std::uint64_t, boost::beast::string_view, Error&)> m_checkExtension;
    std::optional<Parser> m_parser;
    HttpRequest m_request;
    std::array<std::string, 2> m_tags; ///< what stands in the request in place of the tags that came
    bool m_isHeadRequest = false;
    bool m_isInBody = false;
    std::size_t m_bodyLimit = 0;
    std::size_t m_bodyTaken = 0; ///< bytes of the body as it came, with what is around its chunks
    HttpRefusal m_refusal;
};

} // namespace controller
