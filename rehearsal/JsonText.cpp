#include "rehearsal/JsonText.h"

namespace {

constexpr char kFirstPrintable = ' ';

bool NeedsEscape(char character) {
    return static_cast<unsigned char>(character) < kFirstPrintable || character == '"' || character == '\\';
}

void AppendEscaped(std::string& out, char character) {
    switch (character) {
    case '"':
    case '\\':
        out.append({'\\', character});
        return;
    case '\n':
        out.append("\\n");
        return;
    case '\r':
        out.append("\\r");
        return;
    case '\t':
        out.append("\\t");
        return;
    case '\b':
        out.append("\\b");
        return;
    case '\f':
        out.append("\\f");
        return;
    default:
        constexpr std::string_view kDigits = "0123456789abcdef";
        const auto code = static_cast<unsigned char>(character);
        out.append({'\\', 'u', '0', '0', kDigits[code / 16], kDigits[code % 16]});
    }
}

} // namespace

void AppendJsonText(std::string& out, std::string_view text) {
    out.push_back('"');
    std::size_t plain = 0;
    for (std::size_t place = 0; place < text.size(); ++place) {
        if (!NeedsEscape(text[place]))
            continue;
        out.append(text, plain, place - plain);
        AppendEscaped(out, text[place]);
        plain = place + 1;
    }
    out.append(text, plain);
    out.push_back('"');
}

std::string QuotedExcerpt(std::string_view text, std::size_t most) {
    const std::string_view beginning = Beginning(text, most);
    std::string quoted;
    AppendJsonText(quoted, beginning);
    if (beginning.size() < text.size())
        quoted.insert(quoted.size() - 1, "…");
    return quoted;
}

std::string_view Beginning(std::string_view text, std::size_t most) {
    if (text.size() <= most)
        return text;
    const auto continues = [&](std::size_t place) {
        return (static_cast<unsigned char>(text[place]) & 0xC0U) == 0x80U;
    };
    while (most > 0 && continues(most))
        --most;
    return text.substr(0, most);
}
