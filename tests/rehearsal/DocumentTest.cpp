#include "framework/DriverModule.h"
#include "rehearsal/Timeline.h"
#include "tests/rehearsal/Support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <string>
#include <vector>

namespace {

struct Block {
    std::string language; ///< empty where the page names none
    Lines lines;
};

/// The page's blocks, in their order.
std::vector<Block> BlocksOf(const std::string& page) {
    const std::string fence = "```";
    std::ifstream text(DOCUMENTS "/" + page);
    std::vector<Block> blocks;
    bool isInside = false;
    for (std::string line; std::getline(text, line);) {
        const bool isFence = line.compare(0, fence.size(), fence) == 0;
        if (isFence && !isInside)
            blocks.push_back({line.substr(fence.size()), {}});
        else if (isInside && !isFence)
            blocks.back().lines.push_back(line);
        isInside = isInside != isFence;
    }
    return blocks;
}

/// What a scenario prints.
template <class Sink>
Lines Printed(const Lines& lines) {
    std::string scenario;
    for (const std::string& line : lines)
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

/// Every timeline and trace of the page is what the scenario before it prints; gives their number.
unsigned ExpectTrue(const std::string& page) {
    Lines scenario;
    unsigned count = 0;
    for (const Block& block : BlocksOf(page)) {
        SCOPED_TRACE(block.lines.empty() ? "an empty block" : block.lines.front());
        if (block.language == "jsonl")
            scenario = block.lines;
        if (block.language != "text" && block.language != "json")
            continue;
        ExpectShown(block.lines,
                    block.language == "text" ? Printed<Timeline>(scenario) : Printed<JsonTrace>(scenario));
        ++count;
    }
    return count;
}

TEST(DocumentTest, TheTimelinesAndTracesOfTheRehearsalsPageAreTrue) {
    EXPECT_EQ(ExpectTrue("rehearsal.md"), 4U);
}

TEST(DocumentTest, TheTimelinesOfTheHostsPageAreTrue) {
    EXPECT_EQ(ExpectTrue("host-boundary.md"), 2U);
}

} // namespace
