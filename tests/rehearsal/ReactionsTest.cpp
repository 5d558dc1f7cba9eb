#include "tests/rehearsal/ReactionSupport.h"

#include <gtest/gtest.h>

namespace {

// Which call it is.

TEST(ReactionsTest, TheNthCallIsCountedFromTheStepOnAndReactedToOnce) {
    EXPECT_EQ(Reacted(kLog + On("ILogger.Log", kAsk, R"(,"nth":2)") + kLog + kLog + kLog + kLog),
              (Lines{kLogLine, kLogged, kLogLine, kLogged, kLogLine, kLogged, kAskLine, kYes, kLoggerGoesOn,
                     kLogLine, kLogged, kLogLine, kLogged}));
}

TEST(ReactionsTest, EachReactionCountsFromItsOwnStep) {
    EXPECT_EQ(Reacted(On("ILogger.Log", kAsk, R"(,"nth":3)") + kLog +
                      On("ILogger.Log", kOther, R"(,"nth":1)") + kLog + kLog),
              (Lines{kLogLine, kLogged, kLogLine, kLogged, kOtherLine, kNo, kLoggerGoesOn, kLogLine, kLogged,
                     kAskLine, kYes, kLoggerGoesOn}));
}

TEST(ReactionsTest, OtherCallsDoNotCount) {
    EXPECT_EQ(Reacted(On("IDigitalAudio.PlayFile", kAsk) + kLog + Command("audio")),
              (Lines{kLogLine, kLogged, R"({"t":0,"step":{"do":"command","name":"audio","params":{}}})",
                     R"({"t":0,"call":"IDigitalAudio.CreateStream","args":[]})"}));
}

TEST(ReactionsTest, SeveralDueAtOneCallFollowEachOtherAndItGoesOnOnce) {
    EXPECT_EQ(Reacted(On("ILogger.Log", kAsk, R"(,"nth":2)") + kLog + On("ILogger.Log", kOther) + kLog),
              (Lines{kLogLine, kLogged, kLogLine, kLogged, kAskLine, kYes, kOtherLine, kNo, kLoggerGoesOn}));
}

TEST(ReactionsTest, AThrowDropsThoseBehindIt) {
    EXPECT_EQ(Reacted(On("ILogger.Log", kThrow) + On("ILogger.Log", kAsk) + kLog + kLog),
              (Lines{kLogLine, kLogged, kThrowLine, kThrownLine, kLogLine, kLogged}));
}

TEST(ReactionsTest, CallsInsideAReactionCountForOthersAndMayCauseThem) {
    const std::string inner = R"({"do":"command","name":"log","params":{"text":"a"}})";
    EXPECT_EQ(Reacted(On("ILogger.Log", inner) + On("ILogger.Log", kAsk, R"(,"nth":2)") +
                      On("ILogger.Log", kOther, R"(,"nth":3)") + kLog + kLog),
              (Lines{kLogLine, kLogged,                                // the first
                     kLogLine, kLogged, kAskLine, kYes, kLoggerGoesOn, // the second, inside
                     kLoggerGoesOn, kLogLine, kLogged, kOtherLine, kNo, kLoggerGoesOn}));
}

TEST(ReactionsTest, TheyLiveOnWhenTheAgentIsDestroyedAndCreatedAgain) {
    const Outcome run = RunText(On("ILogger.Log", kAsk, R"(,"nth":2)") + kLog +
                                "{\"do\":\"destroy\"}\n{\"do\":\"create\"}\n{\"do\":\"register\"}\n" + kLog);
    ASSERT_EQ(run.error, "");
    const Lines played = Between(run.trace);
    EXPECT_EQ(played, (Lines{kLogLine, kLogged, kAskLine, kYes, kLoggerGoesOn}));
}

TEST(ReactionsTest, SettingOneNeedsNoAgent) {
    EXPECT_EQ(RunText(On("ILogger.Log", kAsk)).trace,
              (Lines{R"({"t":0,"step":{"do":"on","call":"ILogger.Log","steps":[)" + kAsk + "]}}"}));
}

// What has become of the call when the host acts.

TEST(ReactionsTest, ATimerWhoseArmingThrowsIsArmed) {
    for (const std::string command : {"arm", "arm_managed"}) {
        const bool isDrivers = command == "arm";
        const std::string call = isDrivers ? "VqBaseDriver.AddTimer" : "ITimerManager.AddTimer";
        EXPECT_EQ(
            Reacted(On(call, kThrow) + Command(command, R"({"ms":"5"})") + R"({"do":"advance","ms":5})"),
            (Lines{R"({"t":0,"step":{"do":"command","name":")" + command + R"(","params":{"ms":"5"}}})",
                   R"({"t":0,"call":")" + call + R"(","args":[5,1],"returns":1})", kThrowLine, kThrownLine,
                   R"({"t":0,"step":{"do":"advance","ms":5}})",
                   R"({"t":5,"timer":1,"of":")" + std::string(isDrivers ? "agent" : "announcement") +
                       "\"}"}));
    }
}

