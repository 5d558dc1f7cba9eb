#include "tests/controller/audio/EngineHarness.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <utility>

#include <stdlib.h>

namespace controller::audio::test {

namespace {

constexpr std::chrono::seconds kBound{60};
constexpr std::chrono::milliseconds kSlice{10};

std::vector<RoomConfig> RoomsOf(const std::vector<std::string>& outputs) {
    std::vector<RoomConfig> rooms;
    for (const std::string& output : outputs) {
        RoomConfig room;
        room.id = static_cast<std::uint32_t>(rooms.size() + 1);
        room.name = "room" + std::to_string(room.id);
        room.output = ParseOutput(output);
        rooms.push_back(room);
    }
    return rooms;
}

} // namespace

void DriverLoop::Post(const char* /*what*/, std::function<void()> work) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_tasks.push_back(std::move(work));
    m_changed.notify_all();
}

bool DriverLoop::RunUntil(const std::function<bool()>& isMet) {
    const auto end = std::chrono::steady_clock::now() + kBound;
    while (!isMet()) {
        std::unique_lock<std::mutex> lock(m_mutex);
        // In slices, since a condition may look at a file that nobody announces.
        if (!m_changed.wait_for(lock, kSlice, [this] { return !m_tasks.empty(); })) {
            if (std::chrono::steady_clock::now() > end)
                return false;
            continue;
        }
        const auto task = std::move(m_tasks.front());
        m_tasks.pop_front();
        lock.unlock();
        task();
    }
    return true;
}

void DriverLoop::RunPosted() {
    std::deque<std::function<void()>> tasks;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        tasks.swap(m_tasks);
    }
    for (const auto& task : tasks)
        task();
}

TemporaryFolder::TemporaryFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "audio-test-XXXXXX").string();
    m_path = mkdtemp(pattern.data());
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored; // A folder left behind fails no test.
    std::filesystem::remove_all(m_path, ignored);
}

EngineLimits EngineHarness::PatientLimits() {
    EngineLimits limits;
    limits.readiness = std::chrono::seconds(20);
    limits.opening = std::chrono::seconds(30);
    limits.stall = std::chrono::seconds(10);
    limits.closing = std::chrono::seconds(20);
    return limits;
}

EngineHarness::EngineHarness(const std::vector<std::string>& outputs,
                             EngineLimits limits,
                             Borrows borrows,
                             ISoundAddresses* addresses)
    : EngineHarness(RoomsOf(outputs), limits, borrows, addresses) {}

EngineHarness::EngineHarness(std::vector<RoomConfig> rooms,
                             EngineLimits limits,
                             Borrows borrows,
                             ISoundAddresses* addresses)
    : m_roomCount(rooms.size())
    , m_borrowings(m_loop,
                   m_log.log,
                   [](const std::vector<Borrowed>& /*entries*/, const Borrowings::Done& done) { done(""); },
                   {}) {
    EngineServices services{m_loop, m_log.log,
                            [this](const RoomTrouble& trouble) { m_troubles.push_back(trouble); },
                            borrows == Borrows::Yes ? &m_borrowings : nullptr, addresses};
    services.isUrgent = [this] {
        return m_isUrgent;
    };
    m_engine = std::make_unique<AudioEngine>(std::move(rooms), std::move(services), limits);
}

void EngineHarness::OpenWithAllRooms() {
    m_engine->OpenStream({});
    for (std::size_t id = 1; id <= m_roomCount; ++id)
        m_engine->AddRoom(static_cast<std::uint32_t>(id));
}

std::optional<PlayResult> EngineHarness::PlayToEnd(const PlayedSound& sound) {
    std::optional<PlayResult> result;
    m_engine->Play(sound, [&](const PlayResult& played) { result = played; });
    (void)RunUntil([&] { return result.has_value(); }); // Without an end there is no result.
    return result;
}

bool EngineHarness::RunUntil(const std::function<bool()>& isMet) {
    if (m_loop.RunUntil(isMet))
        return true;
    std::string said;
    for (const std::string& line : Log())
        said += line + "\n";
    ADD_FAILURE() << "the engine was waited for in vain; it said:\n" << said;
    return false;
}

bool EngineHarness::CloseAndWait() {
    bool isClosed = false;
    m_engine->CloseStream([&] { isClosed = true; });
    return RunUntil([&] { return isClosed; });
}

bool EngineHarness::HasTrouble(std::uint32_t roomId, RoomTrouble::Kind kind) const {
    return std::any_of(m_troubles.begin(), m_troubles.end(), [&](const RoomTrouble& trouble) {
        return trouble.roomId == roomId && trouble.kind == kind;
    });
}

} // namespace controller::audio::test
