#include "controller/api/streams/RecentEvents.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace controller {

class RecentEventsTest : public testing::Test {
protected:
    void Publish(unsigned count) {
        for (unsigned room = 1; room <= count; ++room)
            m_feed.Publish(events::ScreensWoken{room});
    }

    std::vector<std::uint64_t> NumbersOf(std::size_t limit) {
        std::vector<std::uint64_t> numbers;
        const auto recent = nlohmann::json::parse(m_recent.Last(limit));
        for (const auto& event : recent.at("events"))
            numbers.push_back(event.at("seq"));
        return numbers;
    }

    EventFeed m_feed;
    RecentEvents m_recent{m_feed};
};

TEST_F(RecentEventsTest, BeforeTheFirstThereAreNone) {
    EXPECT_EQ(m_recent.Last(10), R"({"events":[]})");
}

TEST_F(RecentEventsTest, TheLastOnesComeOldestFirstAsASocketIsSentThem) {
    Publish(3);

    EXPECT_EQ(NumbersOf(2), (std::vector<std::uint64_t>{2, 3}));
    EXPECT_EQ(NumbersOf(10), (std::vector<std::uint64_t>{1, 2, 3}));
    const auto last = nlohmann::json::parse(m_recent.Last(1)).at("events").at(0);
    EXPECT_EQ(last.at("type"), "screens_woken");
    EXPECT_EQ(last.at("data"), nlohmann::json({{"room", 3}}));
    EXPECT_TRUE(last.contains("time"));
}

TEST_F(RecentEventsTest, NoMoreAreKeptThanTheLimit) {
    Publish(RecentEvents::kMost + 5);

    const auto numbers = NumbersOf(2 * RecentEvents::kMost);

    ASSERT_EQ(numbers.size(), RecentEvents::kMost);
    EXPECT_EQ(numbers.front(), 6U);
    EXPECT_EQ(numbers.back(), RecentEvents::kMost + 5);
}

} // namespace controller
