#include "controller/rooms/Popups.h"

#include "tests/controller/support/EventTexts.h"
#include "tests/controller/support/FakeScheduler.h"

#include <gtest/gtest.h>

namespace controller {

namespace {

using namespace std::chrono_literals;
using Texts = std::vector<std::string>;

class FakeVariableStore final : public IVariableStore {
public:
    void WriteVariable(std::uint32_t device,
                       std::uint32_t variable,
                       const std::string& value,
                       WriteDone done) override {
        writes.push_back(std::to_string(device) + " " + std::to_string(variable) + " " + value);
        done("");
    }

    Texts writes;
};

class PopupsTest : public testing::Test {
protected:
    static Popups::Wanted
    Message(const std::string& text, std::chrono::milliseconds delay, std::uint64_t show = 1) {
        Popups::Wanted wanted;
        wanted.message = text;
        wanted.delay = delay;
        wanted.show = show;
        return wanted;
    }

    FakeScheduler m_scheduler;
    EventFeed m_feed;
    FakeVariableStore m_store;
    Variables m_variables{{{9, 4, "Outside", "21"}}, m_store, m_feed};
    EventTexts m_events{m_feed};
    Popups m_popups{m_scheduler, m_variables, m_feed};
};

TEST_F(PopupsTest, APopupHasANumberAndAnEnd) {
    EXPECT_EQ(m_popups.Show(5, Message("Dinner", 5s)), 1U);
    EXPECT_EQ(m_events.Take(), Texts{"shown 1 on 5 \"Dinner\"  5000 ok"});
    m_scheduler.Advance(4999ms);
    ASSERT_EQ(m_popups.Standing().size(), 1U);
    EXPECT_EQ(m_popups.Standing()[0].remaining, 1ms);
    m_scheduler.Advance(1ms);
    EXPECT_TRUE(m_popups.Standing().empty());
    EXPECT_EQ(m_events.Take(), Texts{"gone 1 on 5 time is up"});
    EXPECT_EQ(m_popups.Show(5, Message("Dinner", 5s)), 2U);
}

TEST_F(PopupsTest, ADelayOf0StandsUntilItIsHidden30SecondsAtMost) {
    m_popups.Show(5, Message("Dinner", 0s));
    m_scheduler.Advance(29999ms);
    EXPECT_EQ(m_popups.Standing().size(), 1U);
    m_scheduler.Advance(1ms);
    EXPECT_TRUE(m_popups.Standing().empty());
}

TEST_F(PopupsTest, ALateScreenGetsWhatStillStandsAndNothingStale) {
    Popups::Wanted wanted = Message("Dinner", 5s, 3);
    wanted.image = "dinner.png";
    wanted.hasOkButton = false;
    m_popups.Show(5, wanted);
    m_popups.Show(6, Message("Short", 1s));
    m_scheduler.Advance(2s);
    const auto standing = m_popups.Standing();
    ASSERT_EQ(standing.size(), 1U);
    EXPECT_EQ(standing[0].number, 1U);
    EXPECT_EQ(standing[0].navigator, 5U);
    EXPECT_EQ(standing[0].message, "Dinner");
    EXPECT_EQ(standing[0].image, "dinner.png");
    EXPECT_EQ(standing[0].remaining, 3s);
    EXPECT_FALSE(standing[0].hasOkButton);
    EXPECT_EQ(standing[0].show, 3U);
}

TEST_F(PopupsTest, ANewPopupTakesThePlaceOfTheOneOnItsScreen) {
    m_popups.Show(5, Message("One", 5s));
    m_popups.Show(5, Message("Two", 9s));
    EXPECT_EQ(m_events.Take(), (Texts{"shown 1 on 5 \"One\"  5000 ok", "gone 1 on 5 replaced",
                                      "shown 2 on 5 \"Two\"  9000 ok"}));
    m_scheduler.Advance(5s);
    EXPECT_EQ(m_popups.Standing().size(), 1U);
}

TEST_F(PopupsTest, DismissedOnOneScreenItIsGoneFromEveryScreenOfItsShow) {
    m_popups.Show(5, Message("A", 5s, 1));
    m_popups.Show(6, Message("A", 5s, 1));
    m_popups.Show(7, Message("B", 5s, 2));
    (void)m_events.Take();
    m_popups.DismissOn(5);
    EXPECT_EQ(m_events.Take(), (Texts{"gone 1 on 5 dismissed", "gone 2 on 6 dismissed"}));
    EXPECT_EQ(m_popups.Standing().size(), 1U);
    m_popups.DismissOn(6);
    m_popups.DismissOn(5);
    EXPECT_TRUE(m_events.Take().empty());
}

TEST_F(PopupsTest, AnOkForAPopupThatIsGoneDoesNothing) {
    m_popups.Show(5, Message("A", 1s));
    m_scheduler.Advance(1s);
    m_popups.Show(5, Message("B", 5s));
    (void)m_events.Take();
    EXPECT_FALSE(m_popups.Dismiss(1));
    EXPECT_TRUE(m_events.Take().empty());
    EXPECT_TRUE(m_popups.Dismiss(2));
    EXPECT_EQ(m_events.Take(), Texts{"gone 2 on 5 dismissed"});
}

TEST_F(PopupsTest, ABoundMessageFollowsItsVariable) {
    Popups::Wanted wanted = Message("not used", 5s);
    wanted.binding = MessageBinding{9, 4};
    m_popups.Show(5, wanted);
    EXPECT_EQ(m_events.Take(), Texts{"shown 1 on 5 \"21\"  5000 ok"});
    EXPECT_EQ(m_variables.Set(9, 4, "22", [](const std::string&) {}), Variables::SetResult::Done);
    EXPECT_EQ(m_events.Take(), (Texts{"variable 9 4 \"22\"", "changed 1 on 5 \"22\""}));
    EXPECT_EQ(m_popups.Standing()[0].message, "22");
    EXPECT_EQ(m_store.writes, Texts{"9 4 22"});
}

TEST_F(PopupsTest, BoundToAVariableThatTheHouseDoesNotHaveTheMessageIsEmpty) {
    Popups::Wanted wanted = Message("not used", 5s);
    wanted.binding = MessageBinding{1, 1};
    m_popups.Show(5, wanted);
    EXPECT_EQ(m_popups.Standing()[0].message, "");
}

TEST_F(PopupsTest, AtTheEndEveryPopupIsHidden) {
    m_popups.Show(5, Message("A", 5s));
    m_popups.Show(6, Message("B", 5s));
    (void)m_events.Take();
    m_popups.HideAll();
    EXPECT_EQ(m_events.Take(), (Texts{"gone 1 on 5 hidden", "gone 2 on 6 hidden"}));
    EXPECT_EQ(m_scheduler.Waiting(), 0U);
}

TEST_F(PopupsTest, VariablesRefuseWhatTheyCannotHold) {
    const auto never = [](const std::string&) {
        FAIL();
    };
    EXPECT_EQ(m_variables.Set(9, 5, "x", never), Variables::SetResult::Unknown);
    EXPECT_EQ(m_variables.Set(9, 4, std::string(4097, 'x'), never), Variables::SetResult::TooLong);
    EXPECT_EQ(m_variables.Value(9, 4), "21");
    EXPECT_EQ(m_variables.Value(9, 5), std::nullopt);
    EXPECT_TRUE(m_store.writes.empty());
}

} // namespace

} // namespace controller
