#pragma once

#include "controller/http/HttpMessage.h"

#include <cstddef>
#include <optional>
#include <string>

namespace controller {

/// What the connection adds to a reply.
struct ReplyFrame {
    std::string_view date;
    std::string_view host;           ///< the request's `Host`, for the pages' policy
    std::string_view acceptEncoding; ///< the request's, for texts that can be packed
    bool isOldClient = false;        ///< HTTP/1.0
    bool isHeadRequest = false;      ///< the reply goes without its body
    bool isSecure = false;           ///< over TLS
    bool isLast = false;             ///< the connection is closed behind it
};

/// The reply's head as it is sent: status, length (none: the body comes in chunks), the headers that every
/// reply carries, its own, and the blank line.
void AppendHead(std::string& out,
                const HttpReply& reply,
                const ReplyFrame& frame,
                std::optional<std::size_t> length);

} // namespace controller
