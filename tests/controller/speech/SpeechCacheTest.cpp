#include "controller/speech/SpeechCache.h"

#include "controller/speech/Wave.h"
#include "tests/controller/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace controller {

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

std::string Sound(std::size_t milliseconds) {
    return wave::Sealed(wave::Samples(milliseconds * 48, 7));
}

class SpeechCacheTest : public testing::Test {
protected:
    /// Makes the sound look as if it had last been used so long ago.
    void Age(const std::string& key, std::chrono::seconds age) const {
        fs::last_write_time(Folder() / (key + ".wav"), fs::file_time_type::clock::now() - age);
    }
    [[nodiscard]] fs::path Folder() const { return m_folder.Path() / "speech"; }

    TemporaryFolder m_folder;
};

TEST_F(SpeechCacheTest, WhatIsKeptIsFoundAlsoByTheNextOne) {
    const auto kept = SpeechCache(Folder()).Keep("key", Sound(1500));
    EXPECT_EQ(kept.file, Folder() / "key.wav");
    EXPECT_EQ(kept.duration, 1500ms);
    SpeechCache next(Folder());
    const auto found = next.Find("key");
    ASSERT_TRUE(found);
    EXPECT_EQ(found->file, kept.file);
    EXPECT_EQ(found->duration, 1500ms);
    EXPECT_TRUE(TemporaryFolder::Read(found->file) == Sound(1500));
    EXPECT_FALSE(next.Find("other"));
    EXPECT_EQ(fs::status(found->file).permissions() & fs::perms::others_all, fs::perms::none);
}

TEST_F(SpeechCacheTest, WhatWasUsedLongestAgoGoesFirst) {
    SpeechCache cache(Folder(), 3 * Sound(100).size());
    for (const char* key : {"one", "two", "three"})
        (void)cache.Keep(key, Sound(100));
    Age("one", 300s);
    Age("two", 200s);
    Age("three", 100s);
    EXPECT_TRUE(cache.Find("one")); // used now
    (void)cache.Keep("four", Sound(100));
    EXPECT_TRUE(cache.Find("one"));
    EXPECT_FALSE(cache.Find("two"));
    EXPECT_TRUE(cache.Find("three"));
    EXPECT_TRUE(cache.Find("four"));
}

TEST_F(SpeechCacheTest, OneThatIsLargerThanAllIsKeptAlone) {
    SpeechCache cache(Folder(), 1000);
    (void)cache.Keep("small", Sound(1));
    (void)cache.Keep("large", Sound(100));
    EXPECT_FALSE(cache.Find("small"));
    EXPECT_TRUE(cache.Find("large"));
}

TEST_F(SpeechCacheTest, ADamagedOneIsRemoved) {
    SpeechCache cache(Folder());
    const auto kept = cache.Keep("key", Sound(100));
    std::string content = TemporaryFolder::Read(kept.file);
    for (const std::size_t place :
         {std::size_t{0}, std::size_t{41}, content.size() / 2, content.size() - 1}) {
        std::string damaged = content;
        damaged[place] = static_cast<char>(damaged[place] ^ 0x10);
        std::ofstream(kept.file, std::ios::binary) << damaged;
        EXPECT_FALSE(cache.Find("key")) << place;
        EXPECT_FALSE(fs::exists(kept.file));
        (void)cache.Keep("key", content);
    }
    EXPECT_TRUE(cache.Find("key"));
}

TEST_F(SpeechCacheTest, AFolderThatTakesNothingIsTold) {
    m_folder.Write("speech", "a file");
    SpeechCache cache(Folder());
    EXPECT_FALSE(cache.Find("key"));
    EXPECT_THROW((void)cache.Keep("key", Sound(100)), std::system_error);
}

} // namespace

} // namespace controller
