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

} // namespace names
