#pragma once

#include <string_view>

namespace controller {

/// A file of the pages, built into the program. Everything in it lives as long as the program.
struct Asset {
    std::string_view name;
    std::string_view contentType; ///< with the character set, for texts
    std::string_view digest;      ///< of the content, in letters and digits
    bool isForEver = false;       ///< another content has another name
    std::string_view plain;
    std::string_view gzip;   ///< the same, compressed; empty where that would not be smaller
    std::string_view brotli; ///< as `gzip`
};

/// The file with this name; null when there is none. The names are flat: "index.html" is served for `/`,
/// "navigator.html" for `/navigator/{id}`, every name for `/assets/{name}`.
[[nodiscard]] const Asset* FindAsset(std::string_view name) noexcept;

} // namespace controller
