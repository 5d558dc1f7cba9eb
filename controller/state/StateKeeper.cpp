#include "controller/state/StateKeeper.h"

#include "controller/state/StateSplice.h"

#include <exception>
#include <iterator>
#include <utility>

namespace controller {

StateKeeper::StateKeeper(Parts parts, std::string stored)
    : m_parts(std::move(parts))
    , m_wanted(std::make_shared<const std::string>(std::move(stored)))
    , m_soon(m_parts.scheduler, "looking whether the state has changed") {}

void StateKeeper::SaveSoon(std::uint32_t announcement) {
    m_inDoubt.insert(announcement);
    LookSoon();
}

void StateKeeper::SaveSoon() {
    m_areAllInDoubt = true;
    LookSoon();
}

void StateKeeper::LookSoon() {
    if (!m_soon.IsRunning())
        m_soon.Start(kSoon, [this] { Look(); });
}

void StateKeeper::Look() {
    const auto nobody = [](const std::string& /*error*/) {
    };
    const auto inDoubt = std::exchange(m_inDoubt, {});
    if (std::exchange(m_areAllInDoubt, false)) {
        Save(nobody);
        return;
    }
    for (const std::uint32_t announcement : inDoubt)
        Save(announcement, nobody);
}

StateKeeper::Text StateKeeper::WholeState() {
    auto state = std::make_shared<const std::string>(m_parts.state());
    m_isAgents = true; // what is done with it makes it the wanted one
    return state;
}

StateKeeper::Text StateKeeper::StateWith(std::uint32_t announcement) {
    const std::string element = m_parts.announcement(announcement);
    m_areIdsTheirOwn = m_areIdsTheirOwn && (element.empty() || CarriesId(element, announcement));
    if (!m_isAgents || !m_areIdsTheirOwn)
        return WholeState();
    auto state = SpliceAnnouncement(*m_wanted, announcement, element);
    return state ? std::make_shared<const std::string>(std::move(*state)) : WholeState();
}

void StateKeeper::Save(Done done) {
    Text state;
    try {
        state = WholeState();
    } catch (const std::exception& error) {
        done(error.what());
        return;
    }
    Save(std::move(state), std::move(done));
}

void StateKeeper::Save(std::uint32_t announcement, Done done) {
    Text state;
    try {
        state = StateWith(announcement);
    } catch (const std::exception& error) {
        done(error.what());
        return;
    }
    Save(std::move(state), std::move(done));
}

void StateKeeper::Save(Text state, Done done) {
    const bool isNew = *state != *m_wanted;
    if (!isNew && m_isOnDisk) {
        done("");
        return;
    }
    // What failed is tried again now, and not only when the store would do it by itself.
    if (isNew || !m_failure.empty()) {
        m_wanted = std::move(state);
        m_isOnDisk = false;
        m_failure.clear();
        m_parts.store.WriteAgentState(
            m_wanted, [this, number = m_number + 1](const std::string& error) { Written(number, error); });
        ++m_number;
    }
    m_waiting.emplace_back(m_number, std::move(done));
}

void StateKeeper::Written(std::uint64_t number, const std::string& error) {
    const bool isNewest = number == m_number;
    if (error.empty()) {
        m_isOnDisk = isNewest;
        m_failure.clear();
        m_parts.feed.Publish(events::StateSaved{});
        Tell(number, "");
        return;
    }
    // When a newer text is on its way, those who wait for this one learn what became of the newer one.
    if (!isNewest)
        return;
    m_failure = error;
    m_parts.log.Error("The announcements could not be written to the disk: " + error +
                      "; they are kept in memory and written as soon as it is possible");
    m_parts.feed.Publish(events::StateNotSaved{error});
    Tell(number, error);
}

void StateKeeper::Tell(std::uint64_t upTo, const std::string& error) {
    std::vector<std::pair<std::uint64_t, Done>> later;
    for (auto& [number, done] : std::exchange(m_waiting, {})) {
        if (number <= upTo)
            done(error);
        else
            later.emplace_back(number, std::move(done));
    }
    // What somebody began to wait for while being told stands in m_waiting already, and is newer.
    m_waiting.insert(m_waiting.begin(), std::make_move_iterator(later.begin()),
                     std::make_move_iterator(later.end()));
}

} // namespace controller
