#pragma once

#include "controller/audio/Borrowed.h"
#include "controller/driver/Alarm.h"
#include "controller/driver/DriverOnly.h"
#include "controller/driver/IScheduler.h"
#include "controller/driver/Log.h"

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace controller::audio {

/// What announcements have borrowed of other programs, and have not given back: the one way for all kinds of
/// output to change what is not ours.
///
/// A kind writes down what it is about to change, and changes it when it is told to: the entries are on the
/// disk then, or have been given to it for `kPatience`. It gives each value back that is still what was set,
/// leaves what somebody else has set since, and strikes the entry either way. What is found here at the start
/// a former run has left behind; what belongs to a program that is gone stays until that comes back. Driver
/// thread only.
class Borrowings final {
public:
    /// Told once how a write went; an empty text: well.
    using Done = std::function<void(const std::string& error)>;

    /// What writes entries to the disk, as one, in the order of the calls: each in the place of the one of
    /// its key; one with an empty `set` takes that one away.
    using Write = std::function<void(const std::vector<Borrowed>& entries, Done done)>;

    /// Whoever else is to know of every change, before the disk does; as `Write`.
    using Watch = std::function<void(const std::vector<Borrowed>& entries)>;

    static constexpr std::chrono::milliseconds kPatience{50};

    /// As many values are borrowed at once; what would be more is left as it is.
    static constexpr std::size_t kMost = 1000;

    /// `left` is what the disk has. Scheduler and log are borrowed for life.
    Borrowings(IScheduler& driver, Log& log, Write write, const std::vector<Borrowed>& left);

    Borrowings(const Borrowings&) = delete;
    Borrowings& operator=(const Borrowings&) = delete;
    ~Borrowings();

    void SetWatch(Watch watch) { m_watch = std::move(watch); }

    /// Writes the entries as one, each in the place of the one of its key, and then calls `change`, once,
    /// never within this call. False when there is no room for them; then nothing is done.
    [[nodiscard]] bool Take(const std::vector<Borrowed>& entries, std::function<void()> change);

    /// The values are as their programs want them.
    void Strike(const std::vector<Borrowed>& entries);

    /// All of one kind, by key.
    [[nodiscard]] std::vector<Borrowed> Of(const std::string& kind) const;
    [[nodiscard]] std::vector<Borrowed> All() const { return m_entries; }

    /// What whoever watched another one was told: known from now on, and written nowhere.
    void Put(const std::vector<Borrowed>& entries);

private:
    struct Waiting;

    void Written(const Waiting* waiting, const std::string& error);
    void Go(const Waiting* waiting);

    IScheduler& m_driver;
    Log& m_log;
    const Write m_write;
    Watch m_watch;
    std::vector<Borrowed> m_entries; ///< by key
    std::vector<std::shared_ptr<Waiting>> m_waiting;
    DriverOnly m_driverOnly;
};

} // namespace controller::audio
