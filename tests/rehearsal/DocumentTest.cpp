#include "framework/DriverModule.h"
#include "rehearsal/Timeline.h"
#include "tests/rehearsal/Support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

namespace {

/// The lines of the page's first block of this language.
Lines BlockOf(const std::string& language) {
    std::ifstream page(DOCUMENTS "/rehearsal.md");
    Lines lines;
    bool isInside = false;
    for (std::string line; std::getline(page, line);) {
        if (isInside && line == "```")
            break;
        if (isInside)
            lines.push_back(line);
        isInside = isInside || line == "```" + language;
    }
    return lines;
}

/// What the page's scenario prints.
template <class Sink>
Lines Printed() {
    std::string scenario;
    for (const std::string& line : BlockOf("jsonl"))
        scenario += line + "\n";
    std::istringstream input(scenario);
    std::ostringstream output;
    Sink sink(output);
    const DriverModule module(MODULE);
    RunScenario(
        input, [&](IInstanceManager& instances) { return module.Create(instances); }, sink, false);
    sink.Flush();
    return SplitLines(output.str());
}

/// Every line that is shown is printed in this order, and between two of them nothing, where no "…" says so.
void ExpectShown(const Lines& shown, const Lines& printed) {
    ASSERT_FALSE(shown.empty());
    auto next = printed.end();
    for (std::size_t index = 0; index < shown.size(); ++index) {
        if (shown[index] == "…")
            continue;
        const bool mayLeaveOut = index == 0 || shown[index - 1] == "…";
        if (mayLeaveOut)
            next = std::find(index == 0 ? printed.begin() : next, printed.end(), shown[index]);
        ASSERT_NE(next, printed.end()) << shown[index];
        EXPECT_EQ(*next, shown[index]);
        ++next;
    }
}

TEST(DocumentTest, TheTimelineOfThePageIsTrue) {
    ExpectShown(BlockOf("text"), Printed<Timeline>());
}

TEST(DocumentTest, TheTraceOfThePageIsTrue) {
    ExpectShown(BlockOf("json"), Printed<JsonTrace>());
}

} // namespace
