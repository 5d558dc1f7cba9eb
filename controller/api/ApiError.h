#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>

namespace controller {

/// A request that cannot be done: the status to answer it with, what is wrong and where, and what would be
/// right.
class ApiError : public std::runtime_error {
public:
    /// What programs can act upon.
    struct ForPrograms {
        std::string code;
        std::optional<std::int64_t> durationMs; ///< of a sound that is too long
    };

    ApiError(unsigned status, const std::string& detail, std::string right = {}, ForPrograms forPrograms = {})
        : std::runtime_error(detail)
        , m_status(status)
        , m_right(std::move(right))
        , m_forPrograms(std::move(forPrograms)) {}

    [[nodiscard]] unsigned Status() const noexcept { return m_status; }
    [[nodiscard]] const std::string& Right() const noexcept { return m_right; }
    [[nodiscard]] const ForPrograms& More() const noexcept { return m_forPrograms; }

private:
    unsigned m_status;
    std::string m_right;
    ForPrograms m_forPrograms;
};

} // namespace controller
