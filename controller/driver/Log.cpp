#include "controller/driver/Log.h"

#include "controller/driver/Text.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string_view>
#include <utility>

namespace controller {

namespace {

constexpr std::size_t kMaxText = 4096;

std::string TimeOfDay() {
    const auto now = std::chrono::system_clock::now();
    const std::time_t seconds = std::chrono::system_clock::to_time_t(now);
    const auto sinceEpoch = std::chrono::duration_cast<std::chrono::milliseconds>(now.time_since_epoch());
    std::tm parts{};
    localtime_r(&seconds, &parts);
    char text[32];
    const std::size_t used = std::strftime(text, sizeof text, "%H:%M:%S", &parts);
    std::snprintf(text + used, sizeof text - used, ".%03d ", static_cast<int>(sinceEpoch.count() % 1000));
    return text;
}

std::string OneLine(const std::string& text) {
    return controller::OneLine(std::string_view(text).substr(0, kMaxText));
}

std::string Whole(Log::Form form, Severity severity, const std::string& line) {
    if (form == Log::Form::Journal)
        return '<' + std::to_string(static_cast<unsigned>(severity)) + '>' + line + '\n';
    return TimeOfDay() + SeverityName(severity) + ": " + line + '\n';
}

} // namespace

const char* SeverityName(Severity severity) noexcept {
    switch (severity) {
    case Severity::Error:
        return "error";
    case Severity::Warning:
        return "warning";
    case Severity::Notice:
        return "notice";
    case Severity::Information:
        return "information";
    case Severity::Debug:
        return "debug";
    }
    return "notice";
}

Log::Log(int descriptor, Severity threshold, Form form) : m_threshold(threshold), m_form(form) {
    if (descriptor >= 0)
        m_writer.emplace(descriptor, [form](std::size_t dropped) {
            return Whole(form, Severity::Warning,
                         "Here " + std::to_string(dropped) +
                             " lines of the log are missing, for nobody took them in time");
        });
}

Log::Form Log::FormOfStandardError() noexcept {
    return std::getenv("JOURNAL_STREAM") != nullptr ? Form::Journal : Form::Plain;
}

void Log::Write(Severity severity, const std::string& text) {
    const std::string line = OneLine(text);
    Listener listener;
    {
        const std::lock_guard lock(m_mutex);
        listener = m_listener;
        if (m_writer && severity <= m_threshold)
            m_writer->Write(Whole(m_form, severity, line));
    }
    if (listener)
        listener(severity, line);
}

void Log::SetListener(Listener listener) {
    const std::lock_guard lock(m_mutex);
    m_listener = std::move(listener);
}

} // namespace controller
