#pragma once

#include "controller/driver/DriverThread.h"
#include "controller/driver/Log.h"
#include "controller/events/EventFeed.h"

namespace controller {

/// Publishes every line of the log as an event, for as long as it lives.
class LogToFeed {
public:
    /// All are borrowed for life.
    LogToFeed(Log& log, DriverThread& driver, EventFeed& feed);
    LogToFeed(const LogToFeed&) = delete;
    LogToFeed& operator=(const LogToFeed&) = delete;
    ~LogToFeed();

private:
    Log& m_log;
};

} // namespace controller
