#include "controller/api/json/Meaning.h"

#include <algorithm>
#include <array>

namespace controller {

namespace {

using Values = std::vector<std::pair<std::string, std::string>>;

/// Values that are texts of the table themselves.
constexpr std::array<std::string_view, 3> kTexts{"what", "why", "rest"};

/// A value and what stands in front of it, cut from the beginning of a pattern. The last piece has no name.
struct Piece {
    std::string_view front;
    std::string_view name;
};

Piece TakePiece(std::string_view& pattern) {
    // A brace that no letter follows is one of the text.
    for (std::size_t at = pattern.find('{'); at != std::string_view::npos; at = pattern.find('{', at + 1)) {
        if (at + 1 >= pattern.size() || pattern[at + 1] < 'a' || pattern[at + 1] > 'z')
            continue;
        const std::size_t end = pattern.find('}', at);
        const Piece piece{pattern.substr(0, at), pattern.substr(at + 1, end - at - 1)};
        pattern.remove_prefix(end + 1);
        return piece;
    }
    return {std::exchange(pattern, {}), {}};
}

/// Each value ends where what follows it first stands, so that the time does not grow with the square of what
/// somebody has sent.
bool Fits(std::string_view pattern, std::string_view text, Values& values) {
    Piece piece = TakePiece(pattern);
    if (text.substr(0, piece.front.size()) != piece.front)
        return false;
    text.remove_prefix(piece.front.size());
    while (!piece.name.empty()) {
        const bool isLast = pattern.find('{') == std::string_view::npos;
        const Piece next = TakePiece(pattern);
        if (isLast && text.size() < next.front.size())
            return false;
        const std::size_t end = isLast ? text.size() - next.front.size() : text.find(next.front);
        if (end == std::string_view::npos || end == 0 || text.substr(end, next.front.size()) != next.front)
            return false;
        values.emplace_back(piece.name, text.substr(0, end));
        text.remove_prefix(end + next.front.size());
        piece = next;
    }
    return text.empty();
}

} // namespace

fields::Object Meaning::Table() {
    return {"Meaning",
            {fields::Member<&Meaning::code>("code"),
             fields::Member<&Meaning::params>("params", "What stands in the places of the code's text")}};
}

Meaning MeaningOf(std::string_view text, std::string_view code) {
    for (const MeantText& row : MeantTexts()) {
        Meaning meaning{{row.code}, {}};
        Values& values = meaning.params.values;
        if ((!code.empty() && code != row.code) || !Fits(row.text, text, values))
            continue;
        for (const auto& [name, value] : Values(values)) {
            if (std::find(kTexts.begin(), kTexts.end(), name) != kTexts.end())
                AddMeaning(meaning.params, name, value);
        }
        return meaning;
    }
    return {{code.empty() ? Meaning::kOther : std::string(code)}, {}};
}

void AddMeaning(view::Parameters& params, const std::string& name, std::string_view text) {
    const auto meaning = KnownMeaningOf(text);
    if (!meaning)
        return;
    params.values.emplace_back(name + ".code", meaning->code.text);
    for (const auto& [inner, value] : meaning->params.values)
        params.values.emplace_back(std::string(name).append(".").append(inner), value);
}

std::optional<Meaning> KnownMeaningOf(std::string_view text) {
    if (text.empty())
        return std::nullopt;
    Meaning meaning = MeaningOf(text);
    if (meaning.code.text == Meaning::kOther && meaning.params.values.empty())
        return std::nullopt;
    return meaning;
}

} // namespace controller
