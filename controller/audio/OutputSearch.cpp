#include "controller/audio/OutputSearch.h"

#include <utility>

namespace controller::audio {

OutputSearch::OutputSearch(IScheduler& driver, std::vector<std::string> kinds, Look look)
    : m_kinds(std::move(kinds))
    , m_look(std::move(look))
    , m_patience(driver, "the end of a search for outputs") {}

void OutputSearch::Find(Found found) {
    m_waiting.push_back(std::move(found));
    if (m_waiting.size() > 1)
        return;
    m_found.clear();
    ++m_search;
    m_patience.Start(kPatience, [this] { Finish(); });
    for (const std::string& kind : m_kinds)
        if (m_looking.insert(kind).second)
            m_look(kind, [this, kind, search = m_search](const std::vector<FoundOutput>& places) {
                Answered(kind, search, places);
            });
}

void OutputSearch::Answered(const std::string& kind,
                            unsigned search,
                            const std::vector<FoundOutput>& places) {
    m_looking.erase(kind);
    if (search != m_search || m_waiting.empty())
        return; // too late
    m_found[kind] = places;
    if (m_looking.empty())
        Finish();
}

void OutputSearch::Finish() {
    m_patience.Stop();
    std::vector<FoundOutput> all;
    for (const std::string& kind : m_kinds)
        all.insert(all.end(), m_found[kind].begin(), m_found[kind].end());
    for (const Found& found : std::exchange(m_waiting, {}))
        found(all);
}

} // namespace controller::audio
