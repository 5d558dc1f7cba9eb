#include "announce/client/Address.h"

#include "announce/basics/Failure.h"

#include <gtest/gtest.h>

TEST(AddressTest, WithoutSchemeAndPortItIsTheControllersUsualOne) {
    EXPECT_EQ(Address().Text(), "http://127.0.0.1:8765");
    EXPECT_EQ(Address::Read("house.local").Text(), "http://house.local:8765");
    EXPECT_EQ(Address::Read("https://house.local/").Text(), "https://house.local:8765");
}

TEST(AddressTest, HostAndPortAreTakenApartAlsoOfIpv6) {
    EXPECT_EQ(Address::Read("https://house:443").Text(), "https://house:443");
    EXPECT_EQ(Address::Read("[::1]:80").Text(), "http://[::1]:80");
    EXPECT_EQ(Address::Read("::1").Text(), "http://[::1]:8765");
    EXPECT_EQ(Address::Read("http://[fe80::1]").host, "fe80::1");
}

TEST(AddressTest, WrongOneIsRefusedWithWhatWouldBeRight) {
    for (const char* text :
         {"", "http://", "ftp://house", "house:0", "house:65536", "house:", "house:x", "[::1", "[::1]x",
          "http://house/path", "user@house", "a b", "http://house:80/?x"}) {
        SCOPED_TRACE(text);
        try {
            (void)Address::Read(text);
            FAIL() << "it was taken";
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.Status(), ExitStatus::Usage);
            EXPECT_NE(std::string(failure.what()).find("\"" + std::string(text) + "\""), std::string::npos);
            EXPECT_NE(failure.Right().find("http://127.0.0.1:8765"), std::string::npos);
        }
    }
}
