#include "controller/PageSpeakers.h"

#include "controller/driver/Text.h"

#include <limits>
#include <utility>

namespace controller {

namespace {

audio::PageNews PageNewsOf(ScreenSpeakers::News news) {
    switch (news) {
    case ScreenSpeakers::News::Started:
        return audio::PageNews::Started;
    case ScreenSpeakers::News::Late:
        return audio::PageNews::Late;
    case ScreenSpeakers::News::Ended:
        return audio::PageNews::Ended;
    case ScreenSpeakers::News::Failed:
        return audio::PageNews::Failed;
    case ScreenSpeakers::News::Silenced:
        return audio::PageNews::Silenced;
    case ScreenSpeakers::News::Gone:
        break;
    }
    return audio::PageNews::Gone;
}

} // namespace

void PageSpeakers::Prepare(std::uint32_t navigator, const audio::PageSound& sound) {
    m_speakers.Prepare(navigator, {sound.number, sound.path});
}

std::uint64_t PageSpeakers::Begin(
    std::uint32_t navigator, const audio::PageSound& sound, Time at, double gain, OnNews onNews) {
    return m_speakers.Begin(
        navigator, {sound.number, sound.path}, at, gain,
        [onNews = std::move(onNews)](ScreenSpeakers::News news) { onNews(PageNewsOf(news)); });
}

std::set<std::uint32_t> PagesThatPlay(const House& house) {
    std::set<std::uint32_t> navigators;
    for (const House::Room& room : house.rooms) {
        const auto navigator =
            room.output.kind == "page"
                ? ReadNumber<std::uint32_t>(room.output.text, 1, std::numeric_limits<std::uint32_t>::max())
                : std::nullopt;
        if (navigator)
            navigators.insert(*navigator);
    }
    return navigators;
}

} // namespace controller
