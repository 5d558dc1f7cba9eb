#include "controller/events/EventFeed.h"

#include <gtest/gtest.h>

#include <optional>

namespace controller {

namespace {

using Numbers = std::vector<std::uint64_t>;

TEST(EventFeedTest, EventsAreNumberedFrom1WithoutAGap) {
    EventFeed feed;
    EXPECT_EQ(feed.LastNumber(), 0U);
    feed.Publish(events::StateSaved{});
    Numbers numbers;
    const auto subscription = feed.Subscribe([&](const Event& event) { numbers.push_back(event.number); });
    feed.Publish(events::StateSaved{});
    feed.Publish(events::StateSaved{});
    EXPECT_EQ(numbers, (Numbers{2, 3}));
    EXPECT_EQ(feed.LastNumber(), 3U);
}

TEST(EventFeedTest, WhatASubscriberPublishesReachesEverybodyAfterTheEventThatItWasTold) {
    EventFeed feed;
    Numbers first;
    Numbers second;
    const auto one = feed.Subscribe([&](const Event& event) {
        first.push_back(event.number);
        if (event.number == 1)
            feed.Publish(events::StateSaved{});
    });
    const auto two = feed.Subscribe([&](const Event& event) { second.push_back(event.number); });
    feed.Publish(events::StateSaved{});
    EXPECT_EQ(first, (Numbers{1, 2}));
    EXPECT_EQ(second, (Numbers{1, 2}));
}

TEST(EventFeedTest, ASubscriberMayEndAnySubscriptionWhileItIsTold) {
    EventFeed feed;
    Numbers told;
    std::optional<EventFeed::Subscription> own;
    std::optional<EventFeed::Subscription> other;
    own = feed.Subscribe([&](const Event& event) {
        told.push_back(event.number);
        other.reset();
        own.reset();
    });
    other = feed.Subscribe([&](const Event& /*event*/) { FAIL(); });
    feed.Publish(events::StateSaved{});
    feed.Publish(events::StateSaved{});
    EXPECT_EQ(told, Numbers{1});
}

TEST(EventFeedTest, WhoeverSubscribesWhileAnEventIsToldHearsTheNextOne) {
    EventFeed feed;
    Numbers late;
    std::optional<EventFeed::Subscription> second;
    const auto first = feed.Subscribe([&](const Event& /*event*/) {
        if (!second)
            second = feed.Subscribe([&](const Event& event) { late.push_back(event.number); });
    });
    feed.Publish(events::StateSaved{});
    feed.Publish(events::StateSaved{});
    EXPECT_EQ(late, Numbers{2});
}

} // namespace

} // namespace controller
