#include "controller/audio/pulse/Pausing.h"

#include <utility>

namespace controller::audio {

namespace {

constexpr const char* kPlayers = "mpris";

Borrowed Playing(const std::string& player) {
    return {kPlayers, player, "status", "Playing", "Paused"};
}

Pausing::Names NamesOf(const std::vector<Borrowed>& entries) {
    Pausing::Names names;
    names.reserve(entries.size());
    for (const Borrowed& entry : entries)
        names.push_back(entry.thing);
    return names;
}

} // namespace

Pausing::Pausing(Borrowings& borrowings, Players players)
    : m_borrowings(borrowings)
    , m_players(std::move(players)) {
    m_isHeld = !m_borrowings.Of(kPlayers).empty();
    Continue();
}

void Pausing::Hold() {
    ++m_holds;
    Continue();
}

void Pausing::Release() {
    --m_holds;
    Continue();
}

bool Pausing::HasGivenBack() const {
    return !m_isBusy && !m_isHeld;
}

/// One thing after the other: what is wanted may change while the players answer.
void Pausing::Continue() {
    const bool isWanted = m_holds > 0;
    if (m_isBusy || isWanted == m_isHeld)
        return;
    m_isBusy = true;
    m_isHeld = isWanted;
    if (!isWanted) {
        GiveBack();
        return;
    }
    m_players.list([this, isAlive = std::weak_ptr(m_isAlive)](const Names& playing) {
        if (!isAlive.expired())
            Take(playing);
    });
}

/// What calls `next`, unless this object is gone by then.
std::function<void()> Pausing::Then(void (Pausing::*next)()) {
    return [this, next, isAlive = std::weak_ptr(m_isAlive)] {
        if (!isAlive.expired())
            (this->*next)();
    };
}

void Pausing::Take(const Names& playing) {
    std::vector<Borrowed> entries;
    entries.reserve(playing.size());
    for (const std::string& player : playing)
        entries.push_back(Playing(player));
    const auto change = [this, playing, isAlive = std::weak_ptr(m_isAlive)] {
        if (!isAlive.expired())
            m_players.pause(playing, Then(&Pausing::Done));
    };
    if (entries.empty() || !m_borrowings.Take(entries, change))
        Done();
}

/// A player that is gone comes back as it likes.
void Pausing::GiveBack() {
    m_returning = m_borrowings.Of(kPlayers);
    m_players.play(NamesOf(m_returning), [this, isAlive = std::weak_ptr(m_isAlive)] {
        if (isAlive.expired())
            return;
        m_borrowings.Strike(std::exchange(m_returning, {}));
        Done();
    });
}

void Pausing::Done() {
    m_isBusy = false;
    Continue();
}

} // namespace controller::audio
