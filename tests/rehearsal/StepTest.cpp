#include "rehearsal/Step.h"

#include "tests/rehearsal/Support.h"

#include <gtest/gtest.h>

namespace {

TEST(StepTest, EchoKeepsTheOrderOfMembersAndDropsBlanks) {
    EXPECT_EQ(EchoOf(" {\t\"ms\" : 5 , \"do\" : \"advance\" }\r"), R"({"ms":5,"do":"advance"})");
    EXPECT_EQ(EchoOf(R"({"params":{"b":"1","a":"2"},"name":"x","do":"command"})"),
              R"({"params":{"b":"1","a":"2"},"name":"x","do":"command"})");
}

TEST(StepTest, EchoWritesTextsAsUtf8) {
    EXPECT_EQ(EchoOf(R"({"do":"command","name":"\u00fc\ud83c\udfb5\/\u0001\u007f\"\\"})"),
              "{\"do\":\"command\",\"name\":\"ü🎵/\\u0001\x7F\\\"\\\\\"}");
}

TEST(StepTest, OfDoubledMembersTheLastCounts) {
    const Step step = Step::Read(R"({"do":"advance","ms":"x","do":"advance","ms":7})");
    EXPECT_EQ(step.duration, VirtualTime(7));
    EXPECT_EQ(step.echo, R"({"do":"advance","ms":7})");
    EXPECT_EQ(EchoOf(R"({"do":"command","name":"x","params":{"a":1,"b":"2","a":"3"}})"),
              R"({"do":"command","name":"x","params":{"a":"3","b":"2"}})");
    EXPECT_EQ(EchoOf(R"({"do":"host","rooms":[[1]],"rooms":null})"), R"({"do":"host","rooms":null})");
    EXPECT_EQ(EchoOf(R"({"do":"host","rooms":{"a":{"b":1}},"rooms":[2]})"), R"({"do":"host","rooms":[2]})");
}

TEST(StepTest, AnEarlierDoubleIsNotSavedByALaterFault) {
    EXPECT_EQ(FaultOf(R"({"do":"advance","ms":7,"ms":null})").substr(0, 12), "\"ms\" is null");
}

TEST(StepTest, HostReadsEveryMember) {
    const Step step = Step::Read(
        R"({"do":"host","device_id":4294967295,"rooms":[3,0,4294967295],"digital_audio":false,"logger":false,)"
        R"("device_manager":true,"timer_manager":false,"stream_ready_ms":0,"play_ms":18446744073709551615})");
    EXPECT_EQ(step.kind, StepKind::Host);
    HostSettings settings;
    step.host.ApplyTo(settings);
    EXPECT_EQ(settings.deviceId, 4294967295);
    EXPECT_TRUE(settings.HasRoom(0) && settings.HasRoom(3) && settings.HasRoom(4294967295));
    EXPECT_FALSE(settings.HasRoom(1));
    EXPECT_FALSE(settings.hasDigitalAudio || settings.hasLogger || settings.hasTimerManager);
    EXPECT_TRUE(settings.hasDeviceManager);
    EXPECT_EQ(settings.streamReadyAfter, VirtualTime(0));
    EXPECT_EQ(settings.playDoneAfter, VirtualTime::max());
}

TEST(StepTest, HostLeavesWhatItDoesNotName) {
    HostSettings settings;
    Step::Read(R"({"do":"host","device_id":7,"rooms":[1],"logger":false,"play_ms":5})")
        .host.ApplyTo(settings);
    Step::Read(R"({"do":"host","rooms":null,"stream_ready_ms":null})").host.ApplyTo(settings);
    EXPECT_EQ(settings.deviceId, 7U);
    EXPECT_FALSE(settings.rooms.has_value());
    EXPECT_FALSE(settings.hasLogger);
    EXPECT_TRUE(settings.hasDigitalAudio && settings.hasDeviceManager && settings.hasTimerManager);
    EXPECT_FALSE(settings.streamReadyAfter.has_value());
    EXPECT_EQ(settings.playDoneAfter, VirtualTime(5));
}

TEST(StepTest, SettingsStartWithTheirDefaults) {
    const HostSettings settings;
    EXPECT_EQ(settings.deviceId, 100U);
    EXPECT_TRUE(settings.HasRoom(0) && settings.HasRoom(4294967295));
    EXPECT_TRUE(settings.hasDigitalAudio && settings.hasLogger);
    EXPECT_TRUE(settings.hasDeviceManager && settings.hasTimerManager);
    EXPECT_FALSE(settings.streamReadyAfter || settings.playDoneAfter);
}

TEST(StepTest, MinusZeroIsZero) {
    EXPECT_EQ(Step::Read(R"({"do":"advance","ms":-0})").duration, VirtualTime(0));
}

