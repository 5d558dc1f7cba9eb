#pragma once

#include <stdexcept>
#include <string>

namespace controller {

/// A request that cannot be done: the status to answer it with, what is wrong and where, and what would be
/// right.
class ApiError : public std::runtime_error {
public:
    ApiError(unsigned status, const std::string& detail, std::string right = {})
        : std::runtime_error(detail)
        , m_status(status)
        , m_right(std::move(right)) {}

    [[nodiscard]] unsigned Status() const noexcept { return m_status; }
    [[nodiscard]] const std::string& Right() const noexcept { return m_right; }

private:
    unsigned m_status;
    std::string m_right;
};

} // namespace controller
