#pragma once

#include "controller/state/AnnouncementRow.h"

namespace controller {

/// The rows as the agent is to have them: each with an id of its own, which its XML carries and which is its
/// key, in the order of these.
///
/// The agent goes by the id inside, finds none that has 0, and of two with the same id drops the later one
/// without a word. Here whoever carries its key has it; then come, in their order, those that carry another
/// id; and one whose id is taken gets its key, or the next free one.
[[nodiscard]] AnnouncementRows WithOwnIds(const AnnouncementRows& rows);

} // namespace controller
