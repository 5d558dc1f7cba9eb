#include "announce/output/Output.h"

#include "announce/basics/TextWidth.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <iostream>

#include <unistd.h>

namespace {

/// JSON leaves DEL and the controls behind it as they are, and a terminal may obey them.
std::string WithEscapedControls(const std::string& json) {
    std::string escaped;
    for (std::size_t at = 0; at < json.size(); ++at) {
        const auto byte = static_cast<unsigned char>(json[at]);
        const auto next = at + 1 < json.size() ? static_cast<unsigned char>(json[at + 1]) : 0U;
        const bool isLater = byte == 0xC2 && next >= 0x80 && next < 0xA0;
        if (byte != 0x7F && !isLater) {
            escaped += json[at];
            continue;
        }
        std::array<char, 8> code{};
        (void)std::snprintf(code.data(), code.size(), "\\u%04x", isLater ? next : byte); // it has the room
        escaped += code.data();
        at += isLater ? 1 : 0;
    }
    return escaped;
}

} // namespace

std::string JsonText(const Json& json, bool isOnOneLine) {
    return WithEscapedControls(json.dump(isOnOneLine ? -1 : 2, ' ', false, Json::error_handler_t::replace)) +
           "\n";
}

void Output::Line(const std::string& text, Style style) {
    m_text += Styled(text::Visible(text), style, m_terminal) + "\n";
}

void Output::Add(const Json& json) {
    m_text += JsonText(json, m_isOnLines);
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
    std::cerr << Styled(text::VisibleLines(text), style, Terminal::Of(STDERR_FILENO)) << '\n' << std::flush;
}

void TellFailure(const Failure& failure) {
    const std::string right = failure.Right().empty() ? "" : "\n  right: " + failure.Right();
    Tell(std::string("announce: ") + failure.what() + right, Style::Bad);
}
