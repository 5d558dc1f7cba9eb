#include "controller/audio/OutputSearch.h"

#include "tests/controller/support/FakeScheduler.h"

#include <gtest/gtest.h>

#include <utility>

namespace controller::audio::test {

namespace {

using Names = std::vector<std::string>;

/// Two kinds of servers, which find what the test says.
class OutputSearchTest : public testing::Test {
protected:
    void Find() {
        m_search.Find([this](const std::vector<FoundOutput>& places) {
            Names names;
            for (const FoundOutput& place : places)
                names.push_back(place.name);
            m_told.push_back(names);
        });
    }
    void Answer(const std::string& kind, const Names& names) {
        std::vector<FoundOutput> places;
        for (const std::string& name : names)
            places.push_back({"sound_server", name, {kind, name}});
        const auto found = m_looking.at(kind);
        m_looking.erase(kind);
        found(places);
    }

    FakeScheduler m_scheduler;
    std::map<std::string, OutputSearch::Found> m_looking;
    unsigned m_looks = 0;
    std::vector<Names> m_told;
    OutputSearch m_search{m_scheduler,
                          {"pulse", "gstreamer"},
                          [this](const std::string& kind, const OutputSearch::Found& found) {
                              m_looking[kind] = found;
                              ++m_looks;
                          }};
};

TEST_F(OutputSearchTest, WhatIsFoundStandsInTheOrderOfTheKindsWhicheverIsFirst) {
    Find();
    Answer("gstreamer", {"card"});
    EXPECT_TRUE(m_told.empty());
    Answer("pulse", {"kitchen", "bath"});
    EXPECT_EQ(m_told, (std::vector<Names>{{"kitchen", "bath", "card"}}));
}

TEST_F(OutputSearchTest, SeveralWhoWantToKnowWaitForOneSearch) {
    Find();
    Find();
    EXPECT_EQ(m_looks, 2U);
    Answer("pulse", {"kitchen"});
    Answer("gstreamer", {});
    EXPECT_EQ(m_told, (std::vector<Names>{{"kitchen"}, {"kitchen"}}));
}

TEST_F(OutputSearchTest, AKindThatHangsIsLeftOutAndNotAskedAgainUntilItIsBack) {
    Find();
    Answer("gstreamer", {"card"});
    m_scheduler.Advance(OutputSearch::kPatience);
    EXPECT_EQ(m_told, (std::vector<Names>{{"card"}}));
    Find();
    EXPECT_EQ(m_looks, 3U);
    Answer("gstreamer", {"card"});
    Answer("pulse", {"too late"});
    m_scheduler.Advance(OutputSearch::kPatience);
    Find();
    Answer("pulse", {"kitchen"});
    Answer("gstreamer", {"card"});
    EXPECT_EQ(m_told, (std::vector<Names>{{"card"}, {"card"}, {"kitchen", "card"}}));
}

} // namespace

} // namespace controller::audio::test
