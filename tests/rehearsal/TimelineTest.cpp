#include "rehearsal/Timeline.h"

#include "tests/rehearsal/Support.h"

#include <gtest/gtest.h>

#include <tuple>

namespace {

Lines TimelineOf(const std::string& scenario) {
    std::istringstream input(scenario);
    std::ostringstream output;
    Timeline sink(output);
    RunScenario(input, ProbeDriver::Create, sink, true);
    sink.Flush();
    Lines lines;
    bool isRegistering = false;
    for (const std::string& line : SplitLines(output.str())) {
        isRegistering = line.find("  > ") == std::string::npos ? isRegistering
                                                               : line.find("> register") != std::string::npos;
        if (!isRegistering)
            lines.push_back(line);
    }
    return lines;
}

TEST(TimelineTest, EventsOfAnAnnouncementStandUnderItsStart) {
    const Lines lines =
        TimelineOf("{\"do\":\"command\",\"name\":\"own\"}\n"
                   "{\"do\":\"command\",\"name\":\"arm_managed\",\"params\":{\"ms\":\"250\"}}\n"
                   "{\"do\":\"stream_ready\"}\n"
                   "{\"do\":\"advance\",\"ms\":3661001}");
    EXPECT_EQ(lines, (Lines{"     0.000  > create the agent",
                            "     0.000    publishes the face for audio callbacks",
                            "     0.000  > initialize without saved state",
                            "     0.000    driver log, level 0: \"no saved state\"",
                            "     0.000  > command own",
                            "     0.000    announcement 4294967295 starts",
                            "     0.000    the state has changed",
                            "     0.000      4294967295 | looks up the device manager: found",
                            "     0.000      4294967295 | the state of device 100 has changed",
                            "     0.000      4294967295 | failed check in Probe, line 17",
                            "     0.000  > command arm_managed, ms \"250\"",
                            "     0.000    looks up the timer manager: found",
                            "     0.000    timer 1 runs for 0.25 s",
                            "     0.000  > the stream is ready",
                            "     0.000    driver log: \"stream created\"",
                            "     0.000  > 3661.001 s pass",
                            "     0.250    timer 1 fires",
                            "  3661.001  > destroy the agent",
                            "  3661.001    looks up the timer manager: found",
                            "  3661.001    an announcement goes, and its timers",
                            "  3661.001    withdraws the face for audio callbacks"}));
}

TEST(TimelineTest, WhatTheHostDoesInsideACallStandsFurtherIn) {
    const Lines lines = TimelineOf(
        "{\"do\":\"register\"}\n"
        "{\"do\":\"on\",\"call\":\"VqBaseDriver.FireEvent\",\"steps\":[{\"do\":\"save\"},"
        "{\"do\":\"room_asked\",\"id\":12},{\"do\":\"stream_ready\"}]}\n"
        "{\"do\":\"on\",\"call\":\"VqBaseDriver.LogMessage\",\"steps\":[{\"do\":\"command\",\"name\":"
        "\"nothing\"},{\"do\":\"throw\",\"type\":\"const char*\",\"text\":\"full\"}]}\n"
        "{\"do\":\"command\",\"name\":\"own\"}\n");
    const std::string set = "     0.000  > inside the next VqBaseDriver.";
    const std::string inside = "     0.000        4294967295 | ";
    const std::string deeper = "     0.000          4294967295 | ";
    ASSERT_EQ(lines.size(), 24U);
    EXPECT_EQ(
        Lines(lines.begin() + 2, lines.end() - 6),
        (Lines{set + "FireEvent the host saves, then asks: does room 12 belong to what is playing?, "
                     "then says: the stream is ready",
               set + "LogMessage the host sends command nothing, then refuses: \"full\" (const char*)",
               "     0.000  > command own", "     0.000    announcement 4294967295 starts",
               inside + "meanwhile the host saves", "     0.000      state: <kept>0 &amp; \"more\"</kept>",
               inside + "meanwhile the host asks: does room 12 belong to what is playing?",
               "     0.000      yes", inside + "meanwhile the host says: the stream is ready",
               "     0.000      driver log: \"stream created\"",
               deeper + "meanwhile the host sends command nothing",
               deeper + "the host refuses: \"full\" (const char*)",
               "     0.000      the agent throws const char* \"full\"", inside + "the host goes on",
               "     0.000    the state has changed",
               "     0.000      4294967295 | looks up the device manager: found"}));
}

TEST(TimelineTest, WhoeverIsCalledRefusesAndWhoeverIsCalledGoesOn) {
    const std::tuple<std::string, std::string, std::string> kCalled[] = {
        {"IRoomProxy.SetUpVideo", R"("room","params":{"id":"7"})", "the room"},
        {"ILogger.Log", R"("log")", "the logger"},
        {"ITimerManager.KillTimer", R"("kill")", "the timer manager"},
        {"IDigitalAudio.CreateStream", R"("audio")", "the audio service"},
        {"IDeviceManager.SendCommandToDevice", R"("send")", "the navigator"},
        {"IDeviceManager.InvalidateDeviceState", R"("own")", "the device manager"},
        {"VqBaseDriver.AddTimer", R"("arm")", "the host"},
    };
    const auto timeline = [](const std::string& call, const std::string& command, const std::string& step) {
        const Lines lines = TimelineOf("{\"do\":\"register\"}\n"
                                       R"({"do":"on","nth":1,"call":")" +
                                       call + R"(","steps":[)" + step + "]}\n" +
                                       R"({"do":"command","name":)" + command + "}");
        std::string text;
        for (const std::string& line : lines)
            text += line.substr(line.find_first_not_of(" .0123456789|")) + "\n";
        return text;
    };
    for (const auto& [call, command, who] : kCalled) {
        EXPECT_NE(timeline(call, command, R"({"do":"save"})").find("\n" + who + " goes on\n"),
                  std::string::npos)
            << call;
        EXPECT_NE(timeline(call, command, R"({"do":"throw","type":"other","text":"x"})")
                      .find("\n" + who + " refuses: \"x\" (neither const char* nor std::string)\n"),
                  std::string::npos)
            << call;
    }
}

