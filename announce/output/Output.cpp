#include "announce/output/Output.h"

#include "announce/basics/Failure.h"
#include "announce/basics/TextWidth.h"

#include <cerrno>
#include <cstring>
#include <iostream>

#include <unistd.h>

void Output::Line(const std::string& text, Style style) {
    m_text += Styled(text::Visible(text), style, m_terminal) + "\n";
}

void Output::Add(const Json& json) {
    m_text += json.dump(m_isOnLines ? -1 : 2, ' ', false, Json::error_handler_t::replace) + "\n";
}

void Output::Flush() {
    WriteToStandardOutput(Take());
}

void WriteToStandardOutput(const std::string& text) {
    std::size_t written = 0;
    while (written < text.size()) {
        const ssize_t count = write(STDOUT_FILENO, text.data() + written, text.size() - written);
        if (count < 0 && errno != EINTR)
            throw Failure(ExitStatus::Failed,
                          std::string("standard output cannot be written: ") + std::strerror(errno));
        written += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
}

void Tell(const std::string& text, Style style) {
    std::cerr << Styled(text, style, Terminal::Of(STDERR_FILENO)) << '\n' << std::flush;
}
