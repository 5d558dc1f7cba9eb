#include "announce/basics/TextWidth.h"

#include <optional>

#include <locale.h>
#include <wchar.h>

namespace text {
namespace {

constexpr const char* kReplacement = "\xEF\xBF\xBD";

/// The character at the beginning of a text; what is no UTF-8 is a byte without a code.
struct Character {
    std::string_view bytes;
    std::optional<char32_t> code;
};

Character First(std::string_view text) {
    static constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const Character broken{text.substr(0, 1), std::nullopt};
    const auto lead = static_cast<unsigned char>(text.front());
    if (lead < 0x80)
        return {text.substr(0, 1), lead};
    const std::size_t size = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || text.size() < size)
        return broken;
    char32_t code = lead & (0x7FU >> size);
    for (std::size_t index = 1; index < size; ++index) {
        const auto byte = static_cast<unsigned char>(text[index]);
        if ((byte & 0xC0U) != 0x80U)
            return broken;
        code = code << 6U | (byte & 0x3FU);
    }
    if (code < kSmallest[size] || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF))
        return broken;
    return {text.substr(0, size), code};
}

/// Calls `take(character)` for each until it says no; says whether it never did.
template <class Take>
bool ForEach(std::string_view text, Take take) {
    while (!text.empty()) {
        const Character character = First(text);
        if (!take(character))
            return false;
        text.remove_prefix(character.bytes.size());
    }
    return true;
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

    [[nodiscard]] std::size_t WidthOf(const Character& character) const {
        if (!character.code || *character.code < 0x80 || m_locale == nullptr)
            return 1;
        const locale_t former = uselocale(m_locale);
        const int width = wcwidth(static_cast<wchar_t>(*character.code));
        uselocale(former);
        return width < 0 ? 1 : static_cast<std::size_t>(width);
    }

private:
    locale_t m_locale;
};

std::size_t WidthOf(const Character& character) {
    static const WidthTable kTable;
    return kTable.WidthOf(character);
}

bool IsControl(char32_t code) {
    // C0, DEL, C1; and the marks that turn the direction of what follows.
    return code < 0x20 || (code >= 0x7F && code < 0xA0) || (code >= 0x202A && code <= 0x202E) ||
           (code >= 0x2066 && code <= 0x2069);
}

std::string SpacesUpTo(std::string_view text, std::size_t width) {
    const std::size_t own = Width(text);
    return std::string(width > own ? width - own : 0, ' ');
}

} // namespace

std::string Visible(std::string_view text) {
    std::string visible;
    (void)ForEach(text, [&visible](const Character& character) { // it never says no
        const auto code = character.code;
        if (code == U'\n' || code == U'\r' || code == U'\t')
            visible += ' ';
        else
            visible += !code || IsControl(*code) ? kReplacement : character.bytes;
        return true;
    });
    return visible;
}

std::string VisibleLines(std::string_view text) {
    const std::size_t end = text.find('\n');
    std::string visible = Visible(text.substr(0, end));
    for (std::size_t from = end; from != std::string_view::npos;) {
        const std::size_t next = text.find('\n', from + 1);
        visible +=
            '\n' + Visible(text.substr(from + 1, next == std::string_view::npos ? next : next - from - 1));
        from = next;
    }
    return visible;
}

std::size_t Width(std::string_view text) {
    std::size_t total = 0;
    (void)ForEach(text, [&total](const Character& character) { // it never says no
        total += WidthOf(character);
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
    (void)ForEach(text, [&](const Character& character) { // it says no before the end: the text is too wide
        total += WidthOf(character);
        if (total < width)
            shortened += character.bytes;
        return total < width;
    });
    return shortened + "…";
}

std::string PaddedRight(std::string_view text, std::size_t width) {
    return std::string(text) + SpacesUpTo(text, width);
}

std::string PaddedLeft(std::string_view text, std::size_t width) {
    return SpacesUpTo(text, width) + std::string(text);
}

bool IsUtf8(std::string_view text) {
    return ForEach(text, [](const Character& character) { return character.code.has_value(); });
}

} // namespace text
