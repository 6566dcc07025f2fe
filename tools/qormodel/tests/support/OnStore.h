// A folder with a project in which commands work on a key store.
#pragma once

#include "support/InFolder.h"
#include "support/RunProgram.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace qormodel::testing {

/// The store is s.db, which is not there at first.
class OnStore : public InFolder {
protected:
    OnStore() {
        put("project.model", textWithoutRelation());
        put("settings.reg", "REGEDIT4\r\n\r\n[A\\B]\r\n@=\"d\"\r\n\"x\"=dword:10\r\n");
    }

    RunResult run(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), {"store", "--store", "s.db"});
        return runQormodel(arguments, options);
    }
    // What sqlite3 finds in the file.
    std::string ask(const std::string& query) const {
        const RunResult result = runShell("sqlite3 s.db \"" + query + '"', options);
        EXPECT_EQ(result.status, 0) << result.err;
        return result.out;
    }
};

}  // namespace qormodel::testing
