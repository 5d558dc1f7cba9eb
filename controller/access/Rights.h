#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace controller {

/// What an operation asks of its caller.
enum class Need {
    Nothing,   ///< not even a token
    Token,     ///< any token
    Navigator, ///< the right of the navigator that the address names, or to play
    Screen,    ///< the right of any navigator, or to play
    Play,
    Admin,
};

/// "none", "any", "navigator", "play" or "admin", as the API's description names it.
[[nodiscard]] const char* NameOf(Need need) noexcept;

/// What the holder of a token may do.
struct Rights {
    bool mayAdminister = false; ///< everything
    bool mayPlay = false;
    std::set<std::uint32_t> navigators;

    /// Reads "admin", "play" and "navigator:ID". Throws `std::invalid_argument`, which says what would be
    /// right.
    [[nodiscard]] static Rights Read(const std::vector<std::string>& texts);
    [[nodiscard]] static Rights All();

    /// `navigator` is what the address names, where it names one.
    [[nodiscard]] bool Allow(Need need, std::uint32_t navigator) const;

    [[nodiscard]] std::vector<std::string> Texts() const;
};

} // namespace controller
