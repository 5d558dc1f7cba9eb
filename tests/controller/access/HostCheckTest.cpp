#include "controller/access/HostCheck.h"

#include <gtest/gtest.h>

namespace controller {

TEST(HostCheckTest, NamesThatNobodyElseCanHaveAreOurs) {
    const HostCheck hosts("Attic", "0.0.0.0");

    for (const char* host : {"localhost", "localhost:8765", "LOCALHOST", "127.0.0.1:8765", "192.168.1.5",
                             "[::1]", "[::1]:8765", "attic", "attic.local:8765"})
        EXPECT_TRUE(hosts.IsOurs(host)) << host;
}

TEST(HostCheckTest, NamesOfOthersAreNot) {
    const HostCheck hosts("attic", "127.0.0.1");

    for (const char* host :
         {"", "evil.example", "localhost.evil.example", "attic.evil.example", "localhost:x",
          "localhost:80:80", "[::1", "[evil]", "[::1]x", "localhost@evil", "127.0.0.1.evil", " localhost"})
        EXPECT_FALSE(hosts.IsOurs(host)) << host;
}

TEST(HostCheckTest, OnlyOurOwnPagesMaySendAnOrigin) {
    EXPECT_TRUE(HostCheck::IsSameOrigin("", "localhost:8765"));
    EXPECT_TRUE(HostCheck::IsSameOrigin("http://localhost:8765", "localhost:8765"));
    EXPECT_TRUE(HostCheck::IsSameOrigin("https://Attic.local", "attic.local"));
    for (const char* origin : {"null", "http://evil.example", "http://localhost:8766", "http://localhost",
                               "localhost:8765", "http://localhost:8765.evil.example", "file://"})
        EXPECT_FALSE(HostCheck::IsSameOrigin(origin, "localhost:8765")) << origin;
}

} // namespace controller
