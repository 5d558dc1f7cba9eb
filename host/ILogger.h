#pragma once

#include <string>

/// The host's log, for objects that are not drivers.
class ILogger {
public:
    static constexpr const char* kGuid = "{6B6BF865-B6E0-44EE-B253-27897C1CADF0}";

    /// Writes one line; `level` is a `LogLevel`.
    virtual void Log(int level, const std::string& text) = 0;

protected:
    ~ILogger() = default;
};
