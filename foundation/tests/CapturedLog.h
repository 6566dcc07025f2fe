// Collects the log's messages for as long as it lives, for tests of what is logged.
#pragma once

#include <QOR/Logger.h>

#include <string>
#include <utility>
#include <vector>

namespace QOR::Testing {

/// Takes the log over and gives it back at its end. For messages of one thread.
class CapturedLog {
public:
    CapturedLog()
        : former(Logger::setSink([this](const LogRecord& record) { records.push_back(record); })) {}
    CapturedLog(const CapturedLog&) = delete;
    CapturedLog& operator=(const CapturedLog&) = delete;
    ~CapturedLog() { Logger::setSink(std::move(former)); }

    /// The messages of one level, in their order.
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

}  // namespace QOR::Testing
