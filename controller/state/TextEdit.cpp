#include "controller/state/TextEdit.h"

#include <algorithm>

namespace controller {

TextEdit TextEdit::Between(const std::string& before, const std::string& after) {
    const auto shorter = static_cast<std::ptrdiff_t>(std::min(before.size(), after.size()));
    const auto head =
        std::mismatch(before.begin(), before.begin() + shorter, after.begin()).first - before.begin();
    const auto tail =
        std::mismatch(before.rbegin(), before.rbegin() + (shorter - head), after.rbegin()).first -
        before.rbegin();
    TextEdit edit;
    edit.place = head;
    edit.removed = static_cast<std::int64_t>(before.size()) - tail - head;
    edit.added.assign(after.begin() + head, after.end() - tail);
    return edit;
}

bool TextEdit::Apply(std::string& text) const {
    const auto size = static_cast<std::int64_t>(text.size());
    if (place < 0 || removed < 0 || place > size || removed > size - place)
        return false;
    text.replace(static_cast<std::size_t>(place), static_cast<std::size_t>(removed), added);
    return true;
}

} // namespace controller
