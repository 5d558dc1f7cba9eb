#include "controller/driver/BoundedFolder.h"

#include "tests/controller/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <system_error>

namespace controller {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

TEST(BoundedFolderTest, WhatWasUsedLongestAgoGoesWhenThereIsNoRoomAndNeverWhatHasJustCome) {
    const TemporaryFolder folder;
    BoundedFolder kept(folder.Path() / "kept", 10);
    const auto age = [&](const char* name, std::chrono::hours hours) {
        fs::last_write_time(kept.Path() / name, fs::file_time_type::clock::now() - hours);
    };
    kept.Keep("a", "1234");
    kept.Keep("b", "1234");
    age("a", 2h);
    age("b", 1h);
    EXPECT_TRUE(kept.Use("a"));

    kept.Keep("c", "1234");
    EXPECT_TRUE(kept.Use("a"));
    EXPECT_FALSE(kept.Use("b"));
    EXPECT_TRUE(kept.Use("c"));
    EXPECT_EQ(TemporaryFolder::Read(kept.Path() / "c"), "1234");

    kept.Keep("larger than all", "12345678901");
    EXPECT_TRUE(kept.Use("larger than all"));
    EXPECT_FALSE(kept.Use("a"));
    EXPECT_FALSE(kept.Use("c"));
}

TEST(BoundedFolderTest, FolderThatCannotBeMadeIsAnError) {
    const TemporaryFolder folder;
    BoundedFolder kept(folder.Write("kept", "a file"), 10);

    EXPECT_THROW(kept.Keep("a", "1"), std::system_error);
    EXPECT_FALSE(kept.Use("a"));
}

} // namespace controller