TEST(ReactionsTest, ATimerArmedInsideIsNumberedBehindTheOneBeingArmed) {
    EXPECT_EQ(
        Reacted(On("ITimerManager.AddTimer", R"({"do":"command","name":"arm","params":{"ms":"5"}})") +
                Command("arm_managed", R"({"ms":"5"})") + R"({"do":"advance","ms":5})"),
        (Lines{R"({"t":0,"step":{"do":"command","name":"arm_managed","params":{"ms":"5"}}})",
               R"({"t":0,"call":"ITimerManager.AddTimer","args":[5,1],"returns":1})",
               R"({"t":0,"step":{"do":"command","name":"arm","params":{"ms":"5"}}})",
               R"({"t":0,"call":"VqBaseDriver.AddTimer","args":[5,1],"returns":2})",
               R"({"t":0,"goes_on":"ITimerManager.AddTimer"})", R"({"t":0,"step":{"do":"advance","ms":5}})",
               R"({"t":5,"timer":1,"of":"announcement"})", R"({"t":5,"timer":2,"of":"agent"})"}));
}

TEST(ReactionsTest, ATimerWhoseCancellingThrowsIsCancelledButItsIdStays) {
    EXPECT_EQ(Reacted(Command("arm_managed", R"({"ms":"5"})") + On("ITimerManager.KillTimer", kThrow) +
                      Command("kill", R"({"id":"1","tell":"yes"})") + R"({"do":"advance","ms":5})"),
              (Lines{R"({"t":0,"step":{"do":"command","name":"arm_managed","params":{"ms":"5"}}})",
                     R"({"t":0,"call":"ITimerManager.AddTimer","args":[5,1],"returns":1})",
                     R"({"t":0,"step":{"do":"command","name":"kill","params":{"id":"1","tell":"yes"}}})",
                     R"({"t":0,"call":"ITimerManager.KillTimer","args":[1]})", kThrowLine,
                     R"({"t":0,"call":"VqBaseDriver.LogMessage","args":[3,"the id is still 1"]})",
                     kThrownLine, R"({"t":0,"step":{"do":"advance","ms":5}})"}));
}

TEST(ReactionsTest, TheAnswerToACallThatThrowsComesAllTheSame) {
    EXPECT_EQ(
        Reacted(R"({"do":"host","stream_ready_ms":5})"
                "\n" +
                On("IDigitalAudio.CreateStream", kThrow) + Command("audio") + R"({"do":"advance","ms":5})"),
        (Lines{R"({"t":0,"step":{"do":"host","stream_ready_ms":5}})",
               R"({"t":0,"step":{"do":"command","name":"audio","params":{}}})",
               R"({"t":0,"call":"IDigitalAudio.CreateStream","args":[]})", kThrowLine, kThrownLine,
               R"({"t":0,"step":{"do":"advance","ms":5}})", R"({"t":5,"callback":"AudioStreamCreated"})",
               R"({"t":5,"call":"VqBaseDriver.LogMessage","args":[6,"stream created"]})"}));
}

