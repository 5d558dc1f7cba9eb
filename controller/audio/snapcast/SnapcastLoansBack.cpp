// How clients get back what they had.
#include "controller/audio/snapcast/SnapcastEntries.h"
#include "controller/audio/snapcast/SnapcastLoans.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

namespace controller::audio {

namespace entries = snapcast_entries;

namespace {

/// Music that goes on shall not do so at the announcement's volume, nor in a group that it did not play in.
constexpr std::array kOrderBack{entries::kVolume, entries::kMute, entries::kStream, entries::kGroup};

void IgnoreAnswer(const std::string& /*error*/) {}

} // namespace

std::vector<Borrowed> SnapcastLoans::Entries() const {
    std::vector<Borrowed> all = m_borrowings.Of(entries::kKind);
    all.erase(std::remove_if(all.begin(), all.end(),
                             [&](const Borrowed& entry) { return entries::ServerOf(entry) != m_name; }),
              all.end());
    return all;
}

std::vector<Borrowed> SnapcastLoans::EntriesOf(const std::string& client) const {
    const std::vector<Borrowed> all = Entries();
    std::vector<Borrowed> ordered;
    for (const char* property : kOrderBack)
        std::copy_if(all.begin(), all.end(), std::back_inserter(ordered), [&](const Borrowed& entry) {
            return entry.property == property && entries::ClientOf(entry) == client;
        });
    return ordered;
}

bool SnapcastLoans::IsHeld(const std::string& client) const {
    return std::any_of(m_holds.begin(), m_holds.end(),
                       [&](const auto& hold) { return hold.second->wish.client == client; });
}

/// What is known of the client may be about to change.
bool SnapcastLoans::IsUnderWay(const std::string& client) const {
    return m_changing.count(client) != 0 || m_returning.count(client) != 0;
}

/// Whose group cannot be given another stream yet.
bool SnapcastLoans::IsBesideHeld(const std::string& client) const {
    const SnapcastGroup* const group = m_state.GroupOf(client);
    return group != nullptr && NotHeld(*group).size() < group->clients.size();
}

void SnapcastLoans::GiveBack() {
    std::set<std::string> clients;
    for (const Borrowed& entry : Entries())
        clients.insert(entries::ClientOf(entry));
    for (const std::string& client : clients)
        if (!IsBesideHeld(client) && m_cut.count(client) == 0 && !IsUnderWay(client))
            GiveBackOf(client);
}

/// What is not as it was set any more is struck; of the rest that comes when it is seen to be back.
void SnapcastLoans::GiveBackOf(const std::string& client) {
    std::vector<Borrowed> struck;
    const bool isInVain = m_attempts[client].count >= kMostAttempts;
    for (const Borrowed& entry : EntriesOf(client)) {
        const bool isOurs = entries::IsOurs(entry, m_state);
        const bool isGone =
            (entry.property == entries::kStream && m_state.FindStream(entry.before) == nullptr) ||
            (entry.property == entries::kGroup && m_state.FindGroup(entry.before) == nullptr);
        if (!isOurs || isGone || isInVain)
            struck.push_back(entry);
        else
            GiveBack(entry);
    }
    if (isInVain)
        m_log.Warning("The Snapcast server " + m_name + " does not take back what the client \"" + client +
                      "\" had; it is left as it is");
    if (isInVain || m_returning.count(client) == 0)
        m_attempts.erase(client);
    m_borrowings.Strike(struck);
}

void SnapcastLoans::GiveBack(const Borrowed& entry) {
    const std::string client = entries::ClientOf(entry);
    const SnapcastGroup& group = *m_state.GroupOf(client);
    ++m_returning[client].calls;
    const auto answered = [this, client, isAlive = std::weak_ptr(m_isAlive)](const std::string& error) {
        if (!isAlive.expired())
            OnGivenBack(client, error);
    };
    if (entry.property == entries::kVolume)
        return m_server.SetVolume(client, entries::VolumeOf(entry.before), answered);
    if (entry.property == entries::kMute)
        return m_server.SetMute(group.id, true, answered);
    if (entry.property == entries::kStream)
        return m_server.SetStream(group.id, entry.before, answered);
    std::vector<std::string> members = m_state.FindGroup(entry.before)->Members();
    members.push_back(client);
    m_server.SetClients(entry.before, members, answered);
}

void SnapcastLoans::OnGivenBack(const std::string& client, const std::string& error) {
    const auto place = m_returning.find(client);
    if (place == m_returning.end())
        return;
    place->second.isRefused = place->second.isRefused || !error.empty();
    if (--place->second.calls > 0)
        return;
    const bool isRefused = place->second.isRefused;
    m_returning.erase(place);
    Attempts& attempts = m_attempts[client];
    ++attempts.count;
    // One that says again that it is done, and is seen not to be, would be told for ever without a pause.
    if (!isRefused && !std::exchange(attempts.isSaidDone, true))
        m_server.Look();
    else
        m_retry.Start(kRetry, [this] { m_server.Look(); });
}

/// The client plays what it has of a stream until it gets another; its volume waits until then, or a stopped
/// announcement would end as loud as the music.
void SnapcastLoans::Cut(const std::string& client) {
    const SnapcastGroup* const group = m_state.GroupOf(client);
    if (!m_state.isThere || group == nullptr || IsBesideHeld(client))
        return;
    for (const Borrowed& entry : EntriesOf(client))
        if (entry.property == entries::kStream && entries::IsOurs(entry, m_state))
            m_server.SetStream(group->id, entry.before, IgnoreAnswer); // It is compared later.
    for (const std::string& member : group->Members())
        m_cut.insert(member);
    m_settled.Start(kCut, [this] {
        m_cut.clear();
        m_server.Look();
    });
}

void SnapcastLoans::GiveBackNow() {
    m_holds.clear();
    m_cut.clear();
    if (m_state.isThere)
        GiveBack();
}

} // namespace controller::audio
