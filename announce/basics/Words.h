#pragma once

#include <string>
#include <vector>

/// Words as people type and read them.
namespace words {

/// The words nearest to `wanted`, the best first; only such that it could have been meant for.
[[nodiscard]] std::vector<std::string> Nearest(const std::vector<std::string>& all,
                                               const std::string& wanted);

/// `Kitchen, Hall or Garden`; empty for none.
[[nodiscard]] std::string Choice(const std::vector<std::string>& all);

/// `Kitchen, Hall`: what `nameOf` says of each.
template <class Range, class NameOf>
[[nodiscard]] std::string Listed(const Range& range, NameOf nameOf) {
    std::string list;
    for (const auto& one : range)
        list += (list.empty() ? "" : ", ") + nameOf(one);
    return list;
}

} // namespace words
