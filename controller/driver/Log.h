#pragma once

#include "controller/driver/LineWriter.h"

#include <functional>
#include <mutex>
#include <optional>
#include <string>

namespace controller {

/// How much a line matters; numbered as the syslog severities.
enum class Severity : unsigned { Error = 3, Warning = 4, Notice = 5, Information = 6, Debug = 7 };

/// "error", "warning", "notice", "information" or "debug".
[[nodiscard]] const char* SeverityName(Severity severity) noexcept;

/// The program's log: lines on a file descriptor, usually standard error. May be written from any thread.
///
/// A line on a terminal or in a file reads `12:31:05.042 warning: text`; for the journal it reads `<4>text`,
/// and the journal knows the time itself. Nothing waits for a reader: what there is no room for is left out,
/// and a line says how much.
class Log {
public:
    enum class Form { Plain, Journal };
    using Listener = std::function<void(Severity, const std::string&)>;

    /// Lines less important than `threshold` are not written, and none to a descriptor that is negative.
    Log(int descriptor, Severity threshold, Form form);
    Log(const Log&) = delete;
    Log& operator=(const Log&) = delete;

    /// The form that suits standard error: the journal's when the service manager has connected it to the
    /// journal.
    [[nodiscard]] static Form FormOfStandardError() noexcept;

    /// Whether lines of this severity are written.
    [[nodiscard]] bool Shows(Severity severity) const noexcept { return severity <= m_threshold; }

    /// Writes one line. Control characters are written as blanks, what is no UTF-8 as question marks, and
    /// what is longer than 4 KiB is cut.
    void Write(Severity severity, const std::string& text);

    void Error(const std::string& text) { Write(Severity::Error, text); }
    void Warning(const std::string& text) { Write(Severity::Warning, text); }
    void Notice(const std::string& text) { Write(Severity::Notice, text); }
    void Information(const std::string& text) { Write(Severity::Information, text); }

    /// Is told every line, also those below the threshold, on the thread that writes it. An empty one ends
    /// it.
    void SetListener(Listener listener);

private:
    const Severity m_threshold;
    const Form m_form;
    std::mutex m_mutex;
    Listener m_listener;
    std::optional<LineWriter> m_writer;
};

} // namespace controller
