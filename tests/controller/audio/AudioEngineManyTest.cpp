#include "tests/controller/audio/PlayFixture.h"
#include "tests/controller/audio/multicast/Receiver.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <string>

#include <sys/inotify.h>
#include <unistd.h>

namespace controller::audio::test {

namespace {

/// What many rooms cost.
class AudioEngineManyTest : public PlayFixture {
protected:
    /// Threads that bear the program's own name: GStreamer gives its own ones others.
    static std::size_t OwnThreads() {
        const auto nameOf = [](const std::filesystem::path& folder) {
            std::string name;
            std::getline(std::ifstream(folder / "comm"), name);
            return name;
        };
        const std::string own = nameOf("/proc/self");
        std::size_t count = 0;
        for (const auto& task : std::filesystem::directory_iterator("/proc/self/task"))
            count += nameOf(task.path()) == own ? 1U : 0U;
        return count;
    }
};

/// How often a file is opened from now on.
class Openings final {
public:
    explicit Openings(const std::string& file) {
        EXPECT_GE(inotify_add_watch(m_descriptor, file.c_str(), IN_OPEN), 0);
    }
    ~Openings() { close(m_descriptor); }
    Openings(const Openings&) = delete;
    Openings& operator=(const Openings&) = delete;

    [[nodiscard]] std::size_t Count() const {
        std::array<char, 4096> events{};
        const auto size = read(m_descriptor, events.data(), events.size());
        return size < 0 ? 0 : static_cast<std::size_t>(size) / sizeof(inotify_event);
    }

private:
    const int m_descriptor = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
};

TEST_F(AudioEngineManyTest, ARoomThatPlaysHasNoThreadBesideThoseOfGstreamer) {
    constexpr std::size_t kRooms = 40;
    std::vector<std::string> outputs(kRooms, "silent");
    outputs.push_back(FileOutput("room.wav"));
    EngineHarness harness(outputs);
    const std::size_t before = OwnThreads();
    harness.OpenWithAllRooms();
    std::optional<PlayResult> result;
    harness.Engine().Play(m_clip, [&](const PlayResult& played) { result = played; });
    // In the midst of the clip; the fewest, for some may be opening still.
    std::size_t fewest = before + outputs.size();
    ASSERT_TRUE(harness.RunUntil([&] {
        if (SizeOf("room.wav") > 0 && !result)
            fewest = std::min(fewest, OwnThreads());
        return result.has_value();
    }));
    EXPECT_LE(fewest, before + kRooms / 2);
    EXPECT_EQ(result->rooms.size(), outputs.size());
    EXPECT_TRUE(harness.Troubles().empty());
    EXPECT_TRUE(harness.CloseAndWait());
    ExpectWholeClip("room.wav");
}

TEST_F(AudioEngineManyTest, AFileIsReadOnceForAllRoomsOfAllKinds) {
    const Receiver receiver("239.255.83.2");
    if (!receiver.CanHear())
        GTEST_SKIP() << "this machine sends no multicast to itself";
    EngineHarness harness({receiver.Output(), receiver.Output(), "silent", FileOutput("one.wav"),
                           FileOutput("two.wav"), "gstreamer: fakesink sync=true"});
    const Openings openings(m_clip);
    harness.OpenWithAllRooms();
    const auto result = harness.PlayToEnd(m_clip);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->rooms.size(), 6U);
    EXPECT_EQ(openings.Count(), 1U);
    EXPECT_TRUE(harness.CloseAndWait());
}

} // namespace

} // namespace controller::audio::test
