#include "controller/media/OneTimeSounds.h"

#include "controller/SoundAddresses.h"

#include <gtest/gtest.h>

#include <set>

namespace controller {

namespace {

using std::chrono::seconds;

class OneTimeSoundsTest : public testing::Test {
protected:
    static OneTimeSounds::Sound Sound(const std::string& content) {
        return std::make_shared<const std::string>(content);
    }

    OneTimeSounds::Clock::time_point m_now;
    OneTimeSounds m_sounds{{3, 10}, [this] {
                               return m_now;
                           }};
};

} // namespace

TEST_F(OneTimeSoundsTest, ASoundIsFetchedByItsNameForAsLongAsItLives) {
    const auto sound = Sound("abc");
    const std::string name = m_sounds.Add(sound, seconds(60));
    EXPECT_FALSE(m_sounds.WasFetched(name));
    EXPECT_EQ(m_sounds.Fetch("abc.wav"), nullptr);
    EXPECT_EQ(m_sounds.Fetch(""), nullptr);
    EXPECT_FALSE(m_sounds.WasFetched(name));
    m_now += seconds(59);
    EXPECT_EQ(m_sounds.Fetch(name), sound);
    EXPECT_EQ(m_sounds.Fetch(name), sound) << "players ask more than once";
    EXPECT_TRUE(m_sounds.WasFetched(name));
    m_now += seconds(1);
    EXPECT_EQ(m_sounds.Fetch(name), nullptr);
    EXPECT_FALSE(m_sounds.WasFetched(name));
    EXPECT_EQ(sound.use_count(), 1) << "what is over is let go";
}

TEST_F(OneTimeSoundsTest, WhatIsRemovedIsGoneAndNothingElse) {
    const std::string first = m_sounds.Add(Sound("1"), seconds(60));
    const std::string second = m_sounds.Add(Sound("2"), seconds(60));
    m_sounds.Remove(first);
    m_sounds.Remove(first);
    EXPECT_EQ(m_sounds.Fetch(first), nullptr);
    ASSERT_NE(m_sounds.Fetch(second), nullptr);
    EXPECT_EQ(*m_sounds.Fetch(second), "2");
}

TEST_F(OneTimeSoundsTest, NamesAreOf128BitsThatAreNeverTheSame) {
    OneTimeSounds sounds;
    const auto sound = Sound("x");
    std::set<std::string> names;
    for (int count = 0; count < 200; ++count)
        names.insert(sounds.Add(sound, seconds(1)));
    EXPECT_EQ(names.size(), 200U);
    for (const std::string& name : names) {
        EXPECT_EQ(name.size(), 36U);
        EXPECT_EQ(name.find_first_not_of("0123456789abcdef"), 32U);
        EXPECT_EQ(name.substr(32), ".wav");
    }
}

TEST_F(OneTimeSoundsTest, TheOldestGoesForWantOfRoomAndASharedSoundCountsOnce) {
    const auto shared = Sound("12345");
    const std::string first = m_sounds.Add(shared, seconds(60));
    const std::string second = m_sounds.Add(shared, seconds(10));
    const std::string third = m_sounds.Add(Sound("67890"), seconds(60));
    EXPECT_NE(m_sounds.Fetch(first), nullptr) << "10 bytes";
    const std::string fourth = m_sounds.Add(Sound(""), seconds(60));
    EXPECT_EQ(m_sounds.Fetch(first), nullptr) << "three names";
    EXPECT_NE(m_sounds.Fetch(second), nullptr);
    const std::string fifth = m_sounds.Add(Sound("ab"), seconds(60));
    EXPECT_EQ(m_sounds.Fetch(second), nullptr) << "both";
    for (const std::string& name : {third, fourth, fifth})
        EXPECT_NE(m_sounds.Fetch(name), nullptr);
    EXPECT_EQ(m_sounds.Add(Sound("12345678901"), seconds(60)), "");
    EXPECT_NE(m_sounds.Fetch(third), nullptr) << "nothing goes for what has no room at all";
}

TEST(SoundAddressesTest, WhatIsNoAddressOfASoundIsNone) {
    SoundAddresses addresses;
    const std::string path = addresses.Offer(std::make_shared<const std::string>("sound"), seconds(60));
    EXPECT_NE(addresses.Sounds().Fetch(path.substr(path.rfind('/') + 1)), nullptr);
    for (const char* const other : {"", "/", "/api/once", "/api/rooms/1/volume"}) {
        EXPECT_FALSE(addresses.WasFetched(other)) << other;
        addresses.Withdraw(other);
    }
    EXPECT_TRUE(addresses.WasFetched(path));
    addresses.Withdraw(path);
    EXPECT_FALSE(addresses.WasFetched(path));
}

} // namespace controller
