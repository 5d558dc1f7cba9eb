#pragma once

#include "announce/output/Terminal.h"

#include <string>
#include <vector>

enum class Style { Plain, Bold, Dim, Good, Warning, Bad };

/// The text in that style, where there is colour.
[[nodiscard]] std::string Styled(const std::string& text, Style style, const Terminal& terminal);

/// Rows and columns for people. On a terminal the widest columns are shortened until a row fits into a line;
/// elsewhere nothing is.
class Table {
public:
    enum class Align { Left, Right };
    static constexpr Align kRight = Align::Right;
    struct Column {
        std::string title;
        Align align = Align::Left;
    };
    struct Cell {
        // Cells are texts, and are written as such.
        // NOLINTNEXTLINE(google-explicit-constructor)
        Cell(std::string words, Style look = Style::Plain) : text(std::move(words)), style(look) {}
        // NOLINTNEXTLINE(google-explicit-constructor)
        Cell(const char* words) : text(words) {}

        std::string text;
        Style style = Style::Plain;
    };

    /// Without titles, when all of them are empty.
    explicit Table(std::vector<Column> columns) : m_columns(std::move(columns)) {}

    /// Texts are made visible first; missing cells are empty.
    void Add(std::vector<Cell> row);

    [[nodiscard]] bool IsEmpty() const noexcept { return m_rows.empty(); }
    [[nodiscard]] std::string Text(const Terminal& terminal) const;

private:
    [[nodiscard]] std::vector<std::size_t> Widths(const Terminal& terminal) const;
    [[nodiscard]] std::string Line(const std::vector<Cell>& row,
                                   const std::vector<std::size_t>& widths,
                                   const Terminal& terminal) const;
    [[nodiscard]] bool HasTitles() const;

    std::vector<Column> m_columns;
    std::vector<std::vector<Cell>> m_rows;
};
