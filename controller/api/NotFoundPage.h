#pragma once

#include "controller/house/House.h"
#include "controller/http/HttpMessage.h"

namespace controller {

/// Whether a person in a browser asks, who is to read what is wrong: for a page, and not for data.
[[nodiscard]] bool WantsPage(const HttpRequest& request);

/// 404 for people: says what there is not, and leads to the screens that there are. Their names are told only
/// where there are no tokens: who has none may not know them.
[[nodiscard]] HttpReply NotFoundPage(const HttpRequest& request, const House& house);

} // namespace controller