TEST(ReactionsTest, AReleaseThatThrowsHasDroppedTheAnswers) {
    EXPECT_EQ(Reacted(R"({"do":"host","stream_ready_ms":5})"
                      "\n" +
                      Command("audio") + On("IDigitalAudio.ReleaseStream", kThrow) +
                      Command("audio", R"({"release":"yes"})") + R"({"do":"advance","ms":5})"),
              (Lines{R"({"t":0,"step":{"do":"host","stream_ready_ms":5}})",
                     R"({"t":0,"step":{"do":"command","name":"audio","params":{}}})",
                     R"({"t":0,"call":"IDigitalAudio.CreateStream","args":[]})",
                     R"({"t":0,"step":{"do":"command","name":"audio","params":{"release":"yes"}}})",
                     R"({"t":0,"call":"IDigitalAudio.ReleaseStream","args":[]})", kThrowLine, kThrownLine,
                     R"({"t":0,"step":{"do":"advance","ms":5}})"}));
}

// Where an exception ends.

TEST(ReactionsTest, WhatLeavesTheAgentInAStepOfAReactionGoesNoFurther) {
    EXPECT_EQ(
        Reacted(On("ILogger.Log", R"({"do":"command","name":"throw","params":{"what":"const char*"}})") +
                kLog),
        (Lines{kLogLine, kLogged,
               R"({"t":0,"step":{"do":"command","name":"throw","params":{"what":"const char*"}}})",
               R"({"t":0,"thrown":"const char*","text":"a text"})", kLoggerGoesOn}));
}

TEST(ReactionsTest, AfterAThrowInAnAnswerTheAdvanceGoesOn) {
    EXPECT_EQ(
        Reacted(R"({"do":"host","stream_ready_ms":5})"
                "\n" +
                Command("audio") + Command("arm", R"({"ms":"7"})") + On("VqBaseDriver.LogMessage", kThrow) +
                R"({"do":"advance","ms":9})"),
        (Lines{R"({"t":0,"step":{"do":"host","stream_ready_ms":5}})",
               R"({"t":0,"step":{"do":"command","name":"audio","params":{}}})",
               R"({"t":0,"call":"IDigitalAudio.CreateStream","args":[]})",
               R"({"t":0,"step":{"do":"command","name":"arm","params":{"ms":"7"}}})",
               R"({"t":0,"call":"VqBaseDriver.AddTimer","args":[7,1],"returns":1})",
               R"({"t":0,"step":{"do":"advance","ms":9}})", R"({"t":5,"callback":"AudioStreamCreated"})",
               R"({"t":5,"call":"VqBaseDriver.LogMessage","args":[6,"stream created"]})",
               R"({"t":5,"step":{"do":"throw","type":"std::string","text":"not now"}})",
               R"({"t":5,"thrown":"std::string","text":"not now"})", R"({"t":7,"timer":1,"of":"agent"})"}));
}

TEST(ReactionsTest, ACharacterPointerEndsAtItsFirstZeroByte) {
    EXPECT_EQ(
        Reacted(On("ILogger.Log", R"({"do":"throw","type":"const char*","text":"a\u0000b"})") + kLog),
        (Lines{kLogLine, kLogged, R"({"t":0,"step":{"do":"throw","type":"const char*","text":"a\u0000b"}})",
               R"({"t":0,"thrown":"const char*","text":"a"})"}));
}

// A driver that calls its host all its life.

