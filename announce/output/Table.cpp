#include "announce/output/Table.h"

#include "announce/basics/TextWidth.h"

#include <algorithm>
#include <numeric>

namespace {

constexpr std::size_t kGap = 2;
/// No column is shortened below this.
constexpr std::size_t kNarrowest = 6;

/// By Style: what makes a terminal write so.
constexpr const char* kCodes[] = {"", "\x1b[1m", "\x1b[2m", "\x1b[32m", "\x1b[33m", "\x1b[31m"};

} // namespace

std::string Styled(const std::string& text, Style style, const Terminal& terminal) {
    if (!terminal.hasColour || style == Style::Plain || text.empty())
        return text;
    return kCodes[static_cast<std::size_t>(style)] + text + "\x1b[0m";
}

void Table::Add(std::vector<Cell> row) {
    row.resize(m_columns.size(), Cell(""));
    for (Cell& cell : row)
        cell.text = text::Visible(cell.text);
    m_rows.push_back(std::move(row));
}

bool Table::HasTitles() const {
    return std::any_of(m_columns.begin(), m_columns.end(),
                       [](const Column& column) { return !column.title.empty(); });
}

std::vector<std::size_t> Table::Widths(const Terminal& terminal) const {
    std::vector<std::size_t> widths;
    for (const Column& column : m_columns)
        widths.push_back(text::Width(column.title));
    for (const auto& row : m_rows) {
        for (std::size_t index = 0; index < row.size(); ++index)
            widths[index] = std::max(widths[index], text::Width(row[index].text));
    }
    if (!terminal.width || widths.empty())
        return widths;
    for (;;) {
        const std::size_t total =
            std::accumulate(widths.begin(), widths.end(), std::size_t{0}) + kGap * (widths.size() - 1);
        const auto widest = std::max_element(widths.begin(), widths.end());
        if (total <= *terminal.width || *widest <= kNarrowest)
            return widths;
        --*widest;
    }
}

std::string Table::Line(const std::vector<Cell>& row,
                        const std::vector<std::size_t>& widths,
                        const Terminal& terminal) const {
    std::string line;
    for (std::size_t index = 0; index < row.size(); ++index) {
        const std::string fitting = text::Shortened(row[index].text, widths[index]);
        const bool isRight = m_columns[index].align == Align::Right;
        const bool isLast = index + 1 == row.size();
        const std::string padded = isRight  ? text::PaddedLeft(fitting, widths[index])
                                   : isLast ? fitting
                                            : text::PaddedRight(fitting, widths[index]);
        line += Styled(padded, row[index].style, terminal);
        if (!isLast)
            line.append(kGap, ' ');
    }
    if (!terminal.hasColour)
        line.erase(line.find_last_not_of(' ') + 1);
    return line + "\n";
}

std::string Table::Text(const Terminal& terminal) const {
    const auto widths = Widths(terminal);
    std::string lines;
    if (HasTitles()) {
        std::vector<Cell> titles;
        for (const Column& column : m_columns)
            titles.emplace_back(column.title, Style::Bold);
        lines += Line(titles, widths, terminal);
    }
    for (const auto& row : m_rows)
        lines += Line(row, widths, terminal);
    return lines;
}
