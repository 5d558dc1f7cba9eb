#include "announce/announcements/Views.h"

#include "announce/announcements/Fields.h"
#include "announce/basics/TextWidth.h"
#include "announce/basics/Words.h"

namespace announcement_text {

std::string Of(const std::string& key, const Json& announcement, House& house) {
    return fields::Phrase(fields::Named(key), announcement, house);
}

std::string Message(const Json& announcement, House& house) {
    const std::string variable = Of("variable", announcement, house);
    return variable.empty() ? Of("text", announcement, house) : variable;
}

Table Whole(const Json& announcement, House& house) {
    Table table({{""}, {""}});
    const auto add = [&table](const char* what, const std::string& text, Style style = Style::Plain) {
        table.Add({{what, Style::Dim}, {text.empty() ? "-" : text, style}});
    };
    // What the fields say, as long as the first of them says something.
    const auto told = [&](const std::vector<std::string>& keys) {
        const bool saysNothing = Of(keys.front(), announcement, house).empty();
        std::vector<std::string> all;
        for (const std::string& key : keys) {
            const std::string text = Of(key, announcement, house);
            if (!saysNothing && !text.empty())
                all.push_back(text);
        }
        return words::Listed(all, [](const std::string& text) { return text; });
    };
    add("id", announcement.at("id").dump());
    add("name", Of("name", announcement, house), Style::Bold);
    add("sound", told({"sound", "sound_delay", "urgent"}));
    add("rooms", told({"rooms"}));
    add("text", Message(announcement, house));
    add("image", told({"image"}));
    add("screens", told({"screens"}));
    add("popup", told({"popup_time", "popup_delay", "ok_button"}));
    return table;
}

std::string Title(const Json& announcement) {
    return "announcement " + announcement.at("id").dump() + " (" +
           text::Visible(announcement.at("name").get<std::string>()) + ")";
}

} // namespace announcement_text
