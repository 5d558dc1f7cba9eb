#pragma once

#include "controller/http/HttpMessage.h"

#include <string>
#include <string_view>

namespace controller {

/// What the connection adds to a reply.
struct ReplyFrame {
    std::string_view date;
    std::string_view host;    ///< the request's `Host`, for the pages' policy
    bool isOldClient = false; ///< HTTP/1.0
    bool isLast = false;      ///< the connection is closed behind it
};

/// The reply's head as it is sent: status, length, the headers that every reply carries, its own, and the
/// blank line.
void AppendHead(std::string& out, const HttpReply& reply, const ReplyFrame& frame);

} // namespace controller