class TalkingDriver final : public VqBaseAgentDriver {
public:
    explicit TalkingDriver(IInstanceManager& instances)
        : VqBaseAgentDriver(instances, DriverMultiplicity::Single) {
        LogMessage(6, "I begin");
    }
    ~TalkingDriver() override {
        try {
            LogMessage(6, "I end");
        } catch (...) { // NOLINT(bugprone-empty-catch): a destructor has nobody to tell
        }
    }
    static std::unique_ptr<VqBaseDriver> Create(IInstanceManager& instances) {
        return std::make_unique<TalkingDriver>(instances);
    }
};

const std::string kBegins = R"({"t":0,"call":"VqBaseDriver.LogMessage","args":[6,"I begin"]})";
const std::string kEnds = R"({"t":0,"call":"VqBaseDriver.LogMessage","args":[6,"I end"]})";
const std::string kDriverGoesOn = R"({"t":0,"goes_on":"VqBaseDriver.LogMessage"})";

TEST(ReactionsTest, ADriverThatIsCreatedOrDestroyedIsNotEntered) {
    const std::string save = R"({"do":"save"})";
    const Outcome run =
        RunText(On("VqBaseDriver.LogMessage", save) + On("VqBaseDriver.LogMessage", save, R"(,"nth":2)") +
                    "{\"do\":\"create\"}",
                false, TalkingDriver::Create);
    ASSERT_EQ(run.trace.size(), 8U);
    EXPECT_EQ(Lines(run.trace.begin() + 2, run.trace.end()),
              (Lines{R"({"t":0,"step":{"do":"create"}})", kBegins, kDriverGoesOn,
                     R"({"t":0,"step":{"do":"destroy"}})", kEnds, kDriverGoesOn}));
}

TEST(ReactionsTest, WhereTheConstructorThrowsThereIsNoAgent) {
    const Outcome run =
        RunText(On("VqBaseDriver.LogMessage", kThrow) + R"({"do":"save"})", false, TalkingDriver::Create);
    ASSERT_EQ(run.error, "");
    EXPECT_EQ(Lines(run.trace.begin() + 1, run.trace.begin() + 5),
              (Lines{R"({"t":0,"step":{"do":"create"}})", kBegins, kThrowLine, kThrownLine}));
}

TEST(ReactionsTest, AnAgentThatIsDestroyedUnseenIsNotReactedTo) {
    const Outcome run = RunText(On("VqBaseDriver.LogMessage", kThrow, R"(,"nth":2)") +
                                    "{\"do\":\"create\"}\n{\"do\":\"nothing\"}",
                                false, TalkingDriver::Create);
    EXPECT_EQ(run.line, 3U);
    EXPECT_EQ(Lines(run.trace.begin() + 1, run.trace.end()),
              (Lines{R"({"t":0,"step":{"do":"create"}})", kBegins}));
}

// Call within call.

/// So many reactions that each cause the next one.
std::string Nested(unsigned count) {
    std::string scenario;
    for (unsigned nth = 1; nth <= count; ++nth)
        scenario += On("ILogger.Log", R"({"do":"command","name":"log","params":{"text":"a"}})",
                       R"(,"nth":)" + std::to_string(nth));
    return scenario + kLog;
}

TEST(ReactionsTest, TheyMayCauseEachOtherToADepthOf200) {
    const Lines lines = Reacted(Nested(200));
    EXPECT_EQ(std::count(lines.begin(), lines.end(), kLoggerGoesOn), 200);
    EXPECT_EQ(std::count(lines.begin(), lines.end(), kLogged), 201);
}

TEST(ReactionsTest, DeeperTheyEndTheRunWithTheLineThatCausedThem) {
    const Outcome run = RunText(Nested(201));
    EXPECT_EQ(run.line, 202U);
    EXPECT_EQ(run.error,
              "reactions cause each other at ILogger.Log, call within call; at most 200 may be going on");
    EXPECT_EQ(std::count(run.trace.begin(), run.trace.end(), kLoggerGoesOn), 0);
    EXPECT_EQ(run.trace.back(), kLogged);
}

} // namespace
