#pragma once

#include <cstdint>
#include <string>

namespace controller {

/// How one text becomes another: at a place, in bytes, so many are taken out and others put in.
struct TextEdit {
    std::int64_t place = 0;
    std::int64_t removed = 0;
    std::string added;

    /// The shortest one that leaves what both texts begin and end with.
    [[nodiscard]] static TextEdit Between(const std::string& before, const std::string& after);

    /// False, and nothing done, when the place is not in the text.
    [[nodiscard]] bool Apply(std::string& text) const;
};

} // namespace controller
