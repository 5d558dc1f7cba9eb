#include "controller/audio/Borrowings.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace controller::audio {

/// One change that waits for the disk, or for the end of the patience with it.
struct Borrowings::Waiting {
    Waiting(IScheduler& driver, std::function<void()> theChange)
        : change(std::move(theChange))
        , patience(driver, "what is borrowed of another program") {}

    std::function<void()> change;
    Alarm patience;
};

Borrowings::Borrowings(IScheduler& driver, Log& log, Write write, const std::vector<Borrowed>& left)
    : m_driver(driver)
    , m_log(log)
    , m_write(std::move(write)) {
    Put(left);
}

Borrowings::~Borrowings() = default;

/// Keeps them sorted; an entry that is given again takes the place of the former one.
void Borrowings::Put(const std::vector<Borrowed>& entries) {
    for (const Borrowed& entry : entries) {
        const auto place = std::lower_bound(
            m_entries.begin(), m_entries.end(), entry,
            [](const Borrowed& one, const Borrowed& other) { return one.Key() < other.Key(); });
        const bool isThere = place != m_entries.end() && place->Key() == entry.Key();
        if (isThere && entry.set.empty())
            m_entries.erase(place);
        else if (isThere)
            *place = entry;
        else if (!entry.set.empty())
            m_entries.insert(place, entry);
    }
}

bool Borrowings::Take(const std::vector<Borrowed>& entries, std::function<void()> change) {
    m_driverOnly.Assert();
    if (m_entries.size() + entries.size() > kMost) {
        m_log.Warning("There is no room to remember what " + std::to_string(entries.size()) +
                      " other programs had; they are left as they are");
        return false;
    }
    Put(entries);
    if (m_watch)
        m_watch(entries);
    const auto waiting = std::make_shared<Waiting>(m_driver, std::move(change));
    m_waiting.push_back(waiting);
    waiting->patience.Start(kPatience, [this, waiting = waiting.get()] { Go(waiting); });
    // Without this object nobody is left to change anything.
    m_write(entries, [this, waiting = std::weak_ptr(waiting)](const std::string& error) {
        if (const auto mine = waiting.lock())
            Written(mine.get(), error);
    });
    return true;
}

void Borrowings::Written(const Waiting* waiting, const std::string& error) {
    if (!error.empty())
        m_log.Error("What other programs had could not be written to the disk: " + error +
                    "; it is kept in memory and tried again");
    Go(waiting);
}

void Borrowings::Go(const Waiting* waiting) {
    const auto place = std::find_if(m_waiting.begin(), m_waiting.end(),
                                    [&](const auto& one) { return one.get() == waiting; });
    if (place == m_waiting.end())
        return;
    const auto gone = *place;
    m_waiting.erase(place);
    gone->patience.Stop();
    gone->change();
}

void Borrowings::Strike(const std::vector<Borrowed>& entries) {
    m_driverOnly.Assert();
    if (entries.empty())
        return;
    std::vector<Borrowed> struck = entries;
    for (Borrowed& entry : struck)
        entry.set.clear();
    Put(struck);
    if (m_watch)
        m_watch(struck);
    // What fails is tried again by whoever writes; and an entry too many is compared before it is believed.
    m_write(struck, [](const std::string& /*error*/) {});
}

std::vector<Borrowed> Borrowings::Of(const std::string& kind) const {
    m_driverOnly.Assert();
    std::vector<Borrowed> entries;
    std::copy_if(m_entries.begin(), m_entries.end(), std::back_inserter(entries),
                 [&](const Borrowed& entry) { return entry.kind == kind; });
    return entries;
}

} // namespace controller::audio
