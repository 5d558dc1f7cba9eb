#include "controller/audio/snapcast/SnapcastLoans.h"

#include "controller/audio/snapcast/SnapcastEntries.h"
#include "controller/audio/snapcast/SnapcastHealth.h"

#include <algorithm>
#include <utility>

namespace controller::audio {

namespace entries = snapcast_entries;

SnapcastLoans::Held::Held(IScheduler& driver, Wish theWish, Listener theListener)
    : wish(std::move(theWish))
    , listener(std::move(theListener))
    , patience(driver, "a room of a Snapcast server") {}

SnapcastLoans::SnapcastLoans(
    IScheduler& driver, Log& log, Borrowings& borrowings, ISnapcastServer& server, std::string name)
    : m_driver(driver)
    , m_log(log)
    , m_borrowings(borrowings)
    , m_server(server)
    , m_name(std::move(name))
    , m_settled(m_driver, "giving a room back to a Snapcast server")
    , m_retry(m_driver, "looking for a Snapcast server") {
    if (!HasGivenBack())
        m_server.Look();
}

unsigned SnapcastLoans::Hold(Wish wish, Listener listener) {
    const unsigned number = ++m_lastHold;
    m_attempts.erase(wish.client);
    auto& held =
        *m_holds.emplace(number, std::make_unique<Held>(m_driver, std::move(wish), std::move(listener)))
             .first->second;
    held.patience.Start(kAnswer, [this, number] {
        Fail(number, RoomTrouble::Kind::Hanging,
             m_state.isThere ? "the Snapcast server " + m_name + " does not do as it is told"
                             : "the Snapcast server " + m_name + " does not answer");
    });
    m_server.Look();
    return number;
}

void SnapcastLoans::Release(unsigned hold, bool isCut) {
    const auto place = m_holds.find(hold);
    if (place == m_holds.end())
        return;
    const std::string client = place->second->wish.client;
    m_holds.erase(place);
    if (isCut && !IsHeld(client))
        Cut(client);
    // What somebody has changed meanwhile is theirs: looked at first.
    m_server.Look();
}

void SnapcastLoans::SetVolume(unsigned hold, unsigned percent) {
    const auto place = m_holds.find(hold);
    if (place == m_holds.end())
        return;
    Held& held = *place->second;
    const SnapcastVolume former{std::exchange(held.wish.percent, percent), false};
    if (!held.isReady || former.percent == percent)
        return;
    const std::string& client = held.wish.client;
    Borrowed entry{entries::kKind, entries::ThingOf(m_name, client), entries::kVolume,
                   entries::ValueOf(entries::kVolume, m_state, client), entries::TextOf(former)};
    for (const Borrowed& known : EntriesOf(client))
        entry = known.property == entry.property ? known : entry;
    if (!entries::IsOurs(entry, m_state))
        return; // Somebody else has set it since.
    const auto change = [this, hold, client, percent, isAlive = std::weak_ptr(m_isAlive)] {
        if (!isAlive.expired() && m_holds.count(hold) != 0)
            m_server.SetVolume(client, {percent, false},
                               [](const std::string& /*error*/) {}); // It stays as loud as it is.
    };
    (void)m_borrowings.Take({entries::WithNext(entry, entries::TextOf({percent, false}))},
                            change); // As above.
}

void SnapcastLoans::OnState(const SnapcastState& state) {
    m_state = state;
    if (!state.isThere) {
        m_changing.clear();
        m_returning.clear();
        FailAll(state);
        if (!HasGivenBack())
            m_retry.Start(kRetry, [this] { m_server.Look(); });
        return;
    }
    m_retry.Stop();
    std::vector<unsigned> numbers;
    numbers.reserve(m_holds.size());
    for (const auto& [number, held] : m_holds)
        numbers.push_back(number);
    for (const unsigned number : numbers)
        if (m_holds.count(number) != 0)
            Step(number);
    GiveBack();
}

void SnapcastLoans::FailAll(const SnapcastState& state) {
    while (!m_holds.empty())
        Fail(m_holds.begin()->first,
             state.isHanging ? RoomTrouble::Kind::Hanging : RoomTrouble::Kind::Refused,
             "the Snapcast server " + m_name + " " + state.reason);
}

void SnapcastLoans::Fail(unsigned hold, RoomTrouble::Kind kind, const std::string& reason) {
    const auto held = m_holds.extract(hold);
    const bool wasReady = held.mapped()->isReady;
    m_server.Look();
    held.mapped()->listener.failed(
        wasReady && kind == RoomTrouble::Kind::Refused ? RoomTrouble::Kind::Failed : kind, reason);
}

/// The next thing that is to be done for it, now that it is known how things stand.
void SnapcastLoans::Step(unsigned hold) {
    Held& held = *m_holds.at(hold);
    const std::string reason = WhyNotHeard(m_state, m_name, held.wish.client, held.wish.stream);
    if (!reason.empty())
        Fail(hold, RoomTrouble::Kind::Refused, reason);
    else if (held.isReady || held.isAsking || IsUnderWay(held.wish.client))
        return;
    else if (held.writtenPercent == held.wish.percent)
        Change(hold);
    else
        Write(hold);
}

std::vector<std::string> SnapcastLoans::NotHeld(const SnapcastGroup& group) const {
    std::vector<std::string> members = group.Members();
    members.erase(std::remove_if(members.begin(), members.end(),
                                 [&](const std::string& client) { return IsHeld(client); }),
                  members.end());
    return members;
}

bool SnapcastLoans::IsShared(const SnapcastGroup& group) const {
    return !NotHeld(group).empty();
}

/// What is to be changed of the client, with what an earlier announcement has not given back yet.
std::vector<Borrowed> SnapcastLoans::EntriesFor(const Wish& wish) const {
    const SnapcastGroup& group = *m_state.GroupOf(wish.client);
    std::vector<Borrowed> wanted;
    const auto want = [&](const char* property, const std::string& set) {
        const std::string value = entries::ValueOf(property, m_state, wish.client);
        Borrowed entry{entries::kKind, entries::ThingOf(m_name, wish.client), property, value, ""};
        for (const Borrowed& former : EntriesOf(wish.client))
            if (former.property == property && entries::IsOurs(former, m_state))
                entry = former;
        if (value != set || !entry.set.empty())
            wanted.push_back(entries::WithNext(entry, set));
    };
    want(entries::kVolume, entries::TextOf({wish.percent, false}));
    want(entries::kStream, wish.stream);
    if (IsShared(group))
        want(entries::kGroup, "alone");
    else
        want(entries::kMute, "heard");
    return wanted;
}

void SnapcastLoans::Write(unsigned hold) {
    Held& held = *m_holds.at(hold);
    held.isAsking = true;
    const auto change = [this, hold, percent = held.wish.percent, isAlive = std::weak_ptr(m_isAlive)] {
        const bool isThere = !isAlive.expired() && m_holds.count(hold) != 0;
        if (!isThere)
            return;
        m_holds.at(hold)->writtenPercent = percent;
        m_holds.at(hold)->isAsking = false;
        m_server.Look();
    };
    if (!m_borrowings.Take(EntriesFor(held.wish), change))
        Fail(hold, RoomTrouble::Kind::Refused, "there is no room to remember what its server had");
}

/// One thing after the other: what a group is called that a client gets is known when it has it.
void SnapcastLoans::Change(unsigned hold) {
    Held& held = *m_holds.at(hold);
    const Wish& wish = held.wish;
    const SnapcastGroup& group = *m_state.GroupOf(wish.client);
    const SnapcastVolume volume = m_state.VolumeOf(wish.client);
    held.isAsking = true;
    if (IsShared(group))
        return m_server.SetClients(group.id, NotHeld(group), OnAnswer(hold, "the client out of its group"));
    if (group.isMuted)
        return m_server.SetMute(group.id, false, OnAnswer(hold, "the group to be heard"));
    if (group.stream != wish.stream)
        return m_server.SetStream(group.id, wish.stream, OnAnswer(hold, "the stream"));
    if (volume.percent != wish.percent || volume.isMuted)
        return m_server.SetVolume(wish.client, {wish.percent, false}, OnAnswer(hold, "the volume"));
    held.isReady = true;
    held.patience.Stop();
    held.listener.ready(m_state);
}

/// What was told may be done although its hold is gone: only a state from then on shows what is to be given
/// back.
ISnapcastServer::Answered SnapcastLoans::OnAnswer(unsigned hold, const std::string& what) {
    const std::string client = m_holds.at(hold)->wish.client;
    m_changing.insert(client);
    return [this, hold, client, what, isAlive = std::weak_ptr(m_isAlive)](const std::string& error) {
        if (isAlive.expired())
            return;
        if (const auto place = m_changing.find(client); place != m_changing.end())
            m_changing.erase(place);
        const bool isHeld = m_holds.count(hold) != 0;
        if (isHeld)
            m_holds.at(hold)->isAsking = false;
        if (error.empty() || !isHeld)
            m_server.Look();
        else
            Fail(hold, RoomTrouble::Kind::Refused,
                 "the Snapcast server " + m_name + " refuses to set " + what + ": " + error);
    };
}

} // namespace controller::audio
