#include "controller/state/StateStore.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace controller {

namespace {

/// What subjects begin with.
constexpr const char* kAnnouncement = "announcement ";
constexpr const char* kHistory = "history ";

bool IsOf(const char* kind, const std::string& subject) {
    return subject.rfind(kind, 0) == 0;
}

/// Gives the reason of a failure; else nothing.
template <class Writes>
std::string Run(StateDatabase& database, const Writes& writes) {
    try {
        database.Together([&writes](StateDatabase& together) {
            for (const auto& write : writes)
                write.run(together);
        });
    } catch (const std::exception& failure) {
        return failure.what();
    }
    return "";
}

} // namespace

StateStore::StateStore(std::unique_ptr<StateDatabase> database, IScheduler& driver)
    : m_driver(driver)
    , m_retry(driver, "writing to the disk again")
    , m_database(std::move(database)) {}

StateStore::~StateStore() = default;

void StateStore::WriteAnnouncements(AnnouncementRows rows, WriteDone done) {
    Batch batch;
    for (AnnouncementRow& row : rows) {
        std::string subject = std::string(kAnnouncement) + std::to_string(row.key);
        batch.writes.push_back({std::move(subject), [row = std::move(row)](StateDatabase& database) {
                                    database.WriteAnnouncement(row);
                                }});
    }
    batch.writes.push_back({kAnnouncement, [](StateDatabase& database) {
                                database.KeepAnnouncements();
                            }});
    batch.done = std::move(done);
    Submit(std::move(batch));
}

void StateStore::WriteAll(WriteDone done) {
    m_driverOnly.Assert();
    Submit({TakeFailed(), [this, done = std::move(done)](const std::string& error) {
                done(error.empty() && !m_failed.empty() ? m_lastError : error);
            }});
}

void StateStore::ListenToAnnouncements(WriteDone listener) {
    m_driverOnly.Assert();
    m_listener = std::move(listener);
}

void StateStore::WriteRooms(std::vector<RoomRow> rows, WriteDone done) {
    Batch batch;
    for (const RoomRow& row : rows)
        batch.writes.push_back({"room " + std::to_string(row.room), [row](StateDatabase& database) {
                                    database.WriteRoom(row);
                                }});
    batch.done = std::move(done);
    Submit(std::move(batch));
}

void StateStore::WriteVariable(std::uint32_t device,
                               std::uint32_t variable,
                               const std::string& value,
                               WriteDone done) {
    const auto run = [=](StateDatabase& database) {
        database.WriteVariable(device, variable, value);
    };
    Submit({{{"variable " + std::to_string(device) + " " + std::to_string(variable), run}}, std::move(done)});
}

void StateStore::WriteSpokenSound(const SpokenSoundRow& row, WriteDone done) {
    const auto run = [row](StateDatabase& database) {
        database.WriteSpokenSound(row);
    };
    Submit({{{"sound " + row.name, run}}, std::move(done)});
}

void StateStore::WriteQueue(QueuedRows rows, WriteDone done) {
    const auto run = [rows = std::move(rows)](StateDatabase& database) {
        database.WriteQueue(rows);
    };
    Submit({{{"queue", run}}, std::move(done)});
}

void StateStore::WriteBorrowed(const BorrowedRows& rows, WriteDone done) {
    Batch batch;
    for (const BorrowedRow& row : rows)
        batch.writes.push_back(
            {"borrowed " + row.kind + " " + row.thing + " " + row.property, [row](StateDatabase& database) {
                 database.WriteBorrowed(row);
             }});
    batch.done = std::move(done);
    Submit(std::move(batch));
}

void StateStore::WriteSoundLevel(const SoundLevelRow& row, WriteDone done) {
    const auto run = [row](StateDatabase& database) {
        database.WriteSoundLevel(row);
    };
    Submit({{{"level " + row.name, run}}, std::move(done)});
}

void StateStore::WritePassingSound(const std::string& name, bool isPassing, WriteDone done) {
    const auto run = [name, isPassing](StateDatabase& database) {
        database.WritePassingSound(name, isPassing);
    };
    Submit({{{"passing " + name, run}}, std::move(done)});
}

