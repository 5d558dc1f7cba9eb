#include "tests/rehearsal/Support.h"

#include <gtest/gtest.h>

namespace {

const std::string kPublish =
    R"({"t":0,"call":"IInstanceManager.RegisterInterface","args":["{E869B37E-23C8-4334-9B26-0A96C0EF981C}",1]})";
const std::string kKillAll = R"({"t":0,"call":"ITimerManager.KillAllTimers","args":[]})";
const std::string kWithdraw =
    R"({"t":0,"call":"IInstanceManager.UnregisterInterface","args":["{E869B37E-23C8-4334-9B26-0A96C0EF981C}"]})";

/// A driver without commands, whose boundary is quiet.
class QuietDriver final : public VqBaseAgentDriver {
public:
    explicit QuietDriver(IInstanceManager& instances)
        : VqBaseAgentDriver(instances, DriverMultiplicity::Single) {}

    static std::unique_ptr<VqBaseDriver> Create(IInstanceManager& instances) {
        return std::make_unique<QuietDriver>(instances);
    }
};

Outcome RunQuietly(const std::string& scenario) {
    return RunText(scenario, false, QuietDriver::Create);
}

TEST(RunScenarioTest, AStepThatNeedsTheAgentCreatesInitializesAndRegistersItFirst) {
    for (const std::string step :
         {R"({"do":"command","name":"x"})", R"({"do":"request","name":"x"})", R"({"do":"stream_ready"})",
          R"({"do":"play_done"})", R"({"do":"room_asked","id":1})", R"({"do":"save"})"}) {
        const Outcome run = RunQuietly(step);
        ASSERT_GE(run.trace.size(), 5U);
        EXPECT_EQ(Lines(run.trace.begin(), run.trace.begin() + 4),
                  (Lines{R"({"t":0,"step":{"do":"create"}})", R"({"t":0,"step":{"do":"initialize"}})",
                         R"({"t":0,"step":{"do":"register"}})", R"({"t":0,"step":)" + step + "}"}));
        EXPECT_EQ(run.trace.back(), R"({"t":0,"step":{"do":"destroy"}})");
    }
}

TEST(RunScenarioTest, InitializeAndRegisterNeedOnlyTheAgent) {
    EXPECT_EQ(
        RunQuietly(R"({"do":"initialize","state":"<a/>"})").trace,
        (Lines{R"({"t":0,"step":{"do":"create"}})", R"({"t":0,"step":{"do":"initialize","state":"<a/>"}})",
               R"({"t":0,"step":{"do":"destroy"}})"}));
    EXPECT_EQ(RunQuietly(R"({"do":"register"})").trace,
              (Lines{R"({"t":0,"step":{"do":"create"}})", R"({"t":0,"step":{"do":"register"}})",
                     R"({"t":0,"step":{"do":"destroy"}})"}));
}

TEST(RunScenarioTest, HostAndAdvanceNeedNoAgent) {
    EXPECT_EQ(
        RunQuietly("{\"do\":\"host\"}\n{\"do\":\"advance\",\"ms\":5}\n{\"do\":\"host\",\"logger\":true}")
            .trace,
        (Lines{R"({"t":0,"step":{"do":"host"}})", R"({"t":0,"step":{"do":"advance","ms":5}})",
               R"({"t":5,"step":{"do":"host","logger":true}})"}));
}

TEST(RunScenarioTest, AnAgentThatStillLivesIsDestroyedAtTheEndAndOneThatDoesNotIsNot) {
    EXPECT_EQ(RunQuietly(R"({"do":"create"})").trace,
              (Lines{R"({"t":0,"step":{"do":"create"}})", R"({"t":0,"step":{"do":"destroy"}})"}));
    EXPECT_EQ(RunQuietly("{\"do\":\"create\"}\n{\"do\":\"destroy\"}").trace,
              (Lines{R"({"t":0,"step":{"do":"create"}})", R"({"t":0,"step":{"do":"destroy"}})"}));
    EXPECT_EQ(RunQuietly("").trace, Lines{});
}

TEST(RunScenarioTest, AfterDestroyAStepBeginsAnew) {
    EXPECT_EQ(RunQuietly("{\"do\":\"create\"}\n{\"do\":\"destroy\"}\n{\"do\":\"save\"}").trace,
              (Lines{R"({"t":0,"step":{"do":"create"}})", R"({"t":0,"step":{"do":"destroy"}})",
                     R"({"t":0,"step":{"do":"create"}})", R"({"t":0,"step":{"do":"initialize"}})",
                     R"({"t":0,"step":{"do":"register"}})", R"({"t":0,"step":{"do":"save"}})",
                     R"({"t":0,"step":{"do":"destroy"}})"}));
}

TEST(RunScenarioTest, InitializeAndRegisterMayComeTwice) {
    const Outcome run =
        RunText("{\"do\":\"initialize\",\"state\":\"<old/>\"}\n{\"do\":\"initialize\",\"state\":null}\n"
                "{\"do\":\"register\"}\n{\"do\":\"register\"}\n{\"do\":\"command\",\"name\":\"nothing\"}");
    EXPECT_EQ(run.error, "");
    EXPECT_EQ(Lines(run.trace.begin(), run.trace.begin() + 6),
              (Lines{R"({"t":0,"step":{"do":"create"}})", kPublish,
                     R"({"t":0,"step":{"do":"initialize","state":"<old/>"}})",
                     R"({"t":0,"call":"VqBaseDriver.LogMessage","args":[0,"old"]})",
                     R"({"t":0,"step":{"do":"initialize","state":null}})",
                     R"({"t":0,"call":"VqBaseDriver.LogMessage","args":[0,"no saved state"]})"}));
    EXPECT_EQ(std::count(run.trace.begin(), run.trace.end(),
                         R"({"t":0,"call":"CmdDispatcher.RegisterCmd0","args":["nothing"]})"),
              2);
    EXPECT_EQ(Lines(run.trace.end() - 4, run.trace.end()),
              (Lines{R"({"t":0,"step":{"do":"command","name":"nothing"}})",
                     R"({"t":0,"step":{"do":"destroy"}})", kKillAll, kWithdraw}));
}

TEST(RunScenarioTest, RepliesStatesAndAnswersAreShown) {
    EXPECT_EQ(Played("{\"do\":\"request\",\"name\":\"echo\",\"params\":{\"text\":\"a<b>&\\\"\"}}\n"
                     "{\"do\":\"save\"}\n{\"do\":\"room_asked\",\"id\":12}\n{\"do\":\"room_asked\",\"id\":"
                     "4294967295}\n"
                     "{\"do\":\"stream_ready\"}\n{\"do\":\"play_done\"}"),
              (Lines{R"({"t":0,"step":{"do":"request","name":"echo","params":{"text":"a<b>&\""}}})",
                     R"({"t":0,"reply":"<echo>a&lt;b&gt;&amp;\"</echo>"})", R"({"t":0,"step":{"do":"save"}})",
                     R"({"t":0,"state":"<kept>0 &amp; \"more\"</kept>"})",
                     R"({"t":0,"step":{"do":"room_asked","id":12}})", R"({"t":0,"answer":true})",
                     R"({"t":0,"step":{"do":"room_asked","id":4294967295}})", R"({"t":0,"answer":false})",
                     R"({"t":0,"step":{"do":"stream_ready"}})",
                     R"({"t":0,"call":"VqBaseDriver.LogMessage","args":[6,"stream created"]})",
                     R"({"t":0,"step":{"do":"play_done"}})",
                     R"({"t":0,"call":"VqBaseDriver.LogMessage","args":[6,"announcement complete"]})"}));
}