TEST(StepTest, ParamsAndStateMayBeLeftOut) {
    EXPECT_TRUE(Step::Read(R"({"do":"request","name":""})").params.empty());
    EXPECT_FALSE(Step::Read(R"({"do":"initialize"})").savedState);
    EXPECT_FALSE(Step::Read(R"({"do":"initialize","state":null})").savedState);
    EXPECT_TRUE(Step::Read(R"({"do":"initialize","state":"<a/>"})").savedState);
}

struct BadLine {
    const char* line;
    const char* fault; ///< how the message begins
};

void PrintTo(const BadLine& bad, std::ostream* output) {
    *output << bad.line;
}

class BadLineTest : public testing::TestWithParam<BadLine> {};

TEST_P(BadLineTest, IsRefusedWithWhatIsWrongAndWhatWouldBeRight) {
    const std::string fault = FaultOf(GetParam().line);
    EXPECT_EQ(fault.substr(0, std::string(GetParam().fault).size()), GetParam().fault);
}

INSTANTIATE_TEST_SUITE_P(
    NotJson,
    BadLineTest,
    testing::Values(
        BadLine{"{", "it is not JSON from byte 2 on"},
        BadLine{"save", "it is not JSON from byte 1 on (invalid literal)"},
        BadLine{R"({"do":"save"} x)", "it is not JSON from byte 15 on"},
        BadLine{R"({"do":"save",})", "it is not JSON from byte 14 on"},
        BadLine{R"({'do':'save'})", "it is not JSON from byte 2 on"},
        BadLine{R"({"do":"save"} // x)", "it is not JSON from byte 15 on"},
        BadLine{R"({"do":"advance","ms":01})", "it is not JSON from byte 23 on"},
        BadLine{R"({"do":"advance","ms":+1})", "it is not JSON from byte 22 on"},
        BadLine{R"({"do":"advance","ms":NaN})", "it is not JSON from byte 22 on"},
        BadLine{R"({"do":"command","name":"\ud800"})",
                "it is not JSON from byte 31 on (invalid string: surro"},
        BadLine{R"({"do":"command","name":"\udc00x"})",
                "it is not JSON from byte 30 on (invalid string: surro"},
        BadLine{R"({"do":"command","name":"x","params":{"\ud800":"y"}})", "it is not JSON"},
        BadLine{"{\"do\":\"command\",\"name\":\"\xFF\"}", "it is not JSON from byte 25 on (invalid string"},
        BadLine{"{\"do\":\"command\",\"name\":\"\xC3\"}", "it is not JSON"},
        BadLine{"{\"do\":\"command\",\"name\":\"a\tb\"}", "it is not JSON from byte 26 on (invalid string"},
        BadLine{"\xEF\xBB\xBF{\"do\":\"save\"}", "it is not JSON: a byte order mark stands before it"},
        BadLine{"[]", "it is a list; a step is an object"},
        BadLine{R"([{"do":"save"}])", "it is a list; a step is an object"},
        BadLine{"7", "it is a number; a step is an object"},
        BadLine{"\"save\"", "it is a text; a step is an object"},
        BadLine{"null", "it is null; a step is an object"}));

INSTANTIATE_TEST_SUITE_P(
    UnknownOrMissing,
    BadLineTest,
    testing::Values(
        BadLine{"{}", R"("do" is missing; it is one of "host", "create", "initialize")"},
        BadLine{R"({"do":1})", R"("do" is a number; it is one of)"},
        BadLine{R"({"do":"Save"})", R"(unknown "do" "Save"; it is one of)"},
        BadLine{R"({"do":"save","ms":1})", R"(unknown member "ms"; "save" takes none)"},
        BadLine{R"({"do":"advance","ms":1,"t":1})", R"(unknown member "t"; "advance" takes "ms")"},
        BadLine{R"({"do":"host","stream_ready":1})",
                R"(unknown member "stream_ready"; "host" takes "device)"},
        BadLine{R"({"do":"advance"})", R"("ms" is missing; it must be a whole number of millisec)"},
        BadLine{R"({"do":"command"})", R"("name" is missing; it must be a text)"},
        BadLine{R"({"do":"request","params":{}})", R"("name" is missing; it must be a text)"},
        BadLine{R"({"do":"room_asked"})", R"("id" is missing; it must be a whole number from 0 to)"}));

