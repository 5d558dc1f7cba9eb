#include "announce/output/Progress.h"

#include "announce/basics/TextWidth.h"

#include <algorithm>
#include <iostream>

#include <unistd.h>

namespace {

constexpr std::size_t kWidestBar = 40;
constexpr std::size_t kNumber = 5; ///< " 100%"

} // namespace

Progress::Progress(const std::string& what, std::size_t total)
    : m_what(text::Visible(what))
    , m_total(total)
    , m_terminal(Terminal::Of(STDERR_FILENO)) {
    Reach(0);
}

Progress::~Progress() {
    if (m_terminal.isTerminal)
        std::cerr << "\r\x1b[K" << std::flush;
}

void Progress::Reach(std::size_t done) {
    const std::size_t percent = m_total == 0 ? 100 : std::min<std::size_t>(100, done * 100 / m_total);
    if (!m_terminal.isTerminal || percent == m_shown)
        return;
    m_shown = percent;
    std::cerr << '\r' << Line(m_what, percent, m_terminal.width.value_or(0)) << "\x1b[K" << std::flush;
}

std::string Progress::Line(const std::string& what, std::size_t percent, std::size_t width) {
    const std::string number = " " + text::PaddedLeft(std::to_string(percent) + "%", kNumber - 1);
    if (width <= kNumber + 1)
        return "";
    // The last cell stays empty: a full line would go on in the next one.
    const std::size_t room = width - 1 - kNumber;
    const std::string name = text::Shortened(what, room);
    const std::size_t left = room - text::Width(name);
    if (left < 5)
        return name + number;
    const std::size_t bar = std::min(kWidestBar, left - 3);
    const std::size_t full = bar * percent / 100;
    return name + " [" + std::string(full, '#') + std::string(bar - full, ' ') + "]" + number;
}