TEST(RunScenarioTest, WhatNobodyHandlesIsSaid) {
    EXPECT_EQ(
        Played("{\"do\":\"command\",\"name\":\"Nothing\"}\n{\"do\":\"request\",\"name\":\"arm\"}\n"
               "{\"do\":\"command\",\"name\":\"withdraw\"}\n{\"do\":\"stream_ready\"}\n"
               "{\"do\":\"play_done\"}\n{\"do\":\"room_asked\",\"id\":12}"),
        (Lines{R"({"t":0,"step":{"do":"command","name":"Nothing"}})", R"({"t":0,"no_handler":"Nothing"})",
               R"({"t":0,"step":{"do":"request","name":"arm"}})", R"({"t":0,"no_handler":"arm"})",
               R"({"t":0,"step":{"do":"command","name":"withdraw"}})", kWithdraw,
               R"({"t":0,"step":{"do":"stream_ready"}})", R"({"t":0,"no_handler":"AudioStreamCreated"})",
               R"({"t":0,"step":{"do":"play_done"}})", R"({"t":0,"no_handler":"AudioAnnouncementComplete"})",
               R"({"t":0,"step":{"do":"room_asked","id":12}})",
               R"({"t":0,"no_handler":"IsRoomInCurrentAnnouncement"})"}));
}

TEST(RunScenarioTest, ARequestThatReturnsNothingHasNoReply) {
    EXPECT_EQ(Played(R"({"do":"request","name":"no_reply"})"),
              (Lines{R"({"t":0,"step":{"do":"request","name":"no_reply"}})"}));
}

TEST(RunScenarioTest, ExceptionsThatLeaveTheAgentAreShownByTheirKind) {
    EXPECT_EQ(
        Played("{\"do\":\"command\",\"name\":\"throw\",\"params\":{\"what\":\"const char*\"}}\n"
               "{\"do\":\"command\",\"name\":\"throw\",\"params\":{\"what\":\"std::string\"}}\n"
               "{\"do\":\"command\",\"name\":\"throw\"}\n{\"do\":\"command\",\"name\":\"nothing\"}"),
        (Lines{R"({"t":0,"step":{"do":"command","name":"throw","params":{"what":"const char*"}}})",
               R"({"t":0,"thrown":"const char*","text":"a text"})",
               R"({"t":0,"step":{"do":"command","name":"throw","params":{"what":"std::string"}}})",
               R"({"t":0,"thrown":"std::string","text":"another text"})",
               R"({"t":0,"step":{"do":"command","name":"throw"}})", R"({"t":0,"thrown":"other","text":""})",
               R"({"t":0,"step":{"do":"command","name":"nothing"}})"}));
}

