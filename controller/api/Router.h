#pragma once

#include "controller/api/ApiCall.h"
#include "controller/api/Operation.h"

#include <string>
#include <string_view>
#include <vector>

namespace controller {

/// Finds the operation behind an address.
class Router {
public:
    struct Route {
        const Operation* operation = nullptr; ///< null: see `allowed`
        ApiCall::Values values;               ///< of the path's parameters, decoded
        std::string allowed;                  ///< methods that the path has; empty for an unknown path
    };

    /// `operations` is borrowed for life.
    explicit Router(const std::vector<Operation>& operations) : m_operations(operations) {}

    [[nodiscard]] Route Find(std::string_view method, std::string_view path) const;

private:
    const std::vector<Operation>& m_operations;
};

} // namespace controller
