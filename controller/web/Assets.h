#pragma once

#include <string_view>

/// A file of the pages, built into the program. Everything in it lives as long as the program.
struct Asset {
    std::string_view name;
    std::string_view contentType; ///< with the character set, for texts
    std::string_view body;
    std::string_view etag; ///< strong, with its quotes; changes with the body alone
};

/// The file with this name; null when there is none. The names are flat: "index.html" is served for `/`,
/// "navigator.html" for `/navigator/{id}`, every name for `/assets/{name}`.
[[nodiscard]] const Asset* FindAsset(std::string_view name) noexcept;
