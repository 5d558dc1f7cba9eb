#include "controller/http/Connections.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace controller {

namespace {

class FakeMember final : public Connections::Member {
public:
    Connections::TimePoint Check(Connections::TimePoint) override { return Connections::TimePoint::max(); }
    void Stop() override { isStopped = true; }
    [[nodiscard]] bool IsWaiting() const noexcept override { return isWaiting && !isStopped; }

    bool isWaiting = true;
    bool isStopped = false;
    std::shared_ptr<Connections::Place> place;
};

class ConnectionsTest : public testing::Test {
protected:
    ConnectionsTest() {
        m_limits.connections = 100;
        m_limits.connectionsPerAddress = 10;
        m_limits.connectionsPerNetwork = 40;
        m_connections = std::make_shared<Connections>(m_context, m_limits);
    }

    /// Null when there is no place.
    std::shared_ptr<FakeMember> Connect(const std::string& address) {
        auto member = std::make_shared<FakeMember>();
        member->place = m_connections->Take(boost::asio::ip::make_address(address));
        if (!member->place)
            return nullptr;
        member->place->Hold(member);
        m_members.push_back(member);
        return member;
    }

    /// So many, each with a request under way, so that it cannot be sent away.
    void Fill(const std::string& address, int count) {
        for (int i = 0; i < count; ++i) {
            const auto member = Connect(address);
            ASSERT_NE(member, nullptr) << address << " " << i;
            member->isWaiting = false;
        }
    }

    boost::asio::io_context m_context{1};
    HttpLimits m_limits;
    std::shared_ptr<Connections> m_connections;
    std::vector<std::shared_ptr<FakeMember>> m_members;
};

} // namespace

TEST_F(ConnectionsTest, AddressNetworkAndAllStrangersHaveTheirShare) {
    Fill("192.0.2.1", 10);
    EXPECT_EQ(Connect("192.0.2.1"), nullptr);
    for (const char* address : {"192.0.2.2", "192.0.2.3", "192.0.2.4"})
        Fill(address, 10);
    EXPECT_EQ(Connect("192.0.2.5"), nullptr);
    for (const char* address : {"192.0.3.1", "192.0.3.2", "192.0.3.3", "192.0.3.4", "192.0.4.1"})
        Fill(address, 10);
    EXPECT_EQ(Connect("192.0.5.1"), nullptr);
    EXPECT_EQ(m_connections->Size(), 90U);

    Fill("127.0.0.1", 9);
    EXPECT_NE(Connect("::1"), nullptr);
    EXPECT_EQ(Connect("127.0.0.1"), nullptr);
    EXPECT_EQ(m_connections->Size(), 100U);

    m_members.clear();
    EXPECT_EQ(m_connections->Size(), 0U);
    Fill("192.0.2.1", 10);
}

TEST_F(ConnectionsTest, AddressesOfOneSlash64AreOneNetwork) {
    for (const char* address : {"2001:db8::1", "2001:db8::2", "2001:db8::a:3", "2001:db8:0:0:ffff::4"})
        Fill(address, 10);

    EXPECT_EQ(Connect("2001:db8::5"), nullptr);
    EXPECT_NE(Connect("2001:db8:0:1::5"), nullptr);
}

TEST_F(ConnectionsTest, AddressThatComesInTheFormOfTheOtherVersionIsTheSame) {
    Fill("192.0.2.1", 5);
    Fill("::ffff:192.0.2.1", 5);

    EXPECT_EQ(Connect("::ffff:192.0.2.1"), nullptr);
    EXPECT_EQ(m_members.back()->place->Address(), "192.0.2.1");
    Fill("::ffff:127.0.0.1", 20);
}

TEST_F(ConnectionsTest, SilentStrangerMakesRoomForTheNextOfItsKind) {
    Fill("192.0.2.1", 9);
    const auto silent = Connect("192.0.2.1");
    const auto elsewhere = Connect("192.0.9.1");

    EXPECT_NE(Connect("192.0.2.1"), nullptr);

    EXPECT_TRUE(silent->isStopped);
    EXPECT_FALSE(elsewhere->isStopped);
    EXPECT_EQ(m_connections->Size(), 11U);
}

TEST_F(ConnectionsTest, TwentyAddressesOfSilentConnectionsLockNobodyOut) {
    for (int round = 0; round < 20; ++round) {
        for (int i = 0; i < 10; ++i)
            (void)Connect("2001:db8::" + std::to_string(round + 1));
    }

    EXPECT_EQ(m_connections->Size(), 40U);
    EXPECT_NE(Connect("2001:db8::99"), nullptr);
    EXPECT_NE(Connect("192.0.2.1"), nullptr);
    EXPECT_NE(Connect("127.0.0.1"), nullptr);
}

TEST_F(ConnectionsTest, ClientWithATokenKeepsItsConnectionAndTakesNoStrangersPlace) {
    const auto known = Connect("192.0.2.1");
    known->place->Trust();
    known->place->Trust();

    for (int i = 0; i < 30; ++i)
        (void)Connect("192.0.2.1");

    EXPECT_FALSE(known->isStopped);
    EXPECT_EQ(m_connections->Size(), 11U);
}

TEST_F(ConnectionsTest, StrangersMakeRoomWhenTheWholeHouseIsFull) {
    const auto silent = Connect("192.0.2.1");
    Fill("127.0.0.1", 99);

    EXPECT_NE(Connect("127.0.0.1"), nullptr);

    EXPECT_TRUE(silent->isStopped);
    EXPECT_EQ(m_connections->Size(), 100U);
}

TEST_F(ConnectionsTest, AllAreStoppedAndNoneIsTakenAtTheEnd) {
    const auto one = Connect("192.0.2.1");
    const auto two = Connect("127.0.0.1");

    m_connections->Stop();

    EXPECT_TRUE(one->isStopped && two->isStopped);
    EXPECT_EQ(Connect("127.0.0.1"), nullptr);
}

} // namespace controller
