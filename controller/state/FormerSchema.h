#pragma once

#include "controller/state/Sqlite.h"

#include <string>

/// Databases of the versions 1 and 2, which held all announcements as one text.
namespace controller::former_schema {

/// The text, with the edits that stand behind it; empty when none has been stored. Throws
/// `std::runtime_error` when it is not whole.
[[nodiscard]] std::string Text(Sqlite& database);

/// The newest text that is whole, of a damaged database; empty when none is.
[[nodiscard]] std::string NewestWholeText(Sqlite& damaged);

/// Takes the tables away.
void Drop(Sqlite& database);

} // namespace controller::former_schema
