#include "controller/access/TokenSecret.h"

#include "controller/driver/Text.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <vector>

#include <openssl/crypto.h>
#include <openssl/evp.h>
#include <openssl/rand.h>

namespace controller::token_secret {
namespace {

using Bytes = std::vector<unsigned char>;

struct Costs {
    unsigned logN = 14;
    unsigned r = 8;
    unsigned p = 1;
};

struct Kept {
    Costs costs;
    Bytes salt;
    Bytes hash;
};

constexpr std::size_t kSalt = 16;
constexpr std::size_t kHash = 32;
constexpr std::uint64_t kMaxMemory = std::uint64_t{128} << 20U;

std::string Hexadecimal(const Bytes& bytes) {
    static constexpr char kDigits[] = "0123456789abcdef";
    std::string text;
    for (const unsigned char byte : bytes) {
        text += kDigits[byte >> 4U];
        text += kDigits[byte & 15U];
    }
    return text;
}

std::optional<Bytes> FromHexadecimal(const std::string& text, std::size_t size) {
    if (text.size() != 2 * size ||
        !std::all_of(text.begin(), text.end(), [](unsigned char digit) { return std::isxdigit(digit) != 0; }))
        return std::nullopt;
    Bytes bytes;
    for (std::size_t i = 0; i < text.size(); i += 2)
        bytes.push_back(static_cast<unsigned char>(std::stoul(text.substr(i, 2), nullptr, 16)));
    return bytes;
}

std::vector<std::string> Split(const std::string& text) {
    std::vector<std::string> parts(1);
    for (const char letter : text) {
        if (letter == ':')
            parts.emplace_back();
        else
            parts.back() += letter;
    }
    return parts;
}

std::optional<Kept> Parse(const std::string& text) {
    const auto parts = Split(text);
    if (parts.size() != 6 || parts[0] != "scrypt")
        return std::nullopt;
    const auto logN = ReadNumber<unsigned>(parts[1], 10, 17);
    const auto r = ReadNumber<unsigned>(parts[2], 1, 16);
    const auto p = ReadNumber<unsigned>(parts[3], 1, 4);
    auto salt = FromHexadecimal(parts[4], kSalt);
    auto hash = FromHexadecimal(parts[5], kHash);
    if (!logN || !r || !p || !salt || !hash)
        return std::nullopt;
    return Kept{{*logN, *r, *p}, std::move(*salt), std::move(*hash)};
}

Bytes Scrypt(std::string_view secret, const Bytes& salt, const Costs& costs) {
    Bytes hash(kHash);
    const int isDone =
        EVP_PBE_scrypt(secret.data(), secret.size(), salt.data(), salt.size(), std::uint64_t{1} << costs.logN,
                       costs.r, costs.p, kMaxMemory, hash.data(), hash.size());
    if (isDone != 1)
        throw std::runtime_error("a token cannot be hashed: there is too little memory");
    return hash;
}

Bytes RandomBytes(std::size_t count) {
    Bytes bytes(count);
    if (RAND_bytes(bytes.data(), static_cast<int>(count)) != 1)
        throw std::runtime_error("the machine gives no random numbers");
    return bytes;
}

} // namespace

bool IsName(std::string_view name) noexcept {
    return !name.empty() && name.size() <= kMaxName &&
           std::all_of(name.begin(), name.end(), [](unsigned char letter) {
               return std::isalnum(letter) != 0 || letter == '-' || letter == '_';
           });
}

std::string Chance(std::size_t bytes) {
    return Hexadecimal(RandomBytes(bytes));
}

std::string Hash(std::string_view secret) {
    const Costs costs;
    const Bytes salt = RandomBytes(kSalt);
    return "scrypt:" + std::to_string(costs.logN) + ":" + std::to_string(costs.r) + ":" +
           std::to_string(costs.p) + ":" + Hexadecimal(salt) + ":" + Hexadecimal(Scrypt(secret, salt, costs));
}

bool IsHash(const std::string& hash) {
    return Parse(hash).has_value();
}

bool Matches(std::string_view secret, const std::string& hash) {
    const auto kept = Parse(hash);
    if (!kept)
        return false;
    const Bytes found = Scrypt(secret, kept->salt, kept->costs);
    return CRYPTO_memcmp(found.data(), kept->hash.data(), found.size()) == 0;
}

Digest DigestOf(std::string_view text) {
    Digest digest{};
    if (EVP_Digest(text.data(), text.size(), digest.data(), nullptr, EVP_sha256(), nullptr) != 1)
        throw std::runtime_error("the machine's OpenSSL has no SHA-256");
    return digest;
}

bool AreSame(const Digest& one, const Digest& other) noexcept {
    return CRYPTO_memcmp(one.data(), other.data(), one.size()) == 0;
}

} // namespace controller::token_secret
