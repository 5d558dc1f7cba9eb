#include "rehearsal/Reaction.h"
#include "tests/rehearsal/Support.h"

#include <gtest/gtest.h>

namespace {

TEST(ReactionStepTest, OnReadsCallNumberAndSteps) {
    const Step step = Step::Read(
        R"({"do":"on","call":"IRoomProxy.SetUpVideo","nth":4294967295,"steps":[{"do":"command","name":"x",)"
        R"("params":{"a":"b"}},{"do":"request","name":"get_announcements"},{"do":"request","name":)"
        R"("get_announcement"},{"do":"stream_ready"},{"do":"play_done"},{"do":"room_asked","id":7},{"do":"save"},)"
        R"({"do":"throw","type":"const char*","text":"t"}]})");
    EXPECT_EQ(step.kind, StepKind::On);
    ASSERT_TRUE(step.reaction);
    EXPECT_EQ(step.reaction->call, "IRoomProxy.SetUpVideo");
    EXPECT_EQ(step.reaction->nth, 4294967295);
    const auto& steps = step.reaction->steps;
    ASSERT_EQ(steps.size(), 8U);
    const StepKind kinds[] = {StepKind::Command,     StepKind::Request,  StepKind::Request,
                              StepKind::StreamReady, StepKind::PlayDone, StepKind::RoomAsked,
                              StepKind::Save,        StepKind::Throw};
    for (std::size_t index = 0; index < steps.size(); ++index)
        EXPECT_EQ(steps[index].kind, kinds[index]) << index;
    EXPECT_EQ(steps[0].params, (std::vector<std::pair<std::string, std::string>>{{"a", "b"}}));
    EXPECT_EQ(steps[5].roomId, 7U);
    EXPECT_EQ(steps[7].thrownType, ThrownType::Characters);
    EXPECT_EQ(steps[7].thrownText, "t");
}

TEST(ReactionStepTest, TheNumberOfTheCallAndTheTextThrownMayBeLeftOut) {
    const Step step =
        Step::Read(R"({"do":"on","call":"ILogger.Log","steps":[{"do":"throw","type":"other"}]})");
    EXPECT_EQ(step.reaction->nth, 1U);
    EXPECT_EQ(step.reaction->steps[0].thrownType, ThrownType::Other);
    EXPECT_EQ(step.reaction->steps[0].thrownText, "");
    EXPECT_EQ(Step::Read(R"({"do":"on","call":"ILogger.Log","steps":[{"do":"throw","type":"std::string"}]})")
                  .reaction->steps[0]
                  .thrownType,
              ThrownType::String);
}

TEST(ReactionStepTest, EveryCallOfTheListIsKnown) {
    for (const std::string_view call : kReactionCalls)
        EXPECT_EQ(Step::Read(R"({"do":"on","steps":[{"do":"save"}],"call":")" + std::string(call) + "\"}")
                      .reaction->call,
                  call);
    EXPECT_EQ(std::size(kReactionCalls), 17U);
}

TEST(ReactionStepTest, OnAndItsStepsAreEchoedAsTheyWereRead) {
    const std::string line =
        R"({"steps":[{"params":{"b":"ü\n","a":""},"name":"x","do":"command"},{"id":7,"do":"room_asked"},)"
        R"({"text":"","do":"throw","type":"other"}],"nth":2,"call":"ILogger.Log","do":"on"})";
    const Step step = Step::Read(line);
    EXPECT_EQ(step.echo, line);
    EXPECT_EQ(step.reaction->steps[0].echo, R"({"params":{"b":"ü\n","a":""},"name":"x","do":"command"})");
    EXPECT_EQ(step.reaction->steps[1].echo, R"({"id":7,"do":"room_asked"})");
    EXPECT_EQ(step.reaction->steps[2].echo, R"({"text":"","do":"throw","type":"other"})");
}

TEST(ReactionStepTest, OfDoubledMembersOfAReactionTheLastCounts) {
    EXPECT_EQ(
        EchoOf(
            R"({"do":"on","call":"x","call":"ILogger.Log","steps":7,"steps":[{"do":"host","do":"save"}]})"),
        R"({"do":"on","call":"ILogger.Log","steps":[{"do":"save"}]})");
    EXPECT_EQ(
        EchoOf(R"({"do":"on","call":"ILogger.Log","steps":[{"do":"room_asked","id":[{"a":1}],"id":1}]})"),
        R"({"do":"on","call":"ILogger.Log","steps":[{"do":"room_asked","id":1}]})");
    EXPECT_EQ(EchoOf(R"({"do":"host","rooms":[{"do":"save"}],"rooms":[1]})"), R"({"do":"host","rooms":[1]})");
}

std::string OnLine(const std::string& members) {
    return R"({"do":"on",)" + members + "}";
}

std::string WithSteps(const std::string& steps) {
    return OnLine(R"("call":"ILogger.Log","steps":)" + steps);
}

using Faults = std::vector<std::pair<std::string, std::string>>;

const std::string kMustBeSteps = "; it must be a list of at least one step";
const std::string kInside = "; from inside a call it is one of \"command\", \"request\", \"stream_ready\", "
                            "\"play_done\", \"room_asked\", \"save\", \"throw\"";

/// Each line is refused with a message that begins so.
void ExpectRefused(const Faults& faults) {
    for (const auto& [line, fault] : faults)
        EXPECT_EQ(FaultOf(line).substr(0, fault.size()), fault) << line;
}

