#include "controller/audio/HealthWatch.h"

#include "tests/controller/support/FakeScheduler.h"

#include <gtest/gtest.h>

#include <chrono>
#include <utility>

namespace controller::audio::test {

namespace {

using State = Health::State;
using Told = std::vector<std::pair<std::uint32_t, Health>>;

const Health kWell{State::Healthy, ""};
const Health kNoCard{State::Silent, "no card"};
const Health kBroken{State::Unheard, "broken"};

/// A kitchen and a bath that can be asked, a hall that nobody can be asked about, and a garden that never
/// answers. The answers are those of the test.
class HealthWatchTest : public testing::Test {
protected:
    HealthWatchTest() { m_watch.Begin(); }

    [[nodiscard]] bool
    Ask(const std::string& kind, const std::vector<std::string>& texts, const HealthWatch::Answer& answer) {
        if (kind != "pulse")
            return false;
        m_asked.push_back(texts);
        m_answer = answer;
        return true;
    }

    void Answer(const Health& kitchen, const Health& bath) {
        ASSERT_TRUE(m_answer) << "nothing is asked";
        std::exchange(m_answer, nullptr)({kitchen, bath});
    }
    /// Asks and answers.
    void Look(const Health& kitchen, const Health& bath = kWell) {
        while (!m_answer)
            m_scheduler.Advance(std::chrono::seconds(1));
        Answer(kitchen, bath);
    }
    Told Take() { return std::exchange(m_told, {}); }

    FakeScheduler m_scheduler;
    std::vector<std::vector<std::string>> m_asked;
    HealthWatch::Answer m_answer; ///< empty: nothing is asked
    Told m_told;
    HealthWatch m_watch{{{1, {"pulse", "kitchen"}},
                         {2, {"pulse", "bath"}},
                         {3, {"gstreamer", "fakesink"}},
                         {4, {"multicast", "239.255.10.1:5004"}}},
                        {m_scheduler,
                         [this](const std::string& kind,
                                const std::vector<std::string>& texts,
                                const HealthWatch::Answer& answer) { return Ask(kind, texts, answer); },
                         [this](std::uint32_t room, const Health& health) {
                             m_told.emplace_back(room, health);
                         }}};
};

TEST_F(HealthWatchTest, AsksAtTheStartOnceForAllRoomsOfAKindAndTellsWhatIsAnswered) {
    EXPECT_EQ(m_asked, (std::vector<std::vector<std::string>>{{"kitchen", "bath"}}));
    EXPECT_EQ(Take(), Told{});
    Answer(kNoCard, kWell);
    EXPECT_EQ(Take(), (Told{{1, kNoCard}, {2, kWell}}));
}

TEST_F(HealthWatchTest, AsksEverySoOftenSoonerWhileARoomIsNotHeardAndTellsOnlyWhatIsOtherThanBefore) {
    Answer(kWell, kWell);
    (void)Take();
    m_scheduler.Advance(HealthWatch::kCalm - std::chrono::milliseconds(1));
    EXPECT_EQ(m_asked.size(), 1U);
    m_scheduler.Advance(std::chrono::milliseconds(1));
    EXPECT_EQ(m_asked.size(), 2U);
    Answer(kWell, kNoCard);
    EXPECT_EQ(Take(), (Told{{2, kNoCard}}));
    m_scheduler.Advance(HealthWatch::kWorried);
    EXPECT_EQ(m_asked.size(), 3U);
    Answer(kWell, kNoCard);
    EXPECT_EQ(Take(), Told{});
}

TEST_F(HealthWatchTest, WhatIsNotAnsweredIsUnheardAndNotAskedAgainBeforeItIs) {
    m_scheduler.Advance(HealthWatch::kPatience);
    const Health none{State::Unheard, HealthWatch::kNoAnswer};
    EXPECT_EQ(Take(), (Told{{1, none}, {2, none}}));
    m_scheduler.Advance(std::chrono::hours(1));
    EXPECT_EQ(m_asked.size(), 1U);
    Answer(kWell, kWell);
    EXPECT_EQ(Take(), (Told{{1, kWell}, {2, kWell}}));
    m_scheduler.Advance(HealthWatch::kCalm);
    EXPECT_EQ(m_asked.size(), 2U);
}

TEST_F(HealthWatchTest, WhatChangesWhileItIsAskedIsAskedAgain) {
    m_watch.LookAgain("pulse");
    m_watch.LookAgain("pulse");
    EXPECT_EQ(m_asked.size(), 1U);
    Answer(kWell, kWell);
    EXPECT_EQ(m_asked.size(), 2U);
    Answer(kNoCard, kWell);
    EXPECT_EQ(Take(), (Told{{1, kWell}, {2, kWell}, {1, kNoCard}}));
}

TEST_F(HealthWatchTest, WhileAnAnnouncementPlaysNothingIsAskedAndNoAnswerCounts) {
    m_watch.Hold();
    Answer(kNoCard, kNoCard);
    m_scheduler.Advance(HealthWatch::kCalm);
    m_watch.LookAgain("pulse");
    EXPECT_EQ(Take(), Told{});
    EXPECT_EQ(m_asked.size(), 1U);
    m_watch.Resume();
    EXPECT_EQ(m_asked.size(), 2U);
    Answer(kWell, kWell);
    EXPECT_EQ(Take(), (Told{{1, kWell}, {2, kWell}}));
}

TEST_F(HealthWatchTest, WhatWasHeardIsHealthyUntilItIsAnsweredOtherwise) {
    Answer(kNoCard, kNoCard);
    (void)Take();
    for (const std::uint32_t room : {1U, 3U, 4U})
        m_watch.Heard(room);
    EXPECT_EQ(Take(), (Told{{1, kWell}, {3, kWell}})) << "of the garden nobody knows, and nobody ever knew";
    Look(kNoCard, kNoCard);
    EXPECT_EQ(Take(), (Told{{1, kNoCard}}));
}

TEST_F(HealthWatchTest, WhatFailedWhenItPlayedIsBelievedUntilThereIsNewsOrItIsHeard) {
    Answer(kWell, kWell);
    (void)Take();
    m_watch.NotHeard(1, kBroken);
    m_watch.NotHeard(2, kNoCard);
    m_watch.NotHeard(3, kBroken);
    EXPECT_EQ(Take(), (Told{{1, kBroken}, {2, kNoCard}, {3, kBroken}}));
    Look(kWell, kWell);
    EXPECT_EQ(Take(), (Told{{2, kWell}})) << "of the kitchen it says what it said before it failed";
    m_watch.LookAgain("pulse");
    Answer(kWell, kWell);
    EXPECT_EQ(Take(), (Told{{1, kWell}}));
    m_watch.Heard(3);
    EXPECT_EQ(Take(), (Told{{3, kWell}}));
}

TEST_F(HealthWatchTest, OfWhatNeverAnswersNobodyKnowsMoreWhenItWasLate) {
    m_watch.NotHeard(4, kWell);
    EXPECT_EQ(Take(), Told{});
    m_watch.NotHeard(4, kNoCard);
    m_watch.NotHeard(4, kWell);
    EXPECT_EQ(Take(), (Told{{4, kNoCard}, {4, Health{}}}));
}

TEST_F(HealthWatchTest, WhatIsSilentByWishStaysSoHoweverOftenItPlays) {
    const Health wished{State::Silent, ""};
    Answer(wished, kWell);
    (void)Take();
    m_watch.Heard(1);
    EXPECT_EQ(Take(), Told{});
}

} // namespace

} // namespace controller::audio::test