TEST(RunScenarioTest, AnAgentThatCannotBeCreatedIsTriedAgainAndItsStepsAreLeftOut) {
    const DriverCreator failing = [](IInstanceManager&) -> std::unique_ptr<VqBaseDriver> {
        throw std::string("no memory");
    };
    const Outcome run =
        RunText("{\"do\":\"register\"}\n{\"do\":\"create\"}\n{\"do\":\"advance\",\"ms\":1}", false, failing);
    EXPECT_EQ(run.error, "");
    EXPECT_EQ(
        run.trace,
        (Lines{R"({"t":0,"step":{"do":"create"}})", R"({"t":0,"thrown":"std::string","text":"no memory"})",
               R"({"t":0,"step":{"do":"create"}})", R"({"t":0,"thrown":"std::string","text":"no memory"})",
               R"({"t":0,"step":{"do":"advance","ms":1}})"}));
}

// Lines.

TEST(RunScenarioTest, BlankLinesAndCommentsAreSkipped) {
    EXPECT_EQ(RunQuietly("# {\"do\":\"save\"}\n\n \t\r\n#\n{\"do\":\"host\"}\r\n\r\n{\"do\":\"host\"}").trace,
              (Lines{R"({"t":0,"step":{"do":"host"}})", R"({"t":0,"step":{"do":"host"}})"}));
}

TEST(RunScenarioTest, ACommentBeginsInTheFirstColumn) {
    const Outcome run = RunQuietly(" # not a comment");
    EXPECT_EQ(run.line, 1U);
    EXPECT_EQ(run.error, "it is not JSON from byte 2 on (invalid literal)");
}

TEST(RunScenarioTest, ABadLineEndsTheRunAndLeavesNothingOfItselfBehind) {
    const Outcome run =
        RunQuietly("{\"do\":\"create\"}\n\n# a comment\n{\"do\":\"sing\"}\n{\"do\":\"save\"}");
    EXPECT_EQ(run.trace, (Lines{R"({"t":0,"step":{"do":"create"}})"})); // and no destroy
    EXPECT_EQ(run.line, 4U);
    EXPECT_EQ(run.error.substr(0, 19), "unknown \"do\" \"sing\"");
}

TEST(RunScenarioTest, ABadStateIsFoundBeforeTheAgentIsCreated) {
    const Outcome run = RunQuietly(R"({"do":"initialize","state":"no XML"})");
    EXPECT_EQ(run.trace, Lines{});
    EXPECT_EQ(run.line, 1U);
}

TEST(RunScenarioTest, CreateWithAnAgentAndDestroyWithoutOneAreBadLines) {
    const Outcome twice = RunQuietly("{\"do\":\"create\"}\n{\"do\":\"create\"}");
    EXPECT_EQ(twice.trace, (Lines{R"({"t":0,"step":{"do":"create"}})"}));
    EXPECT_EQ(twice.line, 2U);
    EXPECT_EQ(twice.error, R"("create" finds an agent that lives; "destroy" it first)");
    const Outcome never = RunQuietly(R"({"do":"destroy"})");
    EXPECT_EQ(never.trace, Lines{});
    EXPECT_EQ(never.error, R"("destroy" finds no agent; "create" one first)");
    EXPECT_EQ(RunQuietly("{\"do\":\"save\"}\n{\"do\":\"destroy\"}\n{\"do\":\"destroy\"}").line, 3U);
}

TEST(RunScenarioTest, TimeCannotBeAdvancedBeyondTheEndOfTheClock) {
    const Outcome run =
        RunQuietly("{\"do\":\"advance\",\"ms\":18446744073709551615}\n{\"do\":\"advance\",\"ms\":0}\n"
                   "{\"do\":\"advance\",\"ms\":1}");
    EXPECT_EQ(run.trace, (Lines{R"({"t":0,"step":{"do":"advance","ms":18446744073709551615}})",
                                R"({"t":18446744073709551615,"step":{"do":"advance","ms":0}})"}));
    EXPECT_EQ(run.line, 3U);
    EXPECT_EQ(run.error, R"("ms" leads beyond the end of the clock; it must be at most 0 by now)");
}

TEST(RunScenarioTest, TheSameScenarioGivesTheSameTrace) {
    const std::string scenario =
        "{\"do\":\"host\",\"stream_ready_ms\":3}\n{\"do\":\"command\",\"name\":\"audio\"}\n"
        "{\"do\":\"command\",\"name\":\"arm\",\"params\":{\"ms\":\"3\"}}\n"
        "{\"do\":\"advance\",\"ms\":3}\n{\"do\":\"save\"}";
    EXPECT_EQ(RunText(scenario, true).trace, RunText(scenario, true).trace);
}

} // namespace
