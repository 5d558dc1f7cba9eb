#pragma once

#include "announce/basics/Failure.h"
#include "announce/basics/Json.h"
#include "announce/output/Table.h"
#include "announce/output/Terminal.h"

#include <string>

/// What a command prints on standard output: kept until it is complete, so that a view that is watched
/// changes at once.
class Output {
public:
    Output(const Terminal& terminal, bool isJson) : m_terminal(terminal), m_isJson(isJson) {}

    [[nodiscard]] const Terminal& Where() const noexcept { return m_terminal; }
    /// Whether programs read it, and not people.
    [[nodiscard]] bool IsJson() const noexcept { return m_isJson; }
    /// JSON on a line of its own each, for what goes on and on.
    void PutJsonOnLines() noexcept { m_isOnLines = true; }

    void Line(const std::string& text) { m_text += text + "\n"; }
    /// The text made visible, in a style.
    void Line(const std::string& text, Style style);
    void Add(const Table& table) { m_text += table.Text(m_terminal); }
    void Raw(const std::string& text) { m_text += text; }
    void Add(const Json& json);

    /// What has been printed since the last time.
    [[nodiscard]] std::string Take() { return std::exchange(m_text, {}); }

    /// Writes it to standard output. Throws Failure when that is not possible.
    void Flush();

private:
    Terminal m_terminal;
    bool m_isJson;
    bool m_isOnLines = false;
    std::string m_text;
};

/// As people and programs read it, with a line break at the end, and with nothing that a terminal would obey.
[[nodiscard]] std::string JsonText(const Json& json, bool isOnOneLine = false);

/// Writes all of the text to standard output. Throws Failure when that is not possible.
void WriteToStandardOutput(const std::string& text);

/// A word to the user beside the output, on standard error, made visible line by line.
void Tell(const std::string& text, Style style = Style::Plain);

/// The same, of what is wrong and what would be right.
void TellFailure(const Failure& failure);
