#include "controller/driver/Network.h"

#include <gtest/gtest.h>

namespace controller {

namespace {

TEST(NetworkTest, AddressesThatOneMayHaveTogetherAreOfOneNetwork) {
    EXPECT_EQ(network::NameOf("192.0.2.77"), "192.0.2.0/24");
    EXPECT_EQ(network::NameOf("::ffff:192.0.2.77"), "192.0.2.0/24");
    EXPECT_EQ(network::NameOf("2001:db8:1:2:3:4:5:6"), "2001:db8:1:2::/64");
    EXPECT_EQ(network::NameOf("fe80::1%lo"), "fe80::/64");
    EXPECT_EQ(network::NameOf("::1"), "::/64");
    EXPECT_EQ(network::NameOf("nowhere"), "nowhere");
    EXPECT_EQ(network::NameOf(""), "");
}

} // namespace

} // namespace controller
