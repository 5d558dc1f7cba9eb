#include "tests/controller/audio/PlayFixture.h"

#include <algorithm>
#include <chrono>
#include <iostream>
#include <iterator>

namespace controller::audio::test {

namespace {

std::size_t CountEntries(const char* folder) {
    const std::filesystem::directory_iterator entries(folder);
    return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

} // namespace

class EnduranceTest : public PlayFixture {
protected:
    static constexpr int kPlays = 200;

    static void PlayOnce(EngineHarness& harness, const std::string& clip, std::vector<std::int64_t>& delays) {
        harness.OpenWithAllRooms();
        const auto result = harness.PlayToEnd(clip);
        ASSERT_TRUE(result);
        ASSERT_EQ(result->error, "");
        ASSERT_EQ(result->rooms, (Rooms{1, 2}));
        ASSERT_TRUE(harness.CloseAndWait());
        delays.push_back(result->startDelay.count());
    }
};

TEST_F(EnduranceTest, TwoHundredPlaysLeaveNoThreadAndNoDescriptorBehind) {
    const auto clip = m_folder.Path("short.wav");
    WriteSound(clip, Melody(960, kChannels), kChannels, kRate);
    EngineHarness harness(std::vector<std::string>{"silent", "silent"});
    std::vector<std::int64_t> delays;
    // What stays open from the first plays on is no growth.
    for (int i = 0; i < 5; ++i)
        PlayOnce(harness, clip, delays);
    const auto descriptors = CountEntries("/proc/self/fd");
    const auto threads = CountEntries("/proc/self/task");
    for (int i = 0; i < kPlays; ++i)
        PlayOnce(harness, clip, delays);
    // A thread may be on its last instructions, no more than one of each room.
    EXPECT_LE(CountEntries("/proc/self/task"), threads + 2);
    EXPECT_LE(CountEntries("/proc/self/fd"), descriptors + 2);
    std::sort(delays.begin(), delays.end());
    std::cout << "from Play, on outputs that still open, to the first sample: median "
              << delays[delays.size() / 2] << " us, 99th percentile " << delays[delays.size() * 99 / 100]
              << " us\n";
}

} // namespace controller::audio::test
