#pragma once

#include <array>
#include <string>
#include <string_view>

/// Tokens and what is kept of them. A token reads `NAME.SECRET`; the secret is 256 bits of chance, and what
/// the house keeps of it, `scrypt:LOG2N:R:P:SALT:HASH` in hexadecimal, does not lead back to it. Any thread.
namespace controller::token_secret {

/// So long a name may be: letters, digits, `-` and `_`.
constexpr std::size_t kMaxName = 64;

[[nodiscard]] bool IsName(std::string_view name) noexcept;

/// As many bytes of chance, in hexadecimal. Throws `std::runtime_error` when the machine has none.
[[nodiscard]] std::string Chance(std::size_t bytes);

/// What is to be kept of a secret, with a new salt. Takes about 50 ms, and 16 MiB. Throws
/// `std::runtime_error`.
[[nodiscard]] std::string Hash(std::string_view secret);

/// Whether the text has the form that `Hash` gives, with costs that this program is willing to pay.
[[nodiscard]] bool IsHash(const std::string& hash);

/// Whether the secret is the one that was hashed; false for a text that is no hash. Takes as long as `Hash`.
[[nodiscard]] bool Matches(std::string_view secret, const std::string& hash);

/// SHA-256, by which a token that was found right once is known again.
using Digest = std::array<unsigned char, 32>;
[[nodiscard]] Digest DigestOf(std::string_view text);

/// A map key's order tells how far two keys agree; this one looks at all of both.
[[nodiscard]] bool AreSame(const Digest& one, const Digest& other) noexcept;

} // namespace controller::token_secret
