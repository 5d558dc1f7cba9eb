#include "controller/driver/Text.h"

namespace controller {

namespace {

unsigned ByteOf(char letter) noexcept {
    return static_cast<unsigned char>(letter);
}

bool IsContinuation(char letter) noexcept {
    return ByteOf(letter) >= 0x80 && ByteOf(letter) < 0xC0;
}

/// How many bytes the first character has; 0 when it is none. An overlong one could hide a control character.
std::size_t LengthOfFirst(std::string_view text) noexcept {
    const unsigned lead = ByteOf(text.front());
    if (lead < 0x80)
        return 1;
    const std::size_t length = lead < 0xC2 ? 0 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : lead < 0xF5 ? 4 : 0;
    if (length == 0 || text.size() < length ||
        !std::all_of(text.begin() + 1, text.begin() + static_cast<std::ptrdiff_t>(length), &IsContinuation))
        return 0;
    const unsigned second = ByteOf(text[1]);
    const bool isOverlong = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
    return isOverlong ? 0 : length;
}

bool IsControl(std::string_view character) noexcept {
    const unsigned lead = ByteOf(character.front());
    return lead < 0x20 || lead == 0x7F || (lead == 0xC2 && ByteOf(character[1]) < 0xA0);
}

std::string Plain(std::string_view text, bool isKeepingLines) {
    std::string plain;
    plain.reserve(text.size());
    while (!text.empty()) {
        const std::size_t length = LengthOfFirst(text);
        const std::string_view first = text.substr(0, std::max<std::size_t>(length, 1));
        if (length == 0)
            plain += '?';
        else if (IsControl(first) && !(isKeepingLines && first == "\n"))
            plain += ' ';
        else
            plain += first;
        text.remove_prefix(first.size());
    }
    return plain;
}

} // namespace

std::string OneLine(std::string_view text) {
    return Plain(text, false);
}

std::string PlainLines(std::string_view text) {
    return Plain(text, true);
}

} // namespace controller
