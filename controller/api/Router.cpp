#include "controller/api/Router.h"

#include <algorithm>
#include <optional>

namespace controller {

namespace {

std::vector<std::string> Split(std::string_view path) {
    std::vector<std::string> segments;
    while (!path.empty() && path.front() == '/') {
        path.remove_prefix(1);
        const std::string_view segment = path.substr(0, path.find('/'));
        segments.emplace_back(segment);
        path.remove_prefix(segment.size());
    }
    return segments;
}

bool IsParameter(const std::string& segment) {
    return !segment.empty() && segment.front() == '{';
}

bool Fits(const std::vector<std::string>& pattern, const std::vector<std::string>& segments) {
    return std::equal(pattern.begin(), pattern.end(), segments.begin(), segments.end(),
                      [](const std::string& expected, const std::string& segment) {
                          return IsParameter(expected) ? !segment.empty() : expected == segment;
                      });
}

/// Nothing for a broken encoding.
std::optional<ApiCall::Values> ValuesOf(const std::vector<std::string>& pattern,
                                        const std::vector<std::string>& segments) {
    ApiCall::Values values;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (!IsParameter(pattern[i]))
            continue;
        auto value = PercentDecoded(segments[i]);
        if (!value)
            return std::nullopt;
        values.emplace_back(pattern[i].substr(1, pattern[i].size() - 2), std::move(*value));
    }
    return values;
}

} // namespace

Router::Router(const std::vector<Operation>& operations) {
    for (const Operation& operation : operations)
        m_entries.push_back({&operation, Split(operation.path)});
}

Router::Route Router::Find(std::string_view method, std::string_view path) const {
    const auto segments = Split(path);
    Route route;
    for (const Entry& entry : m_entries) {
        if (!Fits(entry.segments, segments))
            continue;
        if (entry.operation->method != method) {
            route.allowed += (route.allowed.empty() ? "" : ", ") + std::string(entry.operation->method);
            continue;
        }
        auto values = ValuesOf(entry.segments, segments);
        if (!values)
            return {};
        return {entry.operation, std::move(*values), ""};
    }
    return route;
}

} // namespace controller
