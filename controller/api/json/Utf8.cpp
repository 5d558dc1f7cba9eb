#include "controller/api/json/Utf8.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace controller {

namespace {

/// A beginning of a text: so many bytes are a character, or are the most that could have become one.
struct Part {
    std::size_t size;
    bool isCharacter;
};

struct Lead {
    std::size_t size;          ///< of the whole character; 0: no character begins so
    unsigned char least, most; ///< of the second byte
};

Lead LeadOf(unsigned char byte) noexcept {
    if (byte < 0x80)
        return {1, 0, 0};
    if (byte < 0xC2 || byte > 0xF4)
        return {0, 0, 0};
    if (byte < 0xE0)
        return {2, 0x80, 0xBF};
    // Neither a longer form than needed, nor a half of a pair, nor beyond U+10FFFF.
    if (byte < 0xF0)
        return {3, static_cast<unsigned char>(byte == 0xE0 ? 0xA0 : 0x80),
                static_cast<unsigned char>(byte == 0xED ? 0x9F : 0xBF)};
    return {4, static_cast<unsigned char>(byte == 0xF0 ? 0x90 : 0x80),
            static_cast<unsigned char>(byte == 0xF4 ? 0x8F : 0xBF)};
}

Part First(std::string_view text) noexcept {
    const auto byte = [&](std::size_t index) {
        return static_cast<unsigned char>(text[index]);
    };
    const Lead lead = LeadOf(byte(0));
    if (lead.size <= 1)
        return {1, lead.size == 1};
    std::size_t size = 1;
    while (size < lead.size && size < text.size()) {
        const unsigned char least = size == 1 ? lead.least : 0x80;
        const unsigned char most = size == 1 ? lead.most : 0xBF;
        if (byte(size) < least || byte(size) > most)
            break;
        ++size;
    }
    return {size, size == lead.size};
}

/// How many bytes at the beginning are ASCII, or seven less.
std::size_t AsciiStart(std::string_view text) noexcept {
    std::size_t size = 0;
    for (std::uint64_t block = 0; size + sizeof block <= text.size(); size += sizeof block) {
        std::memcpy(&block, text.data() + size, sizeof block);
        if ((block & 0x8080808080808080U) != 0)
            break;
    }
    return size;
}

} // namespace

bool IsUtf8(std::string_view text) noexcept {
    text.remove_prefix(AsciiStart(text));
    while (!text.empty()) {
        const Part part = First(text);
        if (!part.isCharacter)
            return false;
        text.remove_prefix(part.size);
    }
    return true;
}

std::string ToUtf8(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const Part part = First(text);
        result += part.isCharacter ? text.substr(0, part.size) : "\xEF\xBF\xBD";
        text.remove_prefix(part.size);
    }
    return result;
}

} // namespace controller
