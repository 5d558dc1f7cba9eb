#pragma once

#include "controller/http/HttpMessage.h"

#include <boost/beast/http/message.hpp>

namespace controller {

/// What stands in the head of a request itself: method, path, query and headers.
[[nodiscard]] HttpRequest RequestOf(const boost::beast::http::request_header<>& head);

/// Sixteen bytes, in base64.
[[nodiscard]] bool IsWebSocketKey(std::string_view key) noexcept;

} // namespace controller
