#pragma once

#include <string_view>

namespace controller {

/// Requires that these are whole replies of a server that has done its work: each with a status that it knows
/// and never 500, as long as it says, with JSON where it says so; refusals with their words. After a 101 come
/// frames. With `hasHead`, one of the requests asked for a reply without body, and bodies cannot be told.
void RequireReplies(std::string_view bytes, bool hasHead);

/// Requires that these are the frames of a server that sends JSON texts; the last one may be cut.
void RequireFrames(std::string_view bytes);

} // namespace controller
