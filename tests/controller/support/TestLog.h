#pragma once

#include "controller/driver/Log.h"

#include <string>
#include <vector>

namespace controller {

/// A log that keeps its lines, as "warning: text", and writes nothing.
struct TestLog {
    TestLog() {
        log.SetListener([this](Severity severity, const std::string& text) {
            lines.push_back(std::string(SeverityName(severity)) + ": " + text);
        });
    }

    std::vector<std::string> lines;
    Log log{-1, static_cast<Severity>(0), Log::Form::Plain};
};

} // namespace controller
