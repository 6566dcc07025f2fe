// A folder of its own in which the program runs.
#pragma once

#include "support/RunProgram.h"
#include "support/TemporaryFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace qormodel::testing {

/// The fixture of tests whose commands name files beside each other.
class InFolder : public ::testing::Test {
protected:
    InFolder() { options.folder = folder.getFolder().string(); }

    void put(const std::string& name, const std::string& content) const {
        std::ofstream(folder.getFolder() / name, std::ios::binary) << content;
    }
    std::string content(const std::string& name) const {
        return contentOf((folder.getFolder() / name).string());
    }
    bool isThere(const std::string& name) const {
        return std::filesystem::exists(folder.getFolder() / name);
    }

    TemporaryFile folder{""};
    RunOptions options;
};

}  // namespace qormodel::testing