/// In the place of whatever else could not be written of it.
void StateStore::RemoveSound(const std::string& name, WriteDone done) {
    const auto run = [name](StateDatabase& database) {
        database.RemoveSound(name);
    };
    const auto nothing = [](StateDatabase& /*database*/) {
    };
    Submit({{{"sound " + name, run}, {"level " + name, nothing}, {"passing " + name, nothing}},
            std::move(done)});
}

void StateStore::AddHistory(const HistoryEntry& entry) {
    m_driverOnly.Assert();
    const auto run = [entry](StateDatabase& database) {
        database.AddHistory(entry);
    };
    // Every entry is a subject of its own: none makes another needless.
    Submit(
        {{{std::string(kHistory) + std::to_string(m_lastNumber + 1), run}}, [](const std::string& /*error*/) {
         }});
}

void StateStore::ReadHistory(std::size_t newest, HistoryDone done) {
    ReadHistory(newest, std::numeric_limits<std::int64_t>::max(), std::move(done));
}

void StateStore::ReadHistory(std::size_t newest, std::int64_t before, HistoryDone done) {
    m_driverOnly.Assert();
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
    m_driverOnly.Assert();
    m_worker.Submit([this, callback = std::move(callback)]() mutable {
        m_driver.Post("the end of writing", std::move(callback));
    });
}

void StateStore::Submit(Batch batch) {
    m_driverOnly.Assert();
    for (Write& write : batch.writes) {
        write.number = ++m_lastNumber;
        m_newest[write.subject] = write.number;
        m_failed.erase(write.subject);
    }
    // The worker keeps nothing of what it posts back: what the answer holds ends on the driver thread.
    m_worker.Submit([this, shared = std::make_shared<Batch>(std::move(batch))]() mutable {
        const std::string error = Run(*m_database, shared->writes);
        m_driver.Post("an answer of the disk",
                      [this, shared = std::move(shared), error] { Answer(*shared, error); });
    });
}

void StateStore::Answer(const Batch& batch, const std::string& error) {
    m_driverOnly.Assert();
    if (!error.empty())
        m_lastError = error;
    for (const Write& write : batch.writes) {
        const auto newest = m_newest.find(write.subject);
        if (newest == m_newest.end() || newest->second != write.number)
            continue;
        if (error.empty())
            m_newest.erase(newest);
        else
            KeepFailed(write);
    }
    Tell(batch, error);
    batch.done(error);
    if (m_failed.empty())
        m_retry.Stop();
    else if (error.empty())
        Retry();
    else if (!m_retry.IsRunning())
        m_retry.Start(kRetry, [this] { Retry(); });
}

void StateStore::KeepFailed(const Write& write) {
    // What the house has now is bounded by the house; what was played is not.
    if (IsOf(kHistory, write.subject) && m_failed.size() >= kMaxFailed)
        m_newest.erase(write.subject);
    else
        m_failed[write.subject] = write;
}

void StateStore::Tell(const Batch& batch, const std::string& error) {
    const auto isAnnouncement = [](const Write& write) {
        return IsOf(kAnnouncement, write.subject);
    };
    if (!m_listener || std::none_of(batch.writes.begin(), batch.writes.end(), isAnnouncement))
        return;
    if (!error.empty()) {
        if (!batch.isAgain)
            m_listener(error);
        return;
    }
    const auto waiting = m_newest.lower_bound(kAnnouncement);
    if (waiting == m_newest.end() || !IsOf(kAnnouncement, waiting->first))
        m_listener("");
}

std::vector<StateStore::Write> StateStore::TakeFailed() {
    std::vector<Write> writes;
    for (auto& [subject, write] : std::exchange(m_failed, {}))
        writes.push_back(std::move(write));
    std::sort(writes.begin(), writes.end(),
              [](const Write& one, const Write& other) { return one.number < other.number; });
    return writes;
}

void StateStore::Retry() {
    m_retry.Stop();
    // As one: announcements that have been written as one must not stand on the disk in part.
    Submit({TakeFailed(), [](const std::string& /*error*/) {}, true});
}

} // namespace controller