TEST(ReactionStepTest, ABadCallOrNumberIsRefusedWithWhatWouldBeRight) {
    const std::string steps = R"("steps":[{"do":"save"}])";
    ExpectRefused({
        {OnLine(steps), R"("call" is missing; it must be a text)"},
        {OnLine(R"("call":7,)" + steps), R"("call" is a number; it must be a text)"},
        {OnLine(R"("call":"ILogger.log",)" + steps),
         R"(unknown "call" "ILogger.log"; it is one of "VqBaseDr)"},
        {OnLine(R"("call":"IRoomProxy.CancelRestoringState",)" + steps),
         R"(unknown "call" "IRoomProxy.Cancel)"},
        {OnLine(R"("call":"Log",)" + steps), R"(unknown "call" "Log"; it is one of)"},
        {OnLine(R"("call":"ILogger.Log","nth":0,)" + steps),
         R"("nth" is 0; it must be a whole number from 1 to 4294967295)"},
        {OnLine(R"("call":"ILogger.Log","nth":4294967296,)" + steps),
         R"("nth" is a number too large; it must)"},
        {OnLine(R"("call":"ILogger.Log","nth":null,)" + steps), R"("nth" is null; it must)"},
        {OnLine(R"("call":"ILogger.Log","nth":1.0,)" + steps), R"("nth" is a number with fraction)"},
        {OnLine(R"("call":"ILogger.Log","times":1,)" + steps),
         R"(unknown member "times"; "on" takes "call", "nth", "steps")"},
    });
}

TEST(ReactionStepTest, AListOfOtherThanStepsIsRefused) {
    ExpectRefused({
        {OnLine(R"("call":"ILogger.Log")"), R"("steps" is missing)" + kMustBeSteps},
        {WithSteps("[]"), R"("steps" is an empty list)" + kMustBeSteps},
        {WithSteps("null"), R"("steps" is null)" + kMustBeSteps},
        {WithSteps("{}"), R"("steps" is an object)" + kMustBeSteps},
        {WithSteps("[1]"), R"(in "steps", element 1 is a number)" + kMustBeSteps},
        {WithSteps(R"([{"do":"save"},[]])"), R"(in "steps", element 2 is a list)" + kMustBeSteps},
        {WithSteps("[{}]"), R"(in "steps", step 1: "do" is missing)" + kInside},
        {WithSteps(R"([{"do":7}])"), R"(in "steps", step 1: "do" is a number)" + kInside},
        {R"({"do":"host","rooms":[{"do":"save"}]})", R"(in "rooms", element 1 is an object; it must be)"},
    });
}

TEST(ReactionStepTest, ABadStepIsRefusedWithItsPlace) {
    ExpectRefused({
        {WithSteps(R"([{"do":"save"},{"do":"advance","ms":1}])"),
         R"(in "steps", step 2: unknown "do" "advance")" + kInside},
        {WithSteps(R"([{"do":"save","ms":1}])"),
         R"(in "steps", step 1: unknown member "ms"; "save" takes none)"},
        {WithSteps(R"([{"do":"room_asked"}])"), R"(in "steps", step 1: "id" is missing; it must be)"},
        {WithSteps(R"([{"do":"room_asked","id":[{"do":"save"}]}])"),
         R"(in "steps", step 1: "id" is a list; it must be)"},
        {WithSteps(R"([{"do":"command","name":"x","params":{"a":1}}])"),
         R"(in "steps", step 1: in "params", "a" is a number; it must be)"},
        {WithSteps(R"([{"do":"request","name":"add_room"}])"),
         R"(in "steps", step 1: "name" is "add_room"; from inside a call it must be "get_announcements" or )"},
    });
}

TEST(ReactionStepTest, OnlyWhatAHostDoesInsideACallMayStandInAReaction) {
    for (const std::string kind : {"host", "create", "initialize", "register", "advance", "destroy", "on"}) {
        std::string fault = R"(in "steps", step 1: unknown "do" ")";
        fault.append(kind).append("\"").append(kInside);
        EXPECT_EQ(FaultOf(WithSteps(R"([{"do":")" + kind + R"("}])")), fault);
    }
}

TEST(ReactionStepTest, AThrowIsTheLastStepOfAReactionAndSaysWhatIsThrown) {
    ExpectRefused({
        {WithSteps(R"([{"do":"throw","type":"other"},{"do":"save"}])"),
         R"(in "steps", step 1: "throw" must be the last step)"},
        {WithSteps(R"([{"do":"throw"}])"), R"(in "steps", step 1: "type" is missing; it must be a text)"},
        {WithSteps(R"([{"do":"throw","type":"int"}])"),
         R"(in "steps", step 1: unknown "type" "int"; it is one of "const char*", "std::string", "other")"},
        {WithSteps(R"([{"do":"throw","type":"other","text":null}])"),
         R"(in "steps", step 1: "text" is null; it must be a text)"},
        {R"({"do":"throw","type":"other"})", R"(unknown "do" "throw"; it is one of "host")"},
    });
}

TEST(ReactionStepTest, ADeepOrWideReactionIsRefusedWithoutBeingBuilt) {
    constexpr std::size_t kMany = 100000;
    std::string deep;
    for (std::size_t index = 0; index < kMany; ++index)
        deep += R"([{"do":"on","call":"ILogger.Log","steps":)";
    std::string end;
    for (std::size_t index = 0; index < kMany; ++index)
        end += "}]";
    EXPECT_EQ(FaultOf(WithSteps(deep + "[]" + end)).substr(0, 35), R"(in "steps", step 1: unknown "do" "o)");
    std::string wide = R"([{"do":"save")";
    for (std::size_t index = 0; index < kMany; ++index)
        wide += ",\"m" + std::to_string(index) + "\":0";
    EXPECT_EQ(FaultOf(WithSteps(wide + "}]")), "it has more members than any step takes");
}

} // namespace
