#include "controller/api/Router.h"

#include <optional>

namespace controller {

namespace {

/// The first segment of a path that begins with a slash, taken from it.
std::string_view TakeSegment(std::string_view& path) noexcept {
    path.remove_prefix(1);
    const std::string_view segment = path.substr(0, path.find('/'));
    path.remove_prefix(segment.size());
    return segment;
}

bool IsParameter(std::string_view segment) noexcept {
    return !segment.empty() && segment.front() == '{';
}

bool Fits(std::string_view pattern, std::string_view path) noexcept {
    while (!pattern.empty() && !path.empty() && path.front() == '/') {
        const std::string_view expected = TakeSegment(pattern);
        const std::string_view segment = TakeSegment(path);
        if (IsParameter(expected) ? segment.empty() : expected != segment)
            return false;
    }
    return pattern.empty() && path.empty();
}

/// Of a path that fits; nothing for a broken encoding.
std::optional<ApiCall::Values> ValuesOf(std::string_view pattern, std::string_view path) {
    ApiCall::Values values;
    while (!pattern.empty()) {
        const std::string_view expected = TakeSegment(pattern);
        const std::string_view segment = TakeSegment(path);
        if (!IsParameter(expected))
            continue;
        auto value = PercentDecoded(segment);
        if (!value)
            return std::nullopt;
        values.emplace_back(expected.substr(1, expected.size() - 2), std::move(*value));
    }
    return values;
}

} // namespace

Router::Route Router::Find(std::string_view method, std::string_view path) const {
    Route route;
    for (const Operation& operation : m_operations) {
        if (!Fits(operation.path, path))
            continue;
        if (operation.method != method) {
            route.allowed += (route.allowed.empty() ? "" : ", ") + std::string(operation.method);
            continue;
        }
        auto values = ValuesOf(operation.path, path);
        if (!values)
            return {};
        return {&operation, std::move(*values), ""};
    }
    return route;
}

} // namespace controller
