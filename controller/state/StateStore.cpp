#include "controller/state/StateStore.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace controller {

StateStore::StateStore(std::unique_ptr<StateDatabase> database, IScheduler& driver)
    : m_driver(driver)
    , m_retry(driver, "writing to the disk again")
    , m_database(std::move(database)) {}

StateStore::~StateStore() = default;

void StateStore::WriteAgentState(std::shared_ptr<const std::string> xml, WriteDone done) {
    Submit({"agent", [xml = std::move(xml)](StateDatabase& database) { database.WriteAgentState(xml); },
            std::move(done)});
}

void StateStore::WriteTaken(const JournalEntry& entry, unsigned volume, WriteDone done) {
    Submit({"room " + std::to_string(entry.room),
            [entry, volume](StateDatabase& database) {
                database.WriteJournal(entry);
                database.WriteVolume(entry.room, volume);
            },
            std::move(done)});
}

void StateStore::WriteFree(std::uint32_t room, unsigned volume, WriteDone done) {
    Submit({"room " + std::to_string(room),
            [room, volume](StateDatabase& database) {
                database.StrikeJournal(room);
                database.WriteVolume(room, volume);
            },
            std::move(done)});
}

void StateStore::WriteVariable(std::uint32_t device,
                               std::uint32_t variable,
                               const std::string& value,
                               WriteDone done) {
    Submit({"variable " + std::to_string(device) + " " + std::to_string(variable),
            [=](StateDatabase& database) { database.WriteVariable(device, variable, value); },
            std::move(done)});
}

void StateStore::AddHistory(const HistoryEntry& entry) {
    // Every entry is a subject of its own: none makes another needless.
    Submit({"history " + std::to_string(m_lastNumber + 1),
            [entry](StateDatabase& database) { database.AddHistory(entry); },
            [](const std::string& /*error*/) {
            }});
}

void StateStore::ReadHistory(std::size_t newest, HistoryDone done) {
    ReadHistory(newest, std::numeric_limits<std::int64_t>::max(), std::move(done));
}

void StateStore::ReadHistory(std::size_t newest, std::int64_t before, HistoryDone done) {
    m_worker.Submit([this, newest, before, done = std::move(done)]() mutable {
        std::vector<HistoryEntry> entries;
        std::string error;
        try {
            entries = m_database->ReadHistory(newest, before);
        } catch (const std::exception& failure) {
            error = failure.what();
        }
        m_driver.Post("reading the history", [entries = std::move(entries), error, done = std::move(done)] {
            done(entries, error);
        });
    });
}

void StateStore::WhenTried(std::function<void()> callback) {
    m_worker.Submit([this, callback = std::move(callback)]() mutable {
        m_driver.Post("the end of writing", std::move(callback));
    });
}

void StateStore::Submit(Write write) {
    const std::uint64_t number = ++m_lastNumber;
    m_newest[write.subject] = number;
    // The worker keeps nothing of what it posts back: what the answer holds ends on the driver thread.
    m_worker.Submit([this, number, shared = std::make_shared<Write>(std::move(write))]() mutable {
        std::string error;
        try {
            m_database->Together(shared->writes);
        } catch (const std::exception& failure) {
            error = failure.what();
        }
        m_driver.Post("an answer of the disk",
                      [this, number, shared = std::move(shared), error] { Answer(shared, number, error); });
    });
}

void StateStore::Answer(const std::shared_ptr<Write>& write, std::uint64_t number, const std::string& error) {
    const auto newest = m_newest.find(write->subject);
    const bool isNewest = newest != m_newest.end() && newest->second == number;
    const bool isKept = !error.empty() && isNewest && m_failed.size() < kMaxFailed;
    if (error.empty())
        m_failed.erase(write->subject);
    if (isKept) {
        m_failed[write->subject] = {number, write};
        if (!m_retry.IsRunning())
            m_retry.Start(kRetry, [this] { Retry(); });
    } else if (isNewest) {
        m_newest.erase(newest);
    }
    // Whoever waits for the disk hears of the first failure and of the success, not of every try between.
    if (error.empty() || !std::exchange(write->isFailureTold, true))
        write->done(error);
}

void StateStore::Retry() {
    std::vector<std::pair<std::uint64_t, std::shared_ptr<Write>>> again;
    for (auto& [subject, failed] : std::exchange(m_failed, {}))
        again.push_back(std::move(failed));
    std::sort(again.begin(), again.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    for (const auto& [number, write] : again)
        Submit({write->subject, write->writes, write->done, write->isFailureTold});
}

} // namespace controller
