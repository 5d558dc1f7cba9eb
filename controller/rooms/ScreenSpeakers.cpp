#include "controller/rooms/ScreenSpeakers.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace controller {

ScreenSpeakers::ScreenSpeakers(const std::set<std::uint32_t>& navigators) {
    for (const std::uint32_t navigator : navigators)
        m_speakers.try_emplace(navigator);
}

const ScreenSpeakers::Pages::value_type* ScreenSpeakers::Newest(std::uint32_t navigator) const {
    const auto speaker = m_speakers.find(navigator);
    if (speaker == m_speakers.end() || speaker->second.empty())
        return nullptr;
    const auto newest = std::max_element(
        speaker->second.begin(), speaker->second.end(),
        [](const auto& one, const auto& other) { return one.second.armed < other.second.armed; });
    return newest->second.armed != 0 ? &*newest : nullptr;
}

std::string ScreenSpeakers::WhyNot(std::uint32_t navigator) const {
    m_driverOnly.Assert();
    const auto speaker = m_speakers.find(navigator);
    if (speaker == m_speakers.end() || speaker->second.empty())
        return "the page of screen " + std::to_string(navigator) + " is not open anywhere";
    if (Newest(navigator) == nullptr)
        return "the page of screen " + std::to_string(navigator) +
               " waits for somebody to tap on it once, before which its browser plays nothing";
    return "";
}

ScreenSpeakers::Pages* ScreenSpeakers::PagesOf(std::uint32_t navigator) {
    m_driverOnly.Assert();
    const auto speaker = m_speakers.find(navigator);
    return speaker != m_speakers.end() ? &speaker->second : nullptr;
}

void ScreenSpeakers::Open(std::uint32_t navigator, PageId page, Send send) {
    Pages* const pages = PagesOf(navigator);
    if (pages == nullptr)
        return;
    pages->insert_or_assign(page, Page{std::move(send)});
    TellChange();
}

void ScreenSpeakers::Close(std::uint32_t navigator, PageId page) {
    Pages* const pages = PagesOf(navigator);
    if (pages == nullptr || pages->erase(page) == 0)
        return;
    TellAll(page, News::Gone);
    TellChange();
}

void ScreenSpeakers::SetArmed(std::uint32_t navigator, PageId page, bool isArmed) {
    Pages* const pages = PagesOf(navigator);
    const auto place = pages != nullptr ? pages->find(page) : Pages::iterator();
    if (pages == nullptr || place == pages->end())
        return;
    place->second.armed = isArmed ? ++m_lastArmed : 0;
    if (!isArmed)
        TellAll(page, News::Silenced);
    TellChange();
}

void ScreenSpeakers::TellChange() const {
    if (m_onChange)
        m_onChange();
}

void ScreenSpeakers::TellAll(PageId page, News news) {
    std::vector<std::uint64_t> numbers;
    for (const auto& [number, playing] : m_plays)
        if (playing.page == page)
            numbers.push_back(number);
    for (const std::uint64_t number : numbers)
        TellOne(number, news);
}

/// Whoever is told may end this play, and others.
void ScreenSpeakers::TellOne(std::uint64_t play, News news) {
    const auto place = m_plays.find(play);
    if (place == m_plays.end())
        return;
    const OnNews listener = place->second.onNews;
    listener(news);
}

void ScreenSpeakers::Hear(std::uint32_t navigator, PageId page, std::uint64_t play, News news) {
    m_driverOnly.Assert();
    const auto place = m_plays.find(play);
    if (place != m_plays.end() && place->second.navigator == navigator && place->second.page == page)
        TellOne(play, news);
}

void ScreenSpeakers::Prepare(std::uint32_t navigator, const Sound& sound) {
    m_driverOnly.Assert();
    if (const auto* const page = Newest(navigator))
        page->second.send(Fetch{sound});
}

std::uint64_t
ScreenSpeakers::Begin(std::uint32_t navigator, const Sound& sound, Time at, double gain, OnNews onNews) {
    m_driverOnly.Assert();
    const auto* const page = Newest(navigator);
    if (page == nullptr)
        return 0;
    m_plays.emplace(++m_lastPlay, Playing{navigator, page->first, std::move(onNews)});
    page->second.send(Play{m_lastPlay, sound, at, gain});
    return m_lastPlay;
}

void ScreenSpeakers::Tell(std::uint64_t play, const Order& order) {
    m_driverOnly.Assert();
    const auto playing = m_plays.find(play);
    if (playing == m_plays.end())
        return;
    const Pages& pages = m_speakers.at(playing->second.navigator);
    const auto page = pages.find(playing->second.page);
    if (page != pages.end())
        page->second.send(order);
}

void ScreenSpeakers::SetGain(std::uint64_t play, double gain) {
    Tell(play, Gain{play, gain});
}

void ScreenSpeakers::End(std::uint64_t play) {
    Tell(play, Stop{play});
    m_plays.erase(play);
}

} // namespace controller