TEST(TimelineTest, TheHowManiethCallIsSaidAsAnOrdinal) {
    const auto first = [](const std::string& nth) {
        return TimelineOf(R"({"do":"on","call":"ILogger.Log","nth":)" + nth +
                          R"(,"steps":[{"do":"save"}]})")[0];
    };
    const std::pair<const char*, const char*> kOrdinals[] = {
        {"2", "2nd"},   {"3", "3rd"},   {"4", "4th"},     {"11", "11th"},
        {"12", "12th"}, {"21", "21st"}, {"113", "113th"}, {"120", "120th"}};
    for (const auto& [nth, ordinal] : kOrdinals)
        EXPECT_EQ(first(nth), "     0.000  > inside the " + std::string(ordinal) +
                                  " ILogger.Log from here on the host saves");
}

TEST(TimelineTest, EveryEventTakesOneLine) {
    for (const std::string& line :
         TimelineOf("{\"do\":\"request\",\"name\":\"echo\",\"params\":{\"text\":\"a\\nb\\u0001c\"}}\n"
                    "{\"do\":\"command\",\"name\":\"log\",\"params\":{\"text\":\"a\\r\\nb\"}}\n"
                    "{\"do\":\"command\",\"name\":\"no\\nne\"}\n"))
        EXPECT_EQ(line.substr(0, 12), "     0.000  ") << line;
}

TEST(TimelineTest, LongTextsAreCutBetweenCharacters) {
    std::string text;
    for (unsigned index = 0; index < 1000; ++index)
        text += "ü";
    const Lines lines =
        TimelineOf("{\"do\":\"request\",\"name\":\"echo\",\"params\":{\"text\":\"" + text + "\"}}");
    ASSERT_GE(lines.size(), 6U);
    EXPECT_EQ(lines[5].substr(0, 31), "     0.000    reply: <echo>üü");
    EXPECT_NE(lines[5].find("ü… (2013 bytes)"), std::string::npos) << lines[5];
}

TEST(TimelineTest, PopupsShowTheirTextOrTheVariableItIsBoundTo) {
    const Lines lines = TimelineOf(
        "{\"do\":\"command\",\"name\":\"send\",\"params\":{\"name\":\"SHOW_POPUP\",\"text\":\"d.png\"}}");
    ASSERT_GE(lines.size(), 7U);
    EXPECT_EQ(lines[6], "     0.000    navigator 5: popup variable 4 of device 9, image \"d.png\"");
}

} // namespace
