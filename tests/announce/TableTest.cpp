#include "announce/output/Table.h"

#include "announce/basics/TextWidth.h"
#include "announce/output/Progress.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

Table Rooms() {
    Table table({{"ID", Table::Align::Right}, {"NAME"}, {"STATE"}});
    table.Add({"1", {"Kitchen", Style::Bold}, "plays an announcement"});
    table.Add({"12", "夕食", ""});
    return table;
}

std::vector<std::string> LinesOf(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

} // namespace

TEST(TableTest, ColumnsStandBelowEachOtherWhateverTheCharactersWidth) {
    EXPECT_EQ(Rooms().Text({}), "ID  NAME     STATE\n"
                                " 1  Kitchen  plays an announcement\n"
                                "12  夕食\n");
}

TEST(TableTest, OnATerminalTheWidestColumnIsShortenedUntilTheRowFits) {
    for (const auto& line : LinesOf(Rooms().Text({true, false, 24})))
        EXPECT_LE(text::Width(line), 24U) << line;
    EXPECT_NE(Rooms().Text({true, false, 24}).find("Kitchen  plays an a…"), std::string::npos);
}

TEST(TableTest, InAPipeNothingIsShortenedAndNothingIsColoured) {
    Table table({{"TEXT"}});
    const std::string text(500, 'x');
    table.Add({{text, Style::Bad}});

    EXPECT_EQ(table.Text({}), "TEXT\n" + text + "\n");
}

TEST(TableTest, ColourStandsAroundTheCellAndOnlyWhereThereIsColour) {
    Table table({{""}});
    table.Add({{"late", Style::Bad}});

    EXPECT_EQ(table.Text({true, true, 80}), "\x1b[31mlate\x1b[0m\n");
    EXPECT_EQ(table.Text({true, false, 80}), "late\n");
}

TEST(TableTest, CellsCannotBreakTheirLine) {
    Table table({{"NAME"}, {"TEXT"}});
    table.Add({"a\nb", "\x1b]0;title\x07"});

    EXPECT_EQ(LinesOf(table.Text({})).size(), 2U);
    EXPECT_EQ(table.Text({}).find('\x1b'), std::string::npos);
}

TEST(ProgressTest, LineFitsIntoTheTerminalAndSaysHowMuchIsDone) {
    EXPECT_EQ(Progress::Line("chime.wav", 50, 30), "chime.wav [######      ]  50%");
    EXPECT_EQ(Progress::Line("chime.wav", 100, 16), "chime.wav 100%");
    for (std::size_t width = 0; width < 100; ++width) {
        const auto line = Progress::Line("a long name of a sound.wav", 37, width);
        EXPECT_LT(text::Width(line), std::max<std::size_t>(width, 1)) << width;
    }
}
