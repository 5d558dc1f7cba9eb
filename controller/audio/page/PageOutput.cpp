#include "controller/audio/Output.h"
#include "controller/audio/OutputDescription.h"
#include "controller/audio/page/PageDesk.h"
#include "controller/audio/page/PagePlayer.h"
#include "controller/driver/Text.h"

#include <chrono>
#include <cstddef>
#include <future>
#include <limits>
#include <memory>
#include <stdexcept>
#include <utility>
#include <vector>

namespace controller::audio {

namespace {

/// 0: the room's own screen, for which the house file's reader puts the number.
std::uint32_t NavigatorOf(const std::string& text) {
    if (text.empty() || text == kOwnPage)
        return 0;
    const auto number = ReadNumber<std::uint32_t>(text, 1, std::numeric_limits<std::uint32_t>::max());
    if (!number)
        throw std::invalid_argument("\"page: " + text +
                                    "\" names no screen; write the id of a navigator, or own, for the one of "
                                    "the room");
    return *number;
}

std::vector<Health> HealthOf(const std::vector<std::string>& texts, const IPageSpeakers* pages) {
    std::vector<Health> answers;
    answers.reserve(texts.size());
    for (const std::string& text : texts) {
        const std::string reason =
            pages != nullptr ? pages->WhyNot(NavigatorOf(text)) : "there is no way to the pages of screens";
        answers.push_back({reason.empty() ? Health::State::Healthy : Health::State::Unheard, reason});
    }
    return answers;
}

} // namespace

Output CreatePageOutput(const std::string& text) {
    PlayerOutput output;
    output.leadSilence = PagePlayer::kLead;
    output.needsWholeSound = true;
    output.make = [navigator = NavigatorOf(text)](PlayerOrder order) {
        return std::make_shared<PagePlayer>(std::move(order), navigator);
    };
    output.prepare = [navigator = NavigatorOf(text)](const OutputContext& context,
                                                     const WholeSound::File& file) {
        const auto sound = context.pages->Offer(file);
        if (sound)
            context.pages->Speakers()->Prepare(navigator, *sound);
    };
    return output;
}

std::vector<Health> AskPage(const std::vector<std::string>& texts, const OutputContext& context) {
    // In one piece, so that the promise goes with a task that is dropped.
    auto promise = std::make_shared<std::promise<std::vector<Health>>>();
    auto answer = promise->get_future();
    context.pages->Post([promise = std::move(promise), pages = context.pages, texts] {
        promise->set_value(HealthOf(texts, pages->Speakers()));
    });
    constexpr std::chrono::seconds kPatience{2}; // The engine may end meanwhile.
    if (answer.wait_for(kPatience) != std::future_status::ready)
        throw std::runtime_error("its output does not answer");
    return answer.get();
}

std::vector<FoundOutput> FindPages(const std::vector<std::string>& texts, const OutputContext& context) {
    const std::vector<Health> answers = AskPage(texts, context);
    std::vector<FoundOutput> pages;
    for (std::size_t i = 0; i < texts.size(); ++i)
        if (answers[i].state == Health::State::Healthy)
            pages.push_back({"page", "Screen " + texts[i], {"page", texts[i]}});
    return pages;
}

} // namespace controller::audio
