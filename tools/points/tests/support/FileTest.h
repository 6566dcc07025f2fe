// A file that goes with its test.
#pragma once

#include <points/PointFile.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace points {

/// Tests of a function that reads a file and throws BadPointFile.
class FileTest : public testing::Test {
protected:
    ~FileTest() override { std::filesystem::remove(file); }

    void store(const std::string& text) const { std::ofstream(file, std::ios::binary) << text; }

    /// What the error of `read` says behind the name of the file; "none" where there is none.
    template <class Read> std::string complaintOf(const Read& read, const std::string& text) const {
        store(text);
        try {
            read(file);
        } catch (const BadPointFile& error) {
            const std::string what = error.what();
            EXPECT_TRUE(what.starts_with(file.string() + ":")) << what;
            return what.substr(file.string().size() + 1);
        }
        return "none";
    }

    const std::filesystem::path file =
        std::filesystem::path(testing::TempDir()) /
        (std::string(testing::UnitTest::GetInstance()->current_test_info()->test_suite_name()) +
         "_" + testing::UnitTest::GetInstance()->current_test_info()->name() + ".txt");
};

/// Tests of the reader of point files.
class PointFileTest : public FileTest {
protected:
    Scan read(const std::string& text) const {
        store(text);
        return readPointFile(file);
    }
    std::string complaint(const std::string& text) const {
        return complaintOf([](const auto& name) { readPointFile(name); }, text);
    }
};

}  // namespace points
