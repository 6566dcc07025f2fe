#include <QOR/Logger.h>

#include "CapturedLog.h"

#include <gtest/gtest.h>

#include <atomic>
#include <mutex>
#include <set>
#include <stdexcept>
#include <thread>
#include <vector>

namespace {

using QOR::Logger;
using QOR::LogRecord;
using QOR::Testing::CapturedLog;

void log(const std::string& message) {
    Logger::appendLogMsgExt(message, 3, "file.cpp", 1, "function");
}

TEST(Logger, HandsMessageLevelAndPlaceToTheSink) {
    CapturedLog captured;

    Logger::appendLogMsgExt("something happened", 3, "place.cpp", 77, "QOR::work");

    ASSERT_EQ(captured.records.size(), 1u);
    EXPECT_EQ(captured.records[0].message, "something happened");
    EXPECT_EQ(captured.records[0].level, 3);
    EXPECT_STREQ(captured.records[0].file, "place.cpp");
    EXPECT_EQ(captured.records[0].line, 77);
    EXPECT_STREQ(captured.records[0].function, "QOR::work");
}

TEST(Logger, PassesANullFileAndANullFunctionThrough) {
    CapturedLog captured;

    Logger::appendLogMsgExt("Object::readChild - ", 8, nullptr, 0, nullptr);

    ASSERT_EQ(captured.records.size(), 1u);
    EXPECT_EQ(captured.records[0].file, nullptr);
    EXPECT_EQ(captured.records[0].function, nullptr);
    EXPECT_EQ(captured.records[0].level, 8);
}

TEST(Logger, PrintsNothingWithoutASink) {
    auto former = Logger::setSink({});
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();

    log("unheard");

    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    Logger::setSink(std::move(former));
}

TEST(Logger, SetSinkReturnsTheFormerOne) {
    auto former = Logger::setSink({});
    int heardByFirst = 0;
    EXPECT_FALSE(Logger::setSink([&](const LogRecord&) { ++heardByFirst; }));

    const auto first = Logger::setSink({});

    ASSERT_TRUE(first);
    first({});
    EXPECT_EQ(heardByFirst, 1);
    log("unheard");
    EXPECT_EQ(heardByFirst, 1);
    Logger::setSink(std::move(former));
}

TEST(Logger, ASinkMayLogItself) {
    CapturedLog keepsFormer;
    std::vector<std::string> messages;
    Logger::setSink([&](const LogRecord& record) {
        messages.push_back(record.message);
        if (record.message == "outer") log("inner");
    });

    log("outer");

    EXPECT_EQ(messages, (std::vector<std::string>{"outer", "inner"}));
}

TEST(Logger, ASinkMayReplaceItself) {
    CapturedLog keepsFormer;
    int calls = 0;
    Logger::setSink([&](const LogRecord&) {
        Logger::setSink({});
        ++calls;
    });

    log("first");
    log("second");

    EXPECT_EQ(calls, 1);
}

TEST(Logger, AThrowingSinkDoesNotReachTheOneWhoLogs) {
    CapturedLog keepsFormer;
    Logger::setSink([](const LogRecord&) { throw std::runtime_error("disk full"); });

    EXPECT_NO_THROW(log("lost"));
}

TEST(Logger, TakesMessagesFromSeveralThreadsAtOnce) {
    CapturedLog keepsFormer;
    constexpr int numThreads = 4;
    constexpr int numMessages = 500;
    std::mutex mutex;
    std::multiset<std::string> heard;
    Logger::setSink([&](const LogRecord& record) {
        const std::lock_guard lock(mutex);
        heard.insert(record.message);
    });

    std::vector<std::thread> threads;
    for (int i = 0; i < numThreads; ++i)
        threads.emplace_back([i] {
            for (int j = 0; j < numMessages; ++j) log("thread " + std::to_string(i));
        });
    for (auto& thread : threads) thread.join();

    for (int i = 0; i < numThreads; ++i)
        EXPECT_EQ(heard.count("thread " + std::to_string(i)), std::size_t{numMessages});
}

TEST(Logger, ASinkCanBeReplacedWhileOthersLog) {
    CapturedLog keepsFormer;
    std::atomic<int> heard{0};
    std::atomic<bool> done{false};
    const auto count = [&heard](const LogRecord&) { ++heard; };
    Logger::setSink(count);

    constexpr int numMessages = 2000;
    std::vector<std::thread> threads;
    for (int i = 0; i < 3; ++i)
        threads.emplace_back([] {
            for (int j = 0; j < numMessages; ++j) log("message");
        });
    std::thread replacer([&] {
        while (!done) Logger::setSink(count);
    });
    for (auto& thread : threads) thread.join();
    done = true;
    replacer.join();

    EXPECT_EQ(heard, 3 * numMessages);
}

}  // namespace
