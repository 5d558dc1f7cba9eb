#pragma once

#include "announce/output/Terminal.h"

#include <cstddef>
#include <string>

/// How far something is, on standard error when that is a terminal; nowhere else. Its line is taken away at
/// the end.
class Progress {
public:
    Progress(const std::string& what, std::size_t total);
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress();

    void Reach(std::size_t done);

    /// The line that is shown: the name, a bar and the share, in at most `width` cells.
    [[nodiscard]] static std::string Line(const std::string& what, std::size_t percent, std::size_t width);

private:
    const std::string m_what;
    const std::size_t m_total;
    const Terminal m_terminal;
    std::size_t m_shown = 101; ///< percent
};
