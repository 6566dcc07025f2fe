// Collects the log's messages for as long as it lives, for tests of what is logged.
#pragma once

#include <QOR/Logger.h>

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

    std::vector<LogRecord> records;

private:
    Logger::Sink former;
};

}  // namespace QOR::Testing
