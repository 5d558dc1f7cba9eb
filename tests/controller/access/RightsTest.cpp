#include "controller/access/Rights.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace controller {

TEST(RightsTest, AdministratorMayDoEverything) {
    const Rights rights = Rights::Read({"admin"});

    for (const Need need :
         {Need::Nothing, Need::Token, Need::Navigator, Need::Screen, Need::Play, Need::Admin})
        EXPECT_TRUE(rights.Allow(need, 5));
}

TEST(RightsTest, PlayerMayDoEverythingButAdminister) {
    const Rights rights = Rights::Read({"play"});

    EXPECT_TRUE(rights.Allow(Need::Play, 0));
    EXPECT_TRUE(rights.Allow(Need::Navigator, 5));
    EXPECT_TRUE(rights.Allow(Need::Screen, 0));
    EXPECT_FALSE(rights.Allow(Need::Admin, 0));
}

TEST(RightsTest, NavigatorMayDoWhatItsPageNeedsAndNothingForOthers) {
    const Rights rights = Rights::Read({"navigator:5"});

    EXPECT_TRUE(rights.Allow(Need::Token, 0));
    EXPECT_TRUE(rights.Allow(Need::Screen, 0));
    EXPECT_TRUE(rights.Allow(Need::Navigator, 5));
    EXPECT_FALSE(rights.Allow(Need::Navigator, 6));
    EXPECT_FALSE(rights.Allow(Need::Play, 5));
    EXPECT_FALSE(rights.Allow(Need::Admin, 5));
}

TEST(RightsTest, WhatIsNoRightIsRefused) {
    for (const char* text : {"", "Admin", "navigator", "navigator:", "navigator:0", "navigator:x",
                             "navigator:5x", "navigator:4294967296", "navigator:-1"})
        EXPECT_THROW((void)Rights::Read({text}), std::invalid_argument) << text;
}

TEST(RightsTest, TextsReadBackAsTheSameRights) {
    const std::vector<std::string> texts{"admin", "play", "navigator:5", "navigator:6"};

    EXPECT_EQ(Rights::Read(texts).Texts(), texts);
}

} // namespace controller
