#include "controller/http/ReplyHead.h"

#include <algorithm>
#include <cctype>

namespace controller {

namespace {

constexpr std::string_view kAlways = "X-Content-Type-Options: nosniff\r\n"
                                     "Referrer-Policy: no-referrer\r\n"
                                     "X-Frame-Options: DENY\r\n"
                                     "Cross-Origin-Opener-Policy: same-origin\r\n"
                                     "Cross-Origin-Resource-Policy: same-origin\r\n";

/// For thirty days: a house that gives up TLS is not shut out for longer.
constexpr std::string_view kStaySecure = "Strict-Transport-Security: max-age=2592000\r\n";

/// Data that a browser is made to show as a page can do nothing there.
constexpr std::string_view kDataPolicy =
    "Content-Security-Policy: default-src 'none'; frame-ancestors 'none'; sandbox\r\n";

/// A name that can stand in a policy; anything else would let a request write into it.
bool IsPlainHost(std::string_view host) {
    return !host.empty() && std::all_of(host.begin(), host.end(), [](unsigned char letter) {
        return std::isalnum(letter) != 0 || letter == '.' || letter == '-' || letter == ':' ||
               letter == '[' || letter == ']';
    });
}

void AppendPagePolicy(std::string& out, std::string_view host) {
    out +=
        "Content-Security-Policy: default-src 'none'; script-src 'self'; style-src 'self'; font-src 'self'; "
        "img-src 'self' blob: data: http: https:; media-src 'self' blob:; connect-src 'self'";
    // Older browsers do not take a WebSocket to the page's own server for 'self'.
    if (IsPlainHost(host))
        out.append(" ws://").append(host).append(" wss://").append(host);
    out += "; manifest-src 'self'; base-uri 'none'; form-action 'none'; frame-ancestors 'none'\r\n";
}

bool HasHeader(const HttpReply& reply, std::string_view name) {
    return std::any_of(reply.headers.begin(), reply.headers.end(),
                       [&](const auto& header) { return header.first == name; });
}

void AppendLength(std::string& out, unsigned status, std::optional<std::size_t> length) {
    if (!length)
        out += "Transfer-Encoding: chunked\r\n";
    else if (status != 204 && status != 304)
        out.append("Content-Length: ").append(std::to_string(*length)).append("\r\n");
}

} // namespace

void AppendHead(std::string& out,
                const HttpReply& reply,
                const ReplyFrame& frame,
                std::optional<std::size_t> length) {
    out.append("HTTP/1.1 ").append(std::to_string(reply.status)).append(" ");
    out.append(StatusText(reply.status)).append("\r\nDate: ").append(frame.date).append("\r\n");
    if (!reply.contentType.empty())
        out.append("Content-Type: ").append(reply.contentType).append("\r\n");
    AppendLength(out, reply.status, length);
    out += kAlways;
    if (frame.isSecure)
        out += kStaySecure;
    if (reply.isPage)
        AppendPagePolicy(out, frame.host);
    else
        out += kDataPolicy;
    if (!HasHeader(reply, "Cache-Control"))
        out += "Cache-Control: no-store\r\n";
    for (const auto& [name, value] : reply.headers)
        out.append(name).append(": ").append(value).append("\r\n");
    if (frame.isLast)
        out += "Connection: close\r\n";
    else if (frame.isOldClient)
        out += "Connection: keep-alive\r\n";
    out += "\r\n";
}

} // namespace controller
