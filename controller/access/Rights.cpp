#include "controller/access/Rights.h"

#include "controller/driver/Text.h"

#include <stdexcept>
#include <string_view>

namespace controller {

namespace {

constexpr std::string_view kNavigator = "navigator:";

std::uint32_t ReadNavigator(const std::string& text) {
    const auto id = ReadNumber<std::uint32_t>(text.substr(kNavigator.size()), 1, 0xffffffff);
    if (!id)
        throw std::invalid_argument("\"" + text +
                                    "\" names no navigator; write navigator:5 for the navigator with id 5");
    return *id;
}

} // namespace

const char* NameOf(Need need) noexcept {
    switch (need) {
    case Need::Nothing:
        return "none";
    case Need::Token:
        return "any";
    case Need::Navigator:
    case Need::Screen:
        return "navigator";
    case Need::Play:
        return "play";
    case Need::Admin:
        break;
    }
    return "admin";
}

Rights Rights::Read(const std::vector<std::string>& texts) {
    Rights rights;
    for (const std::string& text : texts) {
        if (text == "admin")
            rights.mayAdminister = true;
        else if (text == "play")
            rights.mayPlay = true;
        else if (text.compare(0, kNavigator.size(), kNavigator) == 0)
            rights.navigators.insert(ReadNavigator(text));
        else
            throw std::invalid_argument("\"" + text +
                                        "\" is no right; there are admin, play and navigator:ID");
    }
    return rights;
}

Rights Rights::All() {
    Rights rights;
    rights.mayAdminister = true;
    return rights;
}

bool Rights::Allow(Need need, std::uint32_t navigator) const {
    if (mayAdminister || need == Need::Nothing || need == Need::Token)
        return true;
    if (need == Need::Admin)
        return false;
    if (mayPlay)
        return true;
    if (need == Need::Screen)
        return !navigators.empty();
    return need == Need::Navigator && navigators.count(navigator) != 0;
}

std::vector<std::string> Rights::Texts() const {
    std::vector<std::string> texts;
    if (mayAdminister)
        texts.emplace_back("admin");
    if (mayPlay)
        texts.emplace_back("play");
    for (const std::uint32_t navigator : navigators)
        texts.push_back(std::string(kNavigator) + std::to_string(navigator));
    return texts;
}

} // namespace controller
