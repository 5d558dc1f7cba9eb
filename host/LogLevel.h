#pragma once

/// The log levels in use, numbered as the syslog severities (RFC 5424, section 6.2.1).
enum LogLevel : unsigned {
    Error = 3,
    Information = 6,
};
