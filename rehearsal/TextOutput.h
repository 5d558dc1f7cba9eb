#pragma once

#include <ostream>
#include <string>

/// A text on its way out, written in large blocks.
class TextOutput {
public:
    /// `output` is borrowed for life; `whatItIs` stands in error messages: "the trace".
    TextOutput(std::ostream& output, const char* whatItIs);

    /// What is still to be written; to be appended to.
    [[nodiscard]] std::string& Text() noexcept { return m_text; }

    /// A line is complete: writes, once there is enough. Throws `TraceError` when that fails, now or before.
    void EndLine();

    /// Writes all there is. Throws `TraceError` when that fails, now or before.
    void Flush();

private:
    void Write();
    void RequireWritten();

    std::ostream& m_output;
    const char* m_whatItIs;
    std::string m_text;
    std::string m_error; ///< what the first failure was; empty until then
};
