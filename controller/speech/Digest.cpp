#include "controller/speech/Digest.h"

#include <array>
#include <new>

#include <openssl/evp.h>

namespace controller::digest {

std::string Of(const std::string& text) {
    constexpr const char* kDigits = "0123456789abcdef";
    std::array<unsigned char, EVP_MAX_MD_SIZE> bytes{};
    unsigned size = 0;
    // Fails for want of memory alone.
    if (EVP_Digest(text.data(), text.size(), bytes.data(), &size, EVP_sha256(), nullptr) != 1)
        throw std::bad_alloc();
    std::string digits;
    for (unsigned index = 0; index < size; ++index) {
        digits += kDigits[bytes[index] >> 4U];
        digits += kDigits[bytes[index] & 0xfU];
    }
    return digits;
}

} // namespace controller::digest
