// Collects the log's messages for tests of what is logged.
#pragma once

#include <QOR/Logger.h>

#include <string>
#include <utility>
#include <vector>

namespace QOR::AttributeContainer::Testing {

/// Takes the log over and gives it back at its end. For messages of one thread.
class LogCapture {
public:
    LogCapture()
        : former(Logger::setSink([this](const LogRecord& record) { records.push_back(record); })) {}
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;
    ~LogCapture() { Logger::setSink(std::move(former)); }

    std::vector<std::string> messages(int level) const {
        std::vector<std::string> found;
        for (const LogRecord& record : records)
            if (record.level == level) found.push_back(record.message);
        return found;
    }

    std::vector<LogRecord> records;

private:
    Logger::Sink former;
};

}  // namespace QOR::AttributeContainer::Testing
