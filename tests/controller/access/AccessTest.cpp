#include "controller/access/Access.h"

#include "tests/controller/support/FakeScheduler.h"

#include <gtest/gtest.h>

#include <memory>

namespace controller {

namespace {

using namespace std::chrono_literals;

/// Tokens on a clock of the test; what is to be done elsewhere is done when the test says so.
class AccessTest : public testing::Test {
protected:
    AccessTest() : m_access({{"phone", token_secret::Hash("secret"), Rights::Read({"play"})}}, Parts()) {}

    Access::Parts Parts() {
        return {[this](std::function<void()> work) { m_elsewhere.push_back(std::move(work)); }, m_driver,
                [this](const std::string& line) {
                    m_warnings.push_back(line);
                }};
    }

    Access::Done Note() {
        return [this](Access::Verdict verdict, const Rights& rights) {
            m_verdicts.push_back(verdict);
            m_rights = rights;
        };
    }

    void Check(const std::string& token, const std::string& peer = "10.0.0.1") {
        m_access.Check(token, peer, Note());
    }

    /// Also what that gives away; how much there was.
    std::size_t WorkElsewhere() {
        std::size_t count = 0;
        for (; !m_elsewhere.empty() && !HasFailure(); ++count)
            DoOneElsewhere();
        return count;
    }

    void DoOneElsewhere() {
        ASSERT_EQ(m_elsewhere.size(), 1U); // one at a time
        std::exchange(m_elsewhere, {}).front()();
        m_driver.DoPosted();
    }

    using Verdicts = std::vector<Access::Verdict>;
    static constexpr auto kKnown = Access::Verdict::Known;
    static constexpr auto kWrong = Access::Verdict::Wrong;
    static constexpr auto kTooMany = Access::Verdict::TooManyWrong;
    static constexpr auto kBusy = Access::Verdict::Busy;

