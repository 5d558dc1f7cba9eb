#pragma once

#include "controller/driver/Alarm.h"
#include "controller/driver/Worker.h"
#include "controller/state/IRoomStore.h"
#include "controller/state/IVariableStore.h"
#include "controller/state/StateDatabase.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace controller {

/// Where the agent's state is kept. Driver thread only.
class IAgentStateStore {
public:
    virtual void WriteAgentState(std::shared_ptr<const std::string> xml, WriteDone done) = 0;

protected:
    ~IAgentStateStore() = default;
};

/// The database behind the driver thread: writes run on a thread of its own, in order, and answers are posted
/// back.
///
/// A write that fails is told to whoever asked for it, kept, and tried again every `kRetry` until it succeeds
/// or a newer write of the same thing does. Driver thread only.
class StateStore final : public IRoomStore, public IVariableStore, public IAgentStateStore {
public:
    static constexpr std::chrono::seconds kRetry{5};
    /// So many played announcements wait at most for a disk that takes nothing.
    static constexpr std::size_t kMaxFailed = 1000;

    using HistoryDone =
        std::function<void(const std::vector<HistoryEntry>& entries, const std::string& error)>;

    /// `driver` is borrowed for life.
    StateStore(std::unique_ptr<StateDatabase> database, IScheduler& driver);
    StateStore(const StateStore&) = delete;
    StateStore& operator=(const StateStore&) = delete;
    /// Waits for the writes that are under way; answers that have not been posted back are dropped.
    ~StateStore();

    void WriteAgentState(std::shared_ptr<const std::string> xml, WriteDone done) override;
    void WriteTaken(const JournalEntry& entry, unsigned volume, WriteDone done) override;
    void WriteFree(std::uint32_t room, unsigned volume, WriteDone done) override;
    void WriteVariable(std::uint32_t device,
                       std::uint32_t variable,
                       const std::string& value,
                       WriteDone done) override;
    void AddHistory(const HistoryEntry& entry);
    void ReadHistory(std::size_t newest, std::int64_t before, HistoryDone done);
    void ReadHistory(std::size_t newest, HistoryDone done);

    /// Tries now what has failed.
    void Retry();

    /// Calls back when everything that was asked for so far has been tried.
    void WhenTried(std::function<void()> callback);

private:
    using Writes = std::function<void(StateDatabase&)>;
    struct Write {
        std::string subject; ///< a later write of the same subject makes an earlier one that failed needless
        Writes writes;
        WriteDone done;
        bool isFailureTold = false;
    };

    void Submit(Write write);
    void Answer(const std::shared_ptr<Write>& write, std::uint64_t number, const std::string& error);

    IScheduler& m_driver;
    std::uint64_t m_lastNumber = 0;
    std::map<std::string, std::uint64_t> m_newest; ///< by subject, while it matters
    std::map<std::string, std::pair<std::uint64_t, std::shared_ptr<Write>>> m_failed; ///< by subject
    Alarm m_retry;
    std::unique_ptr<StateDatabase> m_database;
    Worker m_worker;
};

} // namespace controller
