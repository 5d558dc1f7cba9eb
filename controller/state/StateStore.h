#pragma once

#include "controller/driver/Alarm.h"
#include "controller/driver/DriverOnly.h"
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

/// Where announcements are kept. Driver thread only.
class IAnnouncementStore {
public:
    /// Writes the rows as one, each in the place of the one with its key; one without XML takes that one
    /// away.
    virtual void WriteAnnouncements(AnnouncementRows rows, WriteDone done) = 0;

    /// Tries now what has failed; told when everything that was asked for so far stands on the disk, or why
    /// something does not.
    virtual void WriteAll(WriteDone done) = 0;

    /// `listener` is told, after announcements have been written, whether all of them stand on the disk: with
    /// the reason of the first failure, and with an empty text each time that they do.
    virtual void ListenToAnnouncements(WriteDone listener) = 0;

protected:
    ~IAnnouncementStore() = default;
};

/// The database behind the driver thread: writes run on a thread of its own, in order, and answers are posted
/// back. Whoever asked for a write is told once how it went.
///
/// A write that fails is kept and tried again every `kRetry`, and when another one succeeds, until it
/// succeeds or a newer write of the same thing takes its place. Driver thread only.
class StateStore final : public IRoomStore,
                         public IVariableStore,
                         public IAnnouncementStore,
                         public IQueueStore {
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

    void WriteAnnouncements(AnnouncementRows rows, WriteDone done) override;
    void WriteAll(WriteDone done) override;
    void ListenToAnnouncements(WriteDone listener) override;
    void WriteRooms(std::vector<RoomRow> rows, WriteDone done) override;
    void WriteVariable(std::uint32_t device,
                       std::uint32_t variable,
                       const std::string& value,
                       WriteDone done) override;
    void WriteSpokenSound(const SpokenSoundRow& row, WriteDone done);
    void WriteQueue(QueuedRows rows, WriteDone done) override;
    /// Writes the rows as one.
    void WriteBorrowed(const BorrowedRows& rows, WriteDone done);
    void WriteSoundLevel(const SoundLevelRow& row, WriteDone done);
    void WritePassingSound(const std::string& name, bool isPassing, WriteDone done);
    void RemoveSound(const std::string& name, WriteDone done);
    void AddHistory(const HistoryEntry& entry);
    void ReadHistory(std::size_t newest, std::int64_t before, HistoryDone done);
    void ReadHistory(std::size_t newest, HistoryDone done);

    /// Calls back when everything that was asked for so far has been tried.
    void WhenTried(std::function<void()> callback);

private:
    struct Write {
        std::string subject; ///< a later write of the same subject makes an earlier one that failed needless
        std::function<void(StateDatabase&)> run;
        std::uint64_t number = 0;
    };
    /// What is written as one.
    struct Batch {
        std::vector<Write> writes;
        WriteDone done;
        bool isAgain = false; ///< those who wait have been told that it failed
    };

    void Submit(Batch batch);
    void Answer(const Batch& batch, const std::string& error);
    void KeepFailed(const Write& write);
    void Tell(const Batch& batch, const std::string& error);
    [[nodiscard]] std::vector<Write> TakeFailed();
    void Retry();

    IScheduler& m_driver;
    WriteDone m_listener;
    std::uint64_t m_lastNumber = 0;
    std::map<std::string, std::uint64_t> m_newest; ///< by subject, of what the disk may not have yet
    std::map<std::string, Write> m_failed;         ///< by subject
    std::string m_lastError;
    Alarm m_retry;
    DriverOnly m_driverOnly;
    std::unique_ptr<StateDatabase> m_database;
    Worker m_worker;
};

} // namespace controller
