#include "tests/rehearsal/Support.h"

#include <gtest/gtest.h>

namespace {

const std::string kArm10 = R"({"do":"command","name":"arm","params":{"ms":"10"}})";
const std::string kManaged10 = R"({"do":"command","name":"arm_managed","params":{"ms":"10"}})";

std::string Began(unsigned now, const std::string& step) {
    return R"({"t":)" + std::to_string(now) + R"(,"step":)" + step + "}";
}

TEST(TimersTest, OneCounterNumbersTheTimersOfBothKindsAndFiresThemInTheOrderOfArming) {
    EXPECT_EQ(
        Played(kArm10 + "\n" + kManaged10 + "\n" + kArm10 + "\n" + R"({"do":"advance","ms":10})"),
        (Lines{Began(0, kArm10), R"({"t":0,"call":"VqBaseDriver.AddTimer","args":[10,1],"returns":1})",
               Began(0, kManaged10), R"({"t":0,"call":"ITimerManager.AddTimer","args":[10,1],"returns":2})",
               Began(0, kArm10), R"({"t":0,"call":"VqBaseDriver.AddTimer","args":[10,1],"returns":3})",
               Began(0, R"({"do":"advance","ms":10})"), R"({"t":10,"timer":1,"of":"agent"})",
               R"({"t":10,"timer":2,"of":"announcement"})", R"({"t":10,"timer":3,"of":"agent"})"}));
}

TEST(TimersTest, EarliestFiresFirstAndTheRestWaits) {
    const std::string late = R"({"do":"command","name":"arm","params":{"ms":"4294967295","unit":"2"}})";
    const std::string early = R"({"do":"command","name":"arm_managed","params":{"ms":"1","unit":"2"}})";
    EXPECT_EQ(
        Played(late + "\n" + early + "\n" + R"({"do":"advance","ms":4294967294999})" + "\n" +
               R"({"do":"advance","ms":1})"),
        (Lines{Began(0, late), R"({"t":0,"call":"VqBaseDriver.AddTimer","args":[4294967295,2],"returns":1})",
               Began(0, early), R"({"t":0,"call":"ITimerManager.AddTimer","args":[1,2],"returns":2})",
               Began(0, R"({"do":"advance","ms":4294967294999})"),
               R"({"t":1000,"timer":2,"of":"announcement"})",
               R"({"t":4294967294999,"step":{"do":"advance","ms":1}})",
               R"({"t":4294967295000,"timer":1,"of":"agent"})"}));
}

TEST(TimersTest, AnIntervalOfZeroFiresAtTheNextAdvanceEvenOfZero) {
    const std::string arm0 = R"({"do":"command","name":"arm","params":{"ms":"0"}})";
    EXPECT_EQ(
        Played(arm0 + "\n" + R"({"do":"command","name":"nothing"})" + "\n" + R"({"do":"advance","ms":0})"),
        (Lines{Began(0, arm0), R"({"t":0,"call":"VqBaseDriver.AddTimer","args":[0,1],"returns":1})",
               Began(0, R"({"do":"command","name":"nothing"})"), Began(0, R"({"do":"advance","ms":0})"),
               R"({"t":0,"timer":1,"of":"agent"})"}));
}

TEST(TimersTest, WhatIsArmedOnTheWayFiresInTheSameAdvance) {
    const std::string again = R"({"do":"command","name":"again","params":{"count":"2"}})";
    EXPECT_EQ(Played(again + "\n" + kArm10 + "\n" + R"({"do":"advance","ms":10})"),
              (Lines{Began(0, again), Began(0, kArm10),
                     R"({"t":0,"call":"VqBaseDriver.AddTimer","args":[10,1],"returns":1})",
                     Began(0, R"({"do":"advance","ms":10})"), R"({"t":10,"timer":1,"of":"agent"})",
                     R"({"t":10,"call":"VqBaseDriver.AddTimer","args":[0,1],"returns":2})",
                     R"({"t":10,"timer":2,"of":"agent"})",
                     R"({"t":10,"call":"VqBaseDriver.AddTimer","args":[0,1],"returns":3})",
                     R"({"t":10,"timer":3,"of":"agent"})"}));
}

TEST(TimersTest, KillTimerShowsTheIdAsItWasPassedInAndSetsItToZero) {
    const std::string kill1 = R"({"do":"command","name":"kill","params":{"id":"1"}})";
    const std::string kill0 = R"({"do":"command","name":"kill","params":{"id":"0"}})";
    const std::string kill9 = R"({"do":"command","name":"kill","params":{"id":"9"}})";
    EXPECT_EQ(
        Played(kManaged10 + "\n" + kill1 + "\n" + kill0 + "\n" + kill9 + "\n" +
               R"({"do":"advance","ms":10})"),
        (Lines{Began(0, kManaged10), R"({"t":0,"call":"ITimerManager.AddTimer","args":[10,1],"returns":1})",
               Began(0, kill1), R"({"t":0,"call":"ITimerManager.KillTimer","args":[1]})", Began(0, kill0),
               R"({"t":0,"call":"ITimerManager.KillTimer","args":[0]})", Began(0, kill9),
               R"({"t":0,"call":"ITimerManager.KillTimer","args":[9]})",
               Began(0, R"({"do":"advance","ms":10})")}));
}

TEST(TimersTest, TheTimerManagerCancelsNoTimerOfADriver) {
    const std::string kill1 = R"({"do":"command","name":"kill","params":{"id":"1"}})";
    const std::string killAll = R"({"do":"command","name":"kill_all"})";
    EXPECT_EQ(
        Played(kArm10 + "\n" + kManaged10 + "\n" + kill1 + "\n" + killAll + "\n" +
               R"({"do":"advance","ms":10})"),
        (Lines{Began(0, kArm10), R"({"t":0,"call":"VqBaseDriver.AddTimer","args":[10,1],"returns":1})",
               Began(0, kManaged10), R"({"t":0,"call":"ITimerManager.AddTimer","args":[10,1],"returns":2})",
               Began(0, kill1), R"({"t":0,"call":"ITimerManager.KillTimer","args":[1]})", Began(0, killAll),
               R"({"t":0,"call":"ITimerManager.KillAllTimers","args":[]})",
               Began(0, R"({"do":"advance","ms":10})"), R"({"t":10,"timer":1,"of":"agent"})"}));
}

TEST(TimersTest, ADestroyedDriversTimersFireNoMoreAndTheCounterGoesOn) {
    const Outcome run = RunText(kArm10 + "\n" + R"({"do":"advance","ms":4})" + "\n" + R"({"do":"destroy"})" +
                                "\n" + R"({"do":"advance","ms":100})" + "\n" + kArm10);
    EXPECT_EQ(run.error, "");
    const Lines& trace = run.trace;
    EXPECT_EQ(std::count(trace.begin(), trace.end(), R"({"t":4,"step":{"do":"destroy"}})"), 1);
    for (const std::string& line : trace)
        EXPECT_EQ(line.find(R"("timer")"), std::string::npos) << line;
    // The clock, too, has gone on.
    EXPECT_EQ(std::count(trace.begin(), trace.end(),
                         R"({"t":104,"call":"VqBaseDriver.AddTimer","args":[10,1],"returns":2})"),
              1);
}

} // namespace
