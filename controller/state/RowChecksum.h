#pragma once

#include "controller/state/AnnouncementRow.h"

#include <cstdint>
#include <string>

namespace controller {

/// Another number for a row in which any one byte is another.
[[nodiscard]] std::int64_t ChecksumOf(const AnnouncementRow& row) noexcept;

/// `announcement 5 ("Dinner")`, as far as the row can be read.
[[nodiscard]] std::string Named(const AnnouncementRow& row);

} // namespace controller
