#include "rehearsal/Timeline.h"

#include "tests/rehearsal/Support.h"

#include <gtest/gtest.h>

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
