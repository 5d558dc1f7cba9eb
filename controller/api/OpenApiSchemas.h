#pragma once

namespace controller {

/// The schemas that the operations' table names, as JSON text: what stands under "components/schemas".
[[nodiscard]] const char* OpenApiSchemas() noexcept;

} // namespace controller
