#include "rehearsal/TextOutput.h"

#include "rehearsal/TraceSink.h"

#include <cerrno>
#include <cstddef>
#include <system_error>

namespace {

constexpr std::size_t kBlock = std::size_t{64} * 1024;

} // namespace

TextOutput::TextOutput(std::ostream& output, const char* whatItIs) : m_output(output), m_whatItIs(whatItIs) {
    m_text.reserve(2 * kBlock);
}

void TextOutput::EndLine() {
    m_text.push_back('\n');
    if (m_text.size() >= kBlock || !m_output)
        Write();
}

void TextOutput::Flush() {
    Write();
    m_output.flush();
    RequireWritten();
}

void TextOutput::Write() {
    m_output.write(m_text.data(), static_cast<std::streamsize>(m_text.size()));
    m_text.clear();
    RequireWritten();
}

void TextOutput::RequireWritten() {
    if (m_output)
        return;
    if (m_error.empty())
        m_error = std::string(m_whatItIs) + " cannot be written: " + std::generic_category().message(errno);
    throw TraceError(m_error);
}
