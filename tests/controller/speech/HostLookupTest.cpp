#include "controller/speech/HostLookup.h"

#include "controller/speech/SpeechError.h"
#include "tests/controller/support/Within.h"

#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <memory>
#include <string>

#include <netdb.h>
#include <netinet/in.h>

namespace controller {

namespace {

using namespace std::chrono_literals;

/// Names are answered when a test wishes it.
class HostLookupTest : public testing::Test {
protected:
    ~HostLookupTest() override { Release(); }

    HostLookup Lookup(const std::string& host) {
        return HostLookup(host, 10200,
                          [asked = m_asked, isReleased = m_isReleased](const std::string&, std::uint16_t) {
                              ++*asked;
                              isReleased.wait();
                              return HostLookup::Answer{std::make_shared<const addrinfo>(), ""};
                          });
    }

    void Release() {
        if (m_isReleased.wait_for(0s) != std::future_status::ready)
            m_release.set_value();
    }

    std::string WhyNot(HostLookup& lookup, std::chrono::milliseconds limit) const {
        try {
            (void)lookup.Find(Patience(m_stop, limit));
        } catch (const SpeechError& error) {
            return error.what();
        }
        return "";
    }

    const StopSignal m_stop;
    const std::shared_ptr<std::atomic<int>> m_asked = std::make_shared<std::atomic<int>>(0);
    std::promise<void> m_release;
    const std::shared_future<void> m_isReleased = m_release.get_future().share();
};

TEST_F(HostLookupTest, ANumericAddressIsNotLookedUp) {
    HostLookup lookup = Lookup("127.0.0.1");
    const auto found = lookup.Find(Patience(m_stop, kPatience));
    ASSERT_TRUE(found);
    const auto* const address =
        reinterpret_cast<const sockaddr_in*>(found->ai_addr); // NOLINT(*-reinterpret-cast)
    EXPECT_EQ(address->sin_addr.s_addr, htonl(INADDR_LOOPBACK));
    EXPECT_EQ(address->sin_port, htons(10200));
    EXPECT_EQ(*m_asked, 0);
    EXPECT_EQ(lookup.Name(), "127.0.0.1 port 10200");
}

TEST_F(HostLookupTest, ANameThatNobodyAnswersIsGivenUpWhenPatienceIsOver) {
    HostLookup lookup = Lookup("piper.lan");
    EXPECT_EQ(WhyNot(lookup, 20ms), "has not spoken within 20 ms");
}

TEST_F(HostLookupTest, WhoComesMeanwhileWaitsForTheSameAnswer) {
    HostLookup lookup = Lookup("piper.lan");
    EXPECT_EQ(WhyNot(lookup, 20ms), "has not spoken within 20 ms");
    EXPECT_EQ(WhyNot(lookup, 20ms), "has not spoken within 20 ms");
    Release();
    EXPECT_TRUE(lookup.Find(Patience(m_stop, kPatience)));
    EXPECT_EQ(*m_asked, 1);
    EXPECT_TRUE(lookup.Find(Patience(m_stop, kPatience)));
    EXPECT_EQ(*m_asked, 2);
}

TEST_F(HostLookupTest, ItHoldsUpNoEndOfTheController) {
    HostLookup lookup = Lookup("piper.lan");
    m_stop.Give();
    EXPECT_EQ(WhyNot(lookup, kPatience), "was stopped, for the controller ends");
}

TEST_F(HostLookupTest, ItsAnswerMayComeWhenNobodyWaitsAnyMore) {
    {
        HostLookup lookup = Lookup("piper.lan");
        EXPECT_EQ(WhyNot(lookup, 20ms), "has not spoken within 20 ms");
    }
    Release();
}

TEST_F(HostLookupTest, ANameThatThereIsNotIsTold) {
    HostLookup lookup("piper.lan", 10200, [](const std::string& /*host*/, std::uint16_t /*port*/) {
        return HostLookup::Answer{nullptr, "Name or service not known"};
    });
    EXPECT_EQ(WhyNot(lookup, kPatience), "cannot be reached: piper.lan: Name or service not known");
}

TEST_F(HostLookupTest, TheMachinesOwnNameIsFound) {
    HostLookup lookup("localhost", 10200);
    EXPECT_TRUE(lookup.Find(Patience(m_stop, kPatience)));
}

} // namespace

} // namespace controller
