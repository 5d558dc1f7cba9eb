#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace controller {

/// The head of a request, taken apart. The texts live as long as the exchange that it belongs to, until that
/// has replied.
struct HttpRequest {
    std::string_view method; ///< "GET" for a HEAD, too: its reply is cut by the connection
    std::string_view path;   ///< as sent, still percent-encoded, without the query
    std::string_view query;  ///< what stands behind the first `?`, without it
    std::string_view peer;   ///< the client's address, without the port
    bool isSecure = false;   ///< came over TLS
    bool isUpgrade = false;  ///< asks for a WebSocket
    bool hasBody = false;
    std::vector<std::pair<std::string_view, std::string_view>> headers; ///< names as sent

    /// The header's value; empty when it is missing. Of headers that come twice, the first.
    [[nodiscard]] std::string_view Header(std::string_view lowerCaseName) const noexcept;

    /// How many headers have this name.
    [[nodiscard]] std::size_t CountHeaders(std::string_view lowerCaseName) const noexcept;
};

/// Whether the text is the other one, which is in lower case, but for the case of its letters (ASCII).
[[nodiscard]] bool IsSameInLowerCase(std::string_view text, std::string_view lowerCase) noexcept;

/// The body of a reply: its own text, one shared by several replies, or one that lives as long as the
/// program.
using HttpBody = std::variant<std::string, std::shared_ptr<const std::string>, std::string_view>;

[[nodiscard]] std::string_view ViewOf(const HttpBody& body) noexcept;

struct HttpReply {
    unsigned status = 200;
    std::string_view contentType; ///< lives as long as the program; empty: no body
    HttpBody body;
    std::vector<std::pair<std::string, std::string>> headers;
    bool isPage = false; ///< sent with the policy for pages, and not with the one for data
};

/// Why a request is not done: what is wrong and where, and what would be right (empty: there is nothing to
/// add).
struct HttpRefusal {
    unsigned status = 400;
    std::string detail;
    std::string right;
    std::vector<std::pair<std::string, std::string>> headers = {};
};

/// The protocol's words for a status: "Not Found"; "Unknown" for one that it does not have.
[[nodiscard]] std::string_view StatusText(unsigned status) noexcept;

/// The text without percent-encoding; nothing when the encoding is broken or hides a zero byte.
[[nodiscard]] std::optional<std::string> PercentDecoded(std::string_view text);

/// A form-encoded query's names and values; nothing when the encoding is broken.
[[nodiscard]] std::optional<std::vector<std::pair<std::string, std::string>>>
ParseQuery(std::string_view query);

} // namespace controller
