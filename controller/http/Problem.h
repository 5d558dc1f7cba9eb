#pragma once

#include "controller/http/HttpMessage.h"

#include <string>
#include <string_view>

namespace controller {

/// An error as `application/problem+json`: `detail` says what is wrong and where, `right` what would be right
/// (empty: there is nothing to add). Bytes that are no UTF-8 are replaced.
[[nodiscard]] HttpReply Problem(unsigned status, std::string_view detail, std::string_view right = {});

} // namespace controller
