#include "controller/http/AcceptEncoding.h"

#include "controller/http/HttpMessage.h"

#include <algorithm>
#include <optional>
#include <string_view>

namespace controller {

namespace {

constexpr std::string_view kPlain = "identity";

/// What stands before the next separator, without the blanks around it; takes both from the text.
std::string_view Take(std::string_view& text, char separator) noexcept {
    std::string_view part = text.substr(0, text.find(separator));
    text.remove_prefix(std::min(text.size(), part.size() + 1));
    part.remove_prefix(std::min(part.find_first_not_of(" \t"), part.size()));
    return part.substr(0, part.find_last_not_of(" \t") + 1);
}

/// A weight in thousandths; nothing when it is none.
std::optional<int> ReadWeight(std::string_view text) noexcept {
    if (text.empty() || text.size() > 5 || (text[0] != '0' && text[0] != '1') ||
        (text.size() > 1 && text[1] != '.'))
        return std::nullopt;
    int weight = (text[0] - '0') * 1000;
    int place = 100;
    for (const char digit : text.substr(std::min<std::size_t>(text.size(), 2))) {
        if (digit < '0' || digit > '9')
            return std::nullopt;
        weight += (digit - '0') * place;
        place /= 10;
    }
    return weight <= 1000 ? std::optional(weight) : std::nullopt;
}

/// What the client says about this coding by its name, or else about all that it does not name.
int WeightOf(std::string_view coding, std::string_view wanted) noexcept {
    std::optional<int> ofOthers;
    while (!wanted.empty()) {
        std::string_view element = Take(wanted, ',');
        const std::string_view name = Take(element, ';');
        const bool isNamed =
            IsSameInLowerCase(name, coding) || (coding == "gzip" && IsSameInLowerCase(name, "x-gzip"));
        if (!isNamed && (name != "*" || coding == kPlain))
            continue;
        const std::string_view parameter = Take(element, ';');
        std::optional<int> weight = 1000;
        if (!parameter.empty())
            weight = IsSameInLowerCase(parameter.substr(0, 2), "q=") ? ReadWeight(parameter.substr(2))
                                                                     : std::nullopt;
        if (isNamed)
            return weight.value_or(0);
        ofOthers = weight;
    }
    return ofOthers.value_or(0);
}

} // namespace

std::string_view ChooseCoding(std::string_view acceptEncoding,
                              std::initializer_list<std::string_view> offered) noexcept {
    // A client that says nothing of the reply as it is takes it, but likes what it has named better.
    std::string_view best;
    int most = 0;
    for (const std::string_view coding : offered) {
        const int weight = WeightOf(coding, acceptEncoding);
        if (weight > most) {
            most = weight;
            best = coding;
        }
    }
    return WeightOf(kPlain, acceptEncoding) > most ? std::string_view() : best;
}

} // namespace controller
