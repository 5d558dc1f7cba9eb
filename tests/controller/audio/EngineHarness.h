#pragma once

#include "controller/audio/AudioEngine.h"
#include "controller/audio/Borrowings.h"
#include "tests/controller/support/TestLog.h"

#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace controller::audio::test {

/// The driver thread of the tests: the thread that calls RunUntil.
class DriverLoop final : public IScheduler {
public:
    [[nodiscard]] Duration Now() const override { return {}; }
    void Post(const char* what, std::function<void()> work) override;
    /// The engine has a ticker of its own, and asks for nothing later.
    std::uint64_t After(Duration /*delay*/, const char* /*what*/, std::function<void()> /*work*/) override {
        return 1;
    }
    void Cancel(std::uint64_t /*id*/) noexcept override {}

    /// Runs what is posted until the condition holds. False when it does not within a generous bound.
    [[nodiscard]] bool RunUntil(const std::function<bool()>& isMet);

    /// Runs what has been posted so far.
    void RunPosted();

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<std::function<void()>> m_tasks;
};

/// A folder that lives as long as the test.
class TemporaryFolder final {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] std::string Path(const std::string& name) const { return m_path + "/" + name; }

private:
    std::string m_path;
};

/// A real engine with what it said. Rooms are numbered from 1 in the order in which they are given.
class EngineHarness final {
public:
    /// Whether it may change what other programs have.
    enum class Borrows { No, Yes };

    explicit EngineHarness(const std::vector<std::string>& outputs,
                           EngineLimits limits = PatientLimits(),
                           Borrows borrows = Borrows::No,
                           ISoundAddresses* addresses = nullptr);
    explicit EngineHarness(std::vector<RoomConfig> rooms,
                           EngineLimits limits = PatientLimits(),
                           Borrows borrows = Borrows::No,
                           ISoundAddresses* addresses = nullptr);

    /// Bounds that a machine under sanitizers keeps too: healthy outputs are never given up.
    static EngineLimits PatientLimits();

    [[nodiscard]] AudioEngine& Engine() { return *m_engine; }
    void DestroyEngine() { m_engine = nullptr; }

    /// Opens a stream and adds every room.
    void OpenWithAllRooms();

    /// Plays, and waits for the end. Nothing when the end did not come.
    [[nodiscard]] std::optional<PlayResult> PlayToEnd(const PlayedSound& sound);

    /// Waits until the stream's outputs are closed.
    [[nodiscard]] bool CloseAndWait();

    /// False when the condition does not hold within a generous bound; the test has failed then, with what
    /// the engine said.
    [[nodiscard]] bool RunUntil(const std::function<bool()>& isMet);

    /// Whether what plays from now on is urgent.
    void SetUrgent(bool isUrgent) { m_isUrgent = isUrgent; }

    void RunPosted() { m_loop.RunPosted(); }

    [[nodiscard]] const std::vector<RoomTrouble>& Troubles() const { return m_troubles; }
    /// What is borrowed and not given back.
    [[nodiscard]] std::vector<Borrowed> Left() const { return m_borrowings.All(); }
    [[nodiscard]] const std::vector<std::string>& Log() const { return m_log.lines; }
    [[nodiscard]] bool HasTrouble(std::uint32_t roomId, RoomTrouble::Kind kind) const;

private:
    DriverLoop m_loop;
    std::size_t m_roomCount;
    bool m_isUrgent = false;
    std::vector<RoomTrouble> m_troubles;
    TestLog m_log;
    Borrowings m_borrowings;
    std::unique_ptr<AudioEngine> m_engine;
};

} // namespace controller::audio::test