    std::vector<std::function<void()>> m_elsewhere;
    FakeScheduler m_driver;
    std::vector<std::string> m_warnings;
    Verdicts m_verdicts;
    Rights m_rights;
    Access m_access;
};

} // namespace

TEST_F(AccessTest, KnownTokenIsHashedElsewhereAndOnce) {
    Check("phone.secret");
    EXPECT_TRUE(m_verdicts.empty());
    EXPECT_EQ(WorkElsewhere(), 1U);
    Check("phone.secret");

    EXPECT_EQ(m_verdicts, (Verdicts{kKnown, kKnown}));
    EXPECT_TRUE(m_rights.mayPlay);
    EXPECT_EQ(WorkElsewhere(), 0U);
}

TEST_F(AccessTest, ManyRequestsWithOneTokenAreHashedOnce) {
    for (int i = 0; i < 1000; ++i)
        Check("phone.secret");

    EXPECT_EQ(WorkElsewhere(), 1U);
    EXPECT_EQ(m_verdicts, Verdicts(1000, kKnown));
}

TEST_F(AccessTest, WrongTokensAreRefused) {
    for (const char* token : {"phone.Secret", "phone.", "phone", "", ".", "tablet.secret", "phone.secret "})
        Check(token);
    WorkElsewhere();

    EXPECT_EQ(m_verdicts, Verdicts(7, kWrong));
}

TEST_F(AccessTest, AddressWithTooManyWrongTokensWaitsAMinute) {
    for (int i = 0; i < 12; ++i)
        Check("tablet.x");
    Check("phone.secret", "10.0.0.2");
    WorkElsewhere();
    Verdicts expected(10, kWrong);
    expected.insert(expected.end(), {kTooMany, kTooMany, kKnown});
    EXPECT_EQ(m_verdicts, expected);
    EXPECT_EQ(m_warnings, std::vector<std::string>{
                              "Too many wrong tokens from 10.0.0.1: none are looked at for a minute"});

    m_driver.Advance(61s);
    Check("tablet.x");

    EXPECT_EQ(m_verdicts.back(), kWrong);
}

TEST_F(AccessTest, TokenThatIsKnownAlreadyIsTakenInTheFloodToo) {
    Check("phone.secret");
    WorkElsewhere();
    for (int i = 0; i < 20; ++i)
        Check("tablet.x");

    Check("phone.secret");

    EXPECT_EQ(m_verdicts.back(), kKnown);
}

TEST_F(AccessTest, BurstOfGuessesHasNoMoreHashedThanTheLimit) {
    for (int i = 0; i < 100; ++i)
        Check("phone.guess" + std::to_string(i));

    EXPECT_EQ(WorkElsewhere(), WrongTokens::kOfAnAddress);
    Verdicts expected(10, kWrong);
    expected.insert(expected.end(), 90, kTooMany);
    EXPECT_EQ(m_verdicts, expected);
}

TEST_F(AccessTest, AddressesOfOneNetworkHaveNoMoreHashedThanItsLimit) {
    for (int i = 0; i < 100; ++i)
        Check("phone.guess" + std::to_string(i), "2001:db8::" + std::to_string(i));
    EXPECT_EQ(WorkElsewhere(), WrongTokens::kOfANetwork);

    Check("phone.secret", "2001:db8::abcd");
    EXPECT_EQ(m_verdicts.back(), kTooMany);
    Check("phone.secret", "2001:db8:0:1::1");
    WorkElsewhere();
    EXPECT_EQ(m_verdicts.back(), kKnown);
}

TEST_F(AccessTest, ManyRightTokensAtOnceAreAllTaken) {
    std::vector<Token> tokens;
    tokens.reserve(20);
    for (int i = 0; i < 20; ++i)
        tokens.push_back(
            {"screen" + std::to_string(i), token_secret::Hash("secret"), Rights::Read({"play"})});
    Access access(tokens, Parts());
    for (int i = 0; i < 20; ++i)
        access.Check("screen" + std::to_string(i) + ".secret", "10.0.0.1", Note());

    EXPECT_EQ(WorkElsewhere(), 20U);

    EXPECT_EQ(m_verdicts, Verdicts(20, kKnown));
    EXPECT_TRUE(m_warnings.empty());
}

TEST_F(AccessTest, WhoWasWrongComesAfterThoseWhoWereNot) {
    Check("phone.first", "10.0.0.1");
    WorkElsewhere();
    for (int i = 0; i < 5; ++i)
        Check("phone.guess" + std::to_string(i), "10.0.0.2");
    Check("phone.secret", "192.0.2.1");
    m_verdicts.clear();

    DoOneElsewhere(); // a guess that was begun before
    DoOneElsewhere();

    EXPECT_EQ(m_verdicts, (Verdicts{kWrong, kKnown}));
}

TEST_F(AccessTest, NoMoreWaitThanCanBeHashedInSomeSeconds) {
    for (int i = 0; i < 130; ++i)
        Check("phone.guess" + std::to_string(i), "10.0.0." + std::to_string(i));
    EXPECT_EQ(m_verdicts, Verdicts(30, kBusy));
    for (int i = 0; i < 130; ++i)
        Check("phone.other" + std::to_string(i), "10.1." + std::to_string(i) + ".1");
    EXPECT_EQ(m_verdicts, Verdicts(60, kBusy));
    for (int i = 0; i < 50; ++i)
        Check("phone.guess0", "10.2.0.1"); // hashed anyway
    EXPECT_EQ(m_verdicts.size(), 60U);
}

TEST_F(AccessTest, RightTokensDoNotUseTheLimitUp) {
    for (int i = 0; i < 50; ++i) {
        Check("phone.secret");
        WorkElsewhere();
    }
    for (int i = 0; i < 9; ++i)
        Check("tablet.x");

    EXPECT_EQ(m_verdicts.back(), kWrong);
}

TEST_F(AccessTest, TicketIsGoodOnce) {
    const std::string ticket = m_access.GiveTicket(Rights::Read({"navigator:5"}));

    const auto rights = m_access.TakeTicket(ticket);

    ASSERT_TRUE(rights.has_value());
    EXPECT_EQ(rights->Texts(), std::vector<std::string>{"navigator:5"});
    EXPECT_FALSE(m_access.TakeTicket(ticket).has_value());
    EXPECT_FALSE(m_access.TakeTicket("").has_value());
}

TEST_F(AccessTest, TicketIsGoodForHalfAMinute) {
    const std::string ticket = m_access.GiveTicket(Rights::All());

    m_driver.Advance(30s);

    EXPECT_FALSE(m_access.TakeTicket(ticket).has_value());
}

TEST_F(AccessTest, TicketsThatNobodyTakesDoNotFillTheMemory) {
    std::string last;
    for (std::size_t i = 0; i < Access::kMaxTickets + 100; ++i)
        last = m_access.GiveTicket(Rights::All());

    EXPECT_TRUE(m_access.TakeTicket(last).has_value());
}

TEST(OpenAccessTest, HouseWithoutTokensIsOpen) {
    FakeScheduler driver;
    EXPECT_TRUE(Access({}, {{}, driver, {}}).IsOpen());
}

} // namespace controller