INSTANTIATE_TEST_SUITE_P(
    IllTyped,
    BadLineTest,
    testing::Values(
        BadLine{R"({"do":"advance","ms":"1"})", R"("ms" is a text; it must be a whole number)"},
        BadLine{R"({"do":"advance","ms":null})", R"("ms" is null; it must be)"},
        BadLine{R"({"do":"advance","ms":-1})", R"("ms" is a number below 0; it must be)"},
        BadLine{R"({"do":"advance","ms":1.0})", R"("ms" is a number with fraction or exponent; it must be)"},
        BadLine{R"({"do":"advance","ms":1e3})", R"("ms" is a number with fraction or exponent; it must be)"},
        BadLine{R"({"do":"advance","ms":18446744073709551616})", R"("ms" is a number too large; it must be)"},
        BadLine{R"({"do":"advance","ms":-99999999999999999999})", R"("ms" is a number below 0; it must be)"},
        BadLine{R"({"do":"room_asked","id":4294967296})", R"("id" is a number too large; it must be)"},
        BadLine{R"({"do":"room_asked","id":true})", R"("id" is a flag; it must be)"},
        BadLine{R"({"do":"host","device_id":null})", R"("device_id" is null; it must be)"},
        BadLine{R"({"do":"host","rooms":7})", R"("rooms" is a number; it must be null or a list)"},
        BadLine{R"({"do":"host","rooms":[1,"2"]})",
                R"(in "rooms", element 2 is a text; it must be null or a list)"},
        BadLine{R"({"do":"host","rooms":[4294967296]})",
                R"(in "rooms", element 1 is a number too large; it must be)"},
        BadLine{R"({"do":"host","rooms":[-1]})", R"(in "rooms", element 1 is a number below 0; it must be)"},
        BadLine{R"({"do":"host","rooms":[1.5]})", R"(in "rooms", element 1 is a number with fraction)"},
        BadLine{R"({"do":"host","rooms":[[1]]})", R"(in "rooms", element 1 is a list; it must be)"},
        BadLine{R"({"do":"host","logger":1})", R"("logger" is a number; it must be true or false)"},
        BadLine{R"({"do":"host","digital_audio":null})",
                R"("digital_audio" is null; it must be true or false)"},
        BadLine{R"({"do":"host","play_ms":-1})",
                R"("play_ms" is a number below 0; it must be null or a whole)"},
        BadLine{R"({"do":"host","stream_ready_ms":0.5})", R"("stream_ready_ms" is a number with fraction)"},
        BadLine{R"({"do":"command","name":null})", R"("name" is null; it must be a text)"},
        BadLine{R"({"do":"command","name":"x","params":null})", R"("params" is null; it must be an object)"},
        BadLine{R"({"do":"command","name":"x","params":[]})", R"("params" is a list; it must be an object)"},
        BadLine{R"({"do":"command","name":"x","params":{"a":1}})",
                R"(in "params", "a" is a number; it must be an obj)"},
        BadLine{R"({"do":"command","name":"x","params":{"a":{"b":"c"}}})",
                R"(in "params", "a" is an object; it must)"},
        BadLine{R"({"do":"initialize","state":7})", R"("state" is a number; it must be null or a text)"},
        BadLine{R"({"do":"initialize","state":""})", R"("state" is not XML, as it must be)"},
        BadLine{R"({"do":"initialize","state":"<a>"})", R"("state" is not XML, as it must be)"},
        BadLine{R"({"do":"initialize","state":"<!DOCTYPE a><a/>"})",
                R"("state" is not XML, as it must be)"}));

TEST(StepTest, AZeroByteEndsNothing) {
    EXPECT_EQ(FaultOf(std::string("{\"do\":\"save\"}\0 and more", 22)),
              "it is not JSON: it holds a zero byte");
}

TEST(StepTest, DeepAndWideLinesAreRefusedWithoutBeingBuilt) {
    constexpr std::size_t kMany = 1000000;
    EXPECT_EQ(FaultOf(std::string(kMany, '[')), "it is not JSON from byte 1000001 on");
    EXPECT_EQ(FaultOf(R"({"do":"host","rooms":)" + std::string(kMany, '[') + std::string(kMany, ']') + "}")
                  .substr(0, 29),
              "in \"rooms\", element 1 is a li");
    std::string wide = "{\"do\":\"save\"";
    for (std::size_t index = 0; index < kMany; ++index)
        wide += ",\"m" + std::to_string(index) + "\":0";
    EXPECT_EQ(FaultOf(wide + "}"), "it has more members than any step takes");
}

TEST(StepTest, ManyParametersAreNoTrouble) {
    std::string line = R"({"do":"command","name":"x","params":{"p":"")";
    constexpr std::size_t kMany = 200000;
    for (std::size_t index = 0; index < kMany; ++index)
        line += ",\"m" + std::to_string(index) + "\":\"\"";
    EXPECT_EQ(Step::Read(line + "}}").params.size(), kMany + 1);
}

} // namespace
