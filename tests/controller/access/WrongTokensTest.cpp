#include "controller/access/WrongTokens.h"

#include "tests/controller/support/FakeScheduler.h"

#include <gtest/gtest.h>

#include <vector>

namespace controller {

namespace {

using namespace std::chrono_literals;
using Texts = std::vector<std::string>;

class WrongTokensTest : public testing::Test {
protected:
    void Count(const std::string& address, int times = 1) {
        for (int i = 0; i < times; ++i)
            m_wrong.Count(address);
    }

    FakeScheduler m_scheduler;
    Texts m_lines;
    WrongTokens m_wrong{m_scheduler, [this](const std::string& line) {
                            m_lines.push_back(line);
                        }};
};

TEST_F(WrongTokensTest, AnAddressHasTenAMinute) {
    Count("10.0.0.1", 9);
    EXPECT_FALSE(m_wrong.AreTooManyFrom("10.0.0.1"));
    m_scheduler.Advance(30s);
    Count("10.0.0.1");
    EXPECT_TRUE(m_wrong.AreTooManyFrom("10.0.0.1"));
    EXPECT_FALSE(m_wrong.AreTooManyFrom("10.0.0.2"));
    m_scheduler.Advance(30s);
    EXPECT_FALSE(m_wrong.AreTooManyFrom("10.0.0.1"));
    EXPECT_FALSE(m_wrong.AreNoneFrom("10.0.0.2"));
    m_scheduler.Advance(30s);
    EXPECT_TRUE(m_wrong.AreNoneFrom("10.0.0.1"));
}

TEST_F(WrongTokensTest, ANetworkHasFortyAMinuteHoweverManyAddressesItIs) {
    for (int i = 0; i < 40; ++i) {
        EXPECT_FALSE(m_wrong.AreTooManyFrom("2001:db8:0:1::ffff"));
        Count("2001:db8:0:1:" + std::to_string(i) + "::1");
    }
    EXPECT_TRUE(m_wrong.AreTooManyFrom("2001:db8:0:1::ffff"));
    EXPECT_FALSE(m_wrong.AreTooManyFrom("2001:db8:0:2::1"));
    EXPECT_TRUE(m_wrong.AreNoneFrom("2001:db8:0:2::1"));
    for (int i = 0; i < 40; ++i)
        Count("192.0.2." + std::to_string(i));
    EXPECT_TRUE(m_wrong.AreTooManyFrom("192.0.2.255"));
    EXPECT_TRUE(m_wrong.AreTooManyFrom("::ffff:192.0.2.255"));
    EXPECT_FALSE(m_wrong.AreTooManyFrom("192.0.3.1"));
}

TEST_F(WrongTokensTest, AFloodOfAddressesIsToldInALineAMinute) {
    for (int i = 0; i < 2163; ++i)
        Count("10." + std::to_string(i / 250) + "." + std::to_string(i % 250) + ".1", 10);
    EXPECT_EQ(m_lines, Texts{"Too many wrong tokens from 10.0.0.1: none are looked at for a minute"});
    m_scheduler.Advance(1min);
    ASSERT_EQ(m_lines.size(), 2U);
    EXPECT_EQ(m_lines[1], "Too many wrong tokens, in the last minute 2162 times, at last from 10.8.162.1");
    m_scheduler.Advance(5min);
    EXPECT_EQ(m_lines.size(), 2U);
    Count("10.0.0.9", 10);
    EXPECT_EQ(m_lines.size(), 3U);
}

TEST_F(WrongTokensTest, OfMoreThanAreRememberedTheOldestAreForgotten) {
    Count("192.0.2.1", 10);
    for (std::size_t i = 0; i < WrongTokens::kMaxOrigins / 2 - 1; ++i)
        Count("10." + std::to_string(i / 250) + "." + std::to_string(i % 250) + ".1");
    EXPECT_TRUE(m_wrong.AreTooManyFrom("192.0.2.1"));
    Count("172.16.0.1");
    EXPECT_FALSE(m_wrong.AreTooManyFrom("192.0.2.1"));
    EXPECT_FALSE(m_wrong.AreNoneFrom("10.0.0.1"));
}

TEST_F(WrongTokensTest, WhatIsNoAddressIsCountedAsItIs) {
    Count("somewhere", 10);
    EXPECT_TRUE(m_wrong.AreTooManyFrom("somewhere"));
    EXPECT_EQ(m_lines.size(), 1U);
}

} // namespace

} // namespace controller
