#include "controller/events/LogToFeed.h"

namespace controller {

LogToFeed::LogToFeed(Log& log, DriverThread& driver, EventFeed& feed) : m_log(log) {
    m_log.SetListener([&driver, &feed](Severity severity, const std::string& text) {
        const auto publish = [&feed, severity, text] {
            feed.Publish(events::LogLine{severity, text});
        };
        if (driver.IsCurrent())
            publish();
        else
            // A flood of lines from elsewhere must not fill the memory; the log itself has them all.
            (void)driver.TryPost("a line of the log", publish);
    });
}

LogToFeed::~LogToFeed() {
    m_log.SetListener({});
}

} // namespace controller
