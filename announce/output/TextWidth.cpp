#include "announce/output/TextWidth.h"

#include <optional>

#include <locale.h>
#include <wchar.h>

namespace text {
namespace {

constexpr const char* kReplacement = "\xEF\xBF\xBD";

/// The character at the beginning of `text`, and how many bytes it has; nothing when it is not UTF-8.
struct Character {
    char32_t code = 0;
    std::size_t bytes = 1;
};

std::optional<Character> First(std::string_view text) {
    static constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const auto lead = static_cast<unsigned char>(text.front());
    if (lead < 0x80)
        return Character{lead, 1};
    const std::size_t bytes = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || text.size() < bytes)
        return std::nullopt;
    char32_t code = lead & (0x7FU >> bytes);
    for (std::size_t index = 1; index < bytes; ++index) {
        const auto byte = static_cast<unsigned char>(text[index]);
        if ((byte & 0xC0U) != 0x80U)
            return std::nullopt;
        code = code << 6U | (byte & 0x3FU);
    }
    if (code < kSmallest[bytes] || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF))
        return std::nullopt;
    return Character{code, bytes};
}

/// The C library's own table, whatever the user's locale is.
class WidthTable {
public:
    WidthTable() : m_locale(newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr)) {}
    WidthTable(const WidthTable&) = delete;
    WidthTable& operator=(const WidthTable&) = delete;
    ~WidthTable() {
        if (m_locale != nullptr)
            freelocale(m_locale);
    }

    [[nodiscard]] std::size_t WidthOf(char32_t code) const {
        if (m_locale == nullptr)
            return 1;
        const locale_t former = uselocale(m_locale);
        const int width = wcwidth(static_cast<wchar_t>(code));
        uselocale(former);
        return width < 0 ? 1 : static_cast<std::size_t>(width);
    }

private:
    locale_t m_locale;
};

bool IsControl(char32_t code) {
    // C0, DEL, C1; and the marks that turn the direction of what follows.
    return code < 0x20 || (code >= 0x7F && code < 0xA0) || (code >= 0x202A && code <= 0x202E) ||
           (code >= 0x2066 && code <= 0x2069);
}

/// Calls `take(bytes, width)` for each character until it says no.
template <class Take>
void ForEach(std::string_view text, Take take) {
    static const WidthTable kTable;
    while (!text.empty()) {
        const auto character = First(text);
        const std::size_t bytes = character ? character->bytes : 1;
        const std::size_t width = !character               ? 1
                                  : character->code < 0x80 ? 1
                                                           : kTable.WidthOf(character->code);
        if (!take(text.substr(0, bytes), width))
            return;
        text.remove_prefix(bytes);
    }
}

} // namespace

std::string Visible(std::string_view text) {
    std::string visible;
    while (!text.empty()) {
        const auto character = First(text);
        const bool isSpace = text.front() == '\n' || text.front() == '\r' || text.front() == '\t';
        if (isSpace)
            visible += ' ';
        else if (!character || IsControl(character->code))
            visible += kReplacement;
        else
            visible += text.substr(0, character->bytes);
        text.remove_prefix(character ? character->bytes : 1);
    }
    return visible;
}

std::size_t Width(std::string_view text) {
    std::size_t total = 0;
    ForEach(text, [&total](std::string_view, std::size_t width) {
        total += width;
        return true;
    });
    return total;
}

std::string Shortened(std::string_view text, std::size_t width) {
    if (Width(text) <= width)
        return std::string(text);
    if (width == 0)
        return "";
    std::string shortened;
    std::size_t total = 0;
    ForEach(text, [&](std::string_view bytes, std::size_t cells) {
        if (total + cells > width - 1)
            return false;
        shortened += bytes;
        total += cells;
        return true;
    });
    return shortened + "…";
}

std::string PaddedRight(std::string_view text, std::size_t width) {
    const std::size_t own = Width(text);
    return std::string(text) + std::string(width > own ? width - own : 0, ' ');
}

std::string PaddedLeft(std::string_view text, std::size_t width) {
    const std::size_t own = Width(text);
    return std::string(width > own ? width - own : 0, ' ') + std::string(text);
}

bool IsUtf8(std::string_view text) {
    while (!text.empty()) {
        const auto character = First(text);
        if (!character)
            return false;
        text.remove_prefix(character->bytes);
    }
    return true;
}

} // namespace text
