#include "rehearsal/Schedule.h"

#include <gtest/gtest.h>

#include <string>

namespace {

class ScheduleTest : public testing::Test {
protected:
    void Note(VirtualTime delay, const std::string& what, std::uint32_t id = 0, const void* owner = nullptr) {
        m_schedule.Add(delay, owner, id, [this, what] {
            m_done += what + "@" + std::to_string(m_schedule.Now().count()) + " ";
        });
    }

    Schedule m_schedule;
    std::string m_done;
};

TEST_F(ScheduleTest, DoesWhatIsDueEarliestFirst) {
    Note(VirtualTime(20), "b");
    Note(VirtualTime(10), "a");
    Note(VirtualTime(31), "late");
    m_schedule.Advance(VirtualTime(30));
    EXPECT_EQ(m_done, "a@10 b@20 ");
    EXPECT_EQ(m_schedule.Now(), VirtualTime(30));
}

TEST_F(ScheduleTest, DoesWhatIsDueAtOneMomentInTheOrderOfAdding) {
    Note(VirtualTime(10), "a");
    m_schedule.Advance(VirtualTime(5));
    Note(VirtualTime(5), "b");
    Note(VirtualTime(5), "c");
    m_schedule.Advance(VirtualTime(5));
    EXPECT_EQ(m_done, "a@10 b@10 c@10 ");
}

TEST_F(ScheduleTest, DoesWhatIsAddedOnTheWay) {
    m_schedule.Add(VirtualTime(10), nullptr, 0, [this] {
        Note(VirtualTime(0), "now");
        Note(VirtualTime(10), "then");
        Note(VirtualTime(11), "late");
    });
    m_schedule.Advance(VirtualTime(20));
    EXPECT_EQ(m_done, "now@10 then@20 ");
}

TEST_F(ScheduleTest, CancelsByIdAndNeverByZero) {
    Note(VirtualTime(1), "a", 7);
    Note(VirtualTime(1), "b", 8);
    Note(VirtualTime(1), "c");
    m_schedule.Cancel(7);
    m_schedule.Cancel(7);
    m_schedule.Cancel(0);
    m_schedule.Cancel(99);
    m_schedule.Advance(VirtualTime(1));
    EXPECT_EQ(m_done, "b@1 c@1 ");
}

TEST_F(ScheduleTest, CancelsAllOfAnOwner) {
    const int mine = 0;
    const int yours = 0;
    Note(VirtualTime(1), "mine", 1, &mine);
    Note(VirtualTime(2), "mine", 0, &mine);
    Note(VirtualTime(3), "yours", 0, &yours);
    m_schedule.CancelAllOf(&mine);
    m_schedule.Advance(VirtualTime(3));
    EXPECT_EQ(m_done, "yours@3 ");
}

TEST_F(ScheduleTest, NeverDoesWhatIsDueBeyondTheEndOfTheClock) {
    m_schedule.Advance(VirtualTime(10));
    Note(VirtualTime::max() - VirtualTime(10), "last");
    Note(VirtualTime::max() - VirtualTime(9), "never");
    EXPECT_FALSE(m_schedule.CanAdvance(VirtualTime::max() - VirtualTime(9)));
    m_schedule.Advance(VirtualTime::max() - VirtualTime(10));
    EXPECT_EQ(m_done, "last@18446744073709551615 ");
    EXPECT_TRUE(m_schedule.CanAdvance(VirtualTime(0)));
    EXPECT_FALSE(m_schedule.CanAdvance(VirtualTime(1)));
}

} // namespace
