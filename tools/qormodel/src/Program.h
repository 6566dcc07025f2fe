// The program as a whole: its command line and its exit status.
#pragma once

namespace qormodel {

/// Runs the command that the arguments name. \return the exit status, a number of `Exit`.
int runProgram(int argc, const char* const* argv);

}  // namespace qormodel
