#include "controller/audio/BorrowedText.h"

#include <array>
#include <cstddef>
#include <cstdlib>

namespace controller::audio::borrowed_text {

std::string Of(const Borrowed& entry) {
    std::string text;
    for (const std::string* field : {&entry.kind, &entry.thing, &entry.property, &entry.before, &entry.set})
        text += std::to_string(field->size()) + ":" + *field;
    return text;
}

std::optional<Borrowed> TakeFirst(std::string& text) {
    Borrowed entry;
    std::size_t place = 0;
    for (std::string* field : {&entry.kind, &entry.thing, &entry.property, &entry.before, &entry.set}) {
        const std::size_t colon = text.find(':', place);
        if (colon == std::string::npos)
            return std::nullopt;
        const std::size_t length = std::strtoul(text.c_str() + place, nullptr, 10);
        if (text.size() - colon - 1 < length)
            return std::nullopt;
        *field = text.substr(colon + 1, length);
        place = colon + 1 + length;
    }
    text.erase(0, place);
    return entry;
}

} // namespace controller::audio::borrowed_text
