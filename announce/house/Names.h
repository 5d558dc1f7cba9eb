#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// Finds what people mean by a name.
namespace names {

struct Named {
    std::string id; ///< as it is typed: "5"; of a variable "9/4"
    std::string name;
};

/// The place in `all` of the one whose id is `wanted`, else of the one whose name it is, in small or capital
/// letters. Throws Failure: NotFound with the nearest names, Ambiguous with the candidates. `kind` is what
/// they are, "room".
[[nodiscard]] std::size_t
Find(const std::vector<Named>& all, const std::string& wanted, const std::string& kind);

/// The names nearest to `wanted`, the best first; only such that it could have been meant for.
[[nodiscard]] std::vector<std::string> Nearest(const std::vector<std::string>& all,
                                               const std::string& wanted);

/// `Kitchen, Hall or Garden`; empty for none.
[[nodiscard]] std::string Choice(const std::vector<std::string>& all);

/// The text in small letters, where it is ASCII.
[[nodiscard]] std::string Lower(std::string text);

} // namespace names
