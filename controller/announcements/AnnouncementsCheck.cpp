// How the announcements are held against what the agent has: at the start, after playing, and when idle.
#include "controller/announcements/AnnouncementXml.h"
#include "controller/announcements/Announcements.h"
#include "controller/announcements/OwnIds.h"
#include "controller/state/StateText.h"
#include "framework/XmlText.h"
#include "host/ForEachChild.h"
#include "host/VqXML.h"

#include <limits>
#include <utility>

namespace controller {

namespace {

/// Between two looks of a round.
constexpr std::chrono::milliseconds kPause{100};

/// So many ids behind a known one are looked at: the agent numbers on from the highest.
constexpr std::uint32_t kFarthest = 1000;
constexpr std::uint32_t kLastId = std::numeric_limits<std::uint32_t>::max();

} // namespace

void Announcements::Begin(const AnnouncementRows& rows, bool areKept) {
    const AnnouncementRows given = WithOwnIds(rows);
    m_parts.agent.Start(state_text::ForAgent(given));
    std::map<std::int64_t, const AnnouncementRow*> byId;
    for (const AnnouncementRow& row : given)
        byId.emplace(row.key, &row);
    std::map<std::int64_t, const AnnouncementRow*> stored;
    if (areKept)
        for (const AnnouncementRow& row : rows)
            stored.emplace(row.key, &row);
    AnnouncementRows changes;
    const AgentAnswer answer = m_parts.agent.Ask("get_announcements", {});
    if (answer.element.Get() != nullptr)
        ForEachChild(*answer.element, [&](VqXML::INode& element) {
            auto announcement = announcement_xml::FromXml(element);
            const std::uint32_t id = announcement.id;
            const auto from = byId.find(id);
            const std::string houseText = from != byId.end() ? from->second->house : "";
            const HouseAddition house = announcement_xml::HouseFromXml(houseText);
            (void)Put(id, std::move(announcement), &house);
            AnnouncementRow row = RowOf(id);
            const auto place = stored.find(id);
            if (place == stored.end() || place->second->xml != row.xml || place->second->house != houseText)
                changes.push_back(std::move(row));
            stored.erase(id);
        });
    for (const auto& [key, row] : stored)
        changes.push_back({key, "", ""});
    if (!changes.empty() || !areKept)
        m_parts.store.WriteAnnouncements(std::move(changes), Nobody);
    CheckIn(kRound);
}

void Announcements::Take(const Event& event) {
    if (const auto* started = std::get_if<events::AnnouncementStarted>(&event.data))
        m_playing = Find(started->announcement);
    const auto* const ended = std::get_if<events::AnnouncementEnded>(&event.data);
    if (ended != nullptr)
        m_over.insert(ended->announcement);
    // Not now: the agent may be in the middle of it.
    if (ended != nullptr || std::holds_alternative<events::PopupShown>(event.data))
        m_played.Start(std::chrono::seconds(0), [this] { TakePlayed(); });
}

void Announcements::TakePlayed() {
    const auto over = std::exchange(m_over, {});
    const auto asked = m_asked;
    for (const std::uint32_t id : asked) {
        const AnnouncementPointer announcement = Find(id);
        if (announcement->video.timeoutMs == 0 && TakeAnew(id) != Change::None)
            Write(id, Nobody);
        if (over.count(id) != 0)
            m_asked.erase(id);
    }
}

void Announcements::StateInvalidated() {
    m_driverOnly.Assert();
    if (!m_isAsking)
        CheckIn(kSoon);
}

/// Begins a round.
void Announcements::CheckIn(IScheduler::Duration delay) {
    m_checked = 0;
    m_check.Start(delay, [this] { CheckSome(); });
}

/// As many as two milliseconds allow; and, as nobody else would find it, whatever the agent has behind each.
void Announcements::CheckSome() {
    const auto begin = m_parts.scheduler.Now();
    while (m_parts.scheduler.Now() - begin < std::chrono::milliseconds(2)) {
        const auto next = m_all.upper_bound(m_checked);
        const std::uint32_t known = next != m_all.begin() ? std::prev(next)->first : 0;
        if (m_checked - known < kFarthest && m_checked < kLastId) {
            Mend(++m_checked);
        } else if (next != m_all.end()) {
            m_checked = next->first;
            Mend(m_checked);
        } else {
            CheckIn(kRound);
            return;
        }
    }
    m_check.Start(kPause, [this] { CheckSome(); });
}

void Announcements::Mend(std::uint32_t id) {
    if (m_asked.count(id) != 0)
        return; // its timeout may differ, for a moment
    const Change change = TakeAnew(id);
    if (change == Change::None)
        return;
    m_parts.log.Error("Announcement " + std::to_string(id) +
                      " was not what the agent has, which is a mistake of this program; it is now");
    Tell(change, id, IsPassing(id));
    Write(id, Nobody);
}

void Announcements::Check() {
    m_driverOnly.Assert();
    TakePlayed();
    const AgentAnswer answer = m_parts.agent.Request("get_announcements", {});
    if (answer.kind != AgentAnswer::Kind::Reply || answer.text == announcement_xml::ToXml(WithPassing()))
        return;
    std::set<std::uint32_t> ids;
    for (const auto& [id, announcement] : m_all)
        ids.insert(id);
    ForEachChild(*answer.element,
                 [&](VqXML::INode& element) { ids.insert(element.GetChildValueAsULong("id")); });
    for (const std::uint32_t id : ids)
        Mend(id);
}

} // namespace controller
