#include "controller/audio/HealthWatch.h"

#include <algorithm>
#include <utility>

namespace controller::audio {

HealthWatch::Kind::Kind(IScheduler& driver)
    : next(driver, "asking whether rooms can be heard")
    , patience(driver, "whether rooms can be heard is not answered") {}

HealthWatch::HealthWatch(const std::vector<Room>& rooms, Parts parts) : m_parts(std::move(parts)) {
    for (const Room& room : rooms) {
        Kind& kind = m_kinds.try_emplace(room.output.kind, m_parts.driver).first->second;
        kind.texts.push_back(room.output.text);
        Place place;
        place.room = room.id;
        place.isAnswering = FactsOf(room.output).isAnswering;
        kind.places.push_back(std::move(place));
    }
    for (auto& [name, kind] : m_kinds)
        for (Place& place : kind.places)
            m_places[place.room] = &place;
}

void HealthWatch::Begin() {
    for (const auto& [name, kind] : m_kinds)
        Ask(name);
}

void HealthWatch::LookAgain(const std::string& kind) {
    const auto known = m_kinds.find(kind);
    if (known == m_kinds.end())
        return;
    known->second.isNews = true;
    Ask(kind);
}

void HealthWatch::Hold() {
    m_isHeld = true;
}

void HealthWatch::Resume() {
    m_isHeld = false;
    for (auto& [name, kind] : m_kinds)
        if (std::exchange(kind.isDue, false))
            Ask(name);
}

void HealthWatch::Ask(const std::string& name) {
    Kind& kind = m_kinds.at(name);
    if (m_isHeld || kind.isAsking) {
        kind.isDue = true;
        return;
    }
    kind.next.Stop();
    kind.isAsking = true;
    const bool isAsked =
        m_parts.ask(name, kind.texts, [this, name, &kind](const std::vector<Health>& answers) {
            kind.isAsking = false;
            kind.patience.Stop();
            Answered(kind, answers);
            // What has changed meanwhile may not be in it.
            if (!m_isHeld && std::exchange(kind.isDue, false))
                Ask(name);
            else
                kind.next.Start(std::all_of(kind.places.begin(), kind.places.end(),
                                            [](const Place& place) { return place.now.reason.empty(); })
                                    ? kCalm
                                    : kWorried,
                                [this, name] { Ask(name); });
        });
    if (!isAsked) {
        kind.isAsking = false;
        return;
    }
    kind.patience.Start(kPatience, [this, &kind] {
        Answered(kind, std::vector<Health>(kind.places.size(), {Health::State::Unheard, kNoAnswer}));
    });
}

void HealthWatch::Answered(Kind& kind, const std::vector<Health>& answers) {
    if (m_isHeld)
        kind.isDue = true;
    else
        Count(kind, answers);
}

void HealthWatch::Count(Kind& kind, const std::vector<Health>& answers) {
    const bool isNews = kind.isNews;
    kind.isNews = isNews && kind.isDue; // The next answer is the news, then.
    const std::size_t count = std::min(answers.size(), kind.places.size());
    for (std::size_t index = 0; index < count; ++index) {
        Place& place = kind.places[index];
        const bool isSame = place.asked == answers[index];
        place.asked = answers[index];
        // Who says what it said before knows nothing of why the announcement failed.
        if (place.hasFailed && isSame && !isNews)
            continue;
        place.hasFailed = false;
        Set(place, answers[index]);
    }
}

void HealthWatch::Heard(std::uint32_t room) {
    Place* const place = Find(room);
    const bool isSilentByWish =
        place != nullptr && place->now.state == Health::State::Silent && place->now.reason.empty();
    if (place == nullptr || isSilentByWish)
        return;
    place->hasFailed = false;
    Set(*place, {place->isAnswering ? Health::State::Healthy : Health::State::Unknown, ""});
}

void HealthWatch::NotHeard(std::uint32_t room, const Health& health) {
    Place* const place = Find(room);
    if (place == nullptr)
        return;
    place->hasFailed = health.state == Health::State::Unheard;
    const bool isGuessed = health.state == Health::State::Healthy && !place->isAnswering;
    Set(*place, isGuessed ? Health{} : health);
}

void HealthWatch::Set(Place& place, const Health& health) {
    if (place.now == health)
        return;
    place.now = health;
    m_parts.changed(place.room, health);
}

HealthWatch::Place* HealthWatch::Find(std::uint32_t room) const {
    const auto place = m_places.find(room);
    return place != m_places.end() ? place->second : nullptr;
}

} // namespace controller::audio
