#include "controller/http/RequestReader.h"

#include "controller/http/Packer.h"

#include <boost/beast/websocket/rfc6455.hpp>

#include <algorithm>
#include <limits>

namespace controller {

namespace http = boost::beast::http;

namespace {

constexpr std::size_t kHeadRoom = 4096;
constexpr std::size_t kBodyRoom = 65536;

std::string_view View(boost::beast::string_view text) noexcept {
    return {text.data(), text.size()};
}

/// The library lets quoted texts hold everything; for others a line ends within them.
void CheckExtension(std::uint64_t /*size*/,
                    boost::beast::string_view extension,
                    boost::system::error_code& error) {
    if (View(extension).find('\n') != std::string_view::npos)
        error = http::error::bad_chunk_extension;
}

} // namespace

RequestReader::RequestReader(const HttpLimits& limits, std::string_view peer, bool isSecure)
    : m_limits(limits)
    , m_buffer(limits.headerBytes + kBodyRoom)
    , m_checkExtension(&CheckExtension) {
    m_request.peer = peer;
    m_request.isSecure = isSecure;
}

void RequestReader::Begin() {
    // The request's texts are the parser's.
    m_request = {{}, {}, {}, m_request.peer, m_request.isSecure, false, false, {}};
    m_isHeadRequest = false;
    m_parser.emplace();
    m_parser->header_limit(static_cast<std::uint32_t>(m_limits.headerBytes));
    // The handler says how long a body may be, when it knows what it is for. (No limit at all refuses every
    // body in this version of the library.)
    m_parser->body_limit(std::numeric_limits<std::uint64_t>::max());
    m_isInBody = false;
    m_bodyTaken = 0;
    if (m_buffer.capacity() > m_limits.headerBytes + kHeadRoom)
        m_buffer.shrink_to_fit(); // a long body was here; who waits for the next request needs no such room
}

boost::asio::mutable_buffer RequestReader::Room() {
    return m_buffer.prepare(
        std::min(m_isInBody ? kBodyRoom : kHeadRoom, m_buffer.max_size() - m_buffer.size()));
}

RequestReader::Step RequestReader::Parse() {
    return m_isInBody ? ParseBody() : ParseHead();
}

RequestReader::Step RequestReader::ParseHead() {
    if (HasFoldedLine())
        return Refuse(400, "a header goes on on the next line", "each header on one line");
    Error error;
    while (m_buffer.size() > 0 && !error && !m_parser->is_header_done())
        m_buffer.consume(m_parser->put(m_buffer.data(), error));
    if (error && error != http::error::need_more)
        return Failed(error);
    return m_parser->is_header_done() ? CheckHead() : Step::Read;
}

/// The library makes one line of such a header; others read a header of its own in the second line. Nothing
/// of a line is taken out of the buffer before it is known how the next one begins.
bool RequestReader::HasFoldedLine() const noexcept {
    const std::string_view bytes(static_cast<const char*>(m_buffer.data().data()), m_buffer.size());
    const std::size_t end = bytes.substr(0, 2) == "\r\n" ? 0 : bytes.find("\r\n\r\n");
    const std::string_view head = bytes.substr(0, end);
    return head.find("\r\n ") != std::string_view::npos || head.find("\r\n\t") != std::string_view::npos;
}

RequestReader::Step RequestReader::CheckHead() {
    m_parser->eager(true);
    FillRequest();
    if (m_parser->get().target().size() > m_limits.targetBytes)
        return Refuse(414, "the address is too long",
                      "at most " + std::to_string(m_limits.targetBytes) + " bytes");
    if (!HasClearLength())
        return Refuse(400, "the request leaves open where it ends",
                      "one Content-Length in digits, or Transfer-Encoding: chunked in HTTP/1.1");
    return Step::Head;
}

/// RFC 9112, 6: whoever forwards a request that is framed in any other way may have taken its end to be
/// somewhere else than we would, and what comes next to be another request.
bool RequestReader::HasClearLength() const noexcept {
    const std::size_t lengths = m_request.CountHeaders("content-length");
    const std::size_t codings = m_request.CountHeaders("transfer-encoding");
    if (codings > 0)
        return codings == 1 && lengths == 0 && !IsOld() &&
               IsSameInLowerCase(m_request.Header("transfer-encoding"), "chunked");
    const std::string_view length = m_request.Header("content-length");
    return lengths == 0 || (lengths == 1 && std::all_of(length.begin(), length.end(), [](char digit) {
                                return digit >= '0' && digit <= '9';
                            }));
}

RequestReader::Step RequestReader::WantBody(std::size_t limit) {
    m_bodyLimit = limit;
    m_isInBody = true;
    const auto length = m_parser->content_length();
    if (length && *length > limit)
        return Refuse(413, "the body is too large: " + std::to_string(*length) + " bytes",
                      "at most " + std::to_string(limit) + " bytes");
    if (m_parser->chunked())
        m_parser->on_chunk_header(m_checkExtension);
    return ParseBody();
}

RequestReader::Step RequestReader::ParseBody() {
    Error error;
    while (m_buffer.size() > 0 && !error && !m_parser->is_done()) {
        const std::size_t taken = m_parser->put(m_buffer.data(), error);
        m_buffer.consume(taken);
        m_bodyTaken += taken;
        if (m_parser->get().body().size() > m_bodyLimit)
            return Refuse(413, "the body is too large", "at most " + std::to_string(m_bodyLimit) + " bytes");
    }
    if (error && error != http::error::need_more)
        return Failed(error);
    if (IsMostlyPadding())
        return Refuse(413, "what stands around the chunks of the body is too large",
                      "chunk sizes, extensions and trailers of at most " +
                          std::to_string(m_limits.headerBytes) + " bytes");
    return m_parser->is_done() ? Step::Body : Step::Read;
}

/// Sizes, extensions and trailers of chunks have no limit in the library. Short chunks are an odd but honest
/// way to send a body: each byte of content may bring some along.
bool RequestReader::IsMostlyPadding() const noexcept {
    const std::size_t waiting = m_parser->is_done() ? 0 : m_buffer.size();
    const std::size_t content = m_parser->get().body().size();
    return waiting > m_limits.headerBytes ||
           m_bodyTaken + waiting > content + m_limits.headerBytes + 8 * content;
}

RequestReader::Step RequestReader::Failed(const Error& error) {
    if (error == http::error::header_limit)
        return Refuse(431, "the request's head is too large",
                      "at most " + std::to_string(m_limits.headerBytes) + " bytes");
    if (error == http::error::bad_version)
        return Refuse(505, "the request is of an unknown version", "HTTP/1.1");
    return Refuse(400, "the request is no HTTP: " + error.message(), "an HTTP/1.1 request");
}

RequestReader::Step RequestReader::Refuse(unsigned status, std::string detail, std::string right) {
    m_refusal = {status, std::move(detail), std::move(right)};
    return Step::Refused;
}

void RequestReader::FillRequest() {
    const auto& head = m_parser->get();
    m_isHeadRequest = head.method() == http::verb::head;
    m_request.method = m_isHeadRequest ? "GET" : View(head.method_string());
    const std::string_view target = View(head.target());
    const std::size_t question = std::min(target.find('?'), target.size());
    m_request.path = target.substr(0, question);
    m_request.query = target.substr(std::min(question + 1, target.size()));
    m_request.headers.clear();
    for (const auto& field : head)
        m_request.headers.emplace_back(View(field.name_string()), View(field.value()));
    m_request.isUpgrade = boost::beast::websocket::is_upgrade(head);
    m_request.hasBody = !m_parser->is_done();
    std::size_t used = 0;
    for (auto& [name, value] : m_request.headers) {
        const bool isTags = IsSameInLowerCase(name, "if-match") || IsSameInLowerCase(name, "if-none-match");
        if (isTags && used < m_tags.size() && packing::HasPackedTag(value))
            value = m_tags.at(used++) = packing::PlainTags(value);
    }
}

bool RequestReader::AwaitsContinue() const noexcept {
    return IsSameInLowerCase(m_request.Header("expect"), "100-continue") && !IsOld() && !HasBytes();
}

} // namespace controller
