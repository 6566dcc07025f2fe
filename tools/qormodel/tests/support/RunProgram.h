// Runs the built program as its users run it.
#pragma once

#include "support/TemporaryFile.h"

#include <map>
#include <string>
#include <vector>

#include <sys/types.h>

namespace qormodel::testing {

/// What a run of the program left.
struct RunResult {
    int status = -1;  ///< the exit status; 1000 and the number of the signal that ended it
    std::string out;
    std::string err;
};

/// How a run differs from one in the folder of the tests.
struct RunOptions {
    std::string input;                               ///< the standard input
    std::map<std::string, std::string> environment;  ///< variables added to ours
    std::string folder;                              ///< where it runs; empty for here
};

/// Starts the program with these arguments and waits for its end.
RunResult runQormodel(const std::vector<std::string>& arguments, const RunOptions& options = {});

/// Has a shell run a line in which `qormodel` is the built program.
RunResult runShell(const std::string& line, const RunOptions& options = {});

/// Starts the program with its output dropped, and does not wait. \return its process
::pid_t startQormodel(const std::vector<std::string>& arguments);

/// The content of a file, empty where there is none.
std::string contentOf(const std::string& file);

}  // namespace qormodel::testing
