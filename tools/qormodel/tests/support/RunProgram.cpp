#include "support/RunProgram.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace qormodel::testing {

namespace {
// Puts a file in the place of one of the standard streams.
void redirect(const std::string& file, int flags, int stream) {
    const int descriptor = ::open(file.c_str(), flags, 0600);
    if (descriptor < 0 || ::dup2(descriptor, stream) < 0) ::_exit(126);
    ::close(descriptor);
}

[[noreturn]] void become(const std::vector<std::string>& command) {
    std::vector<char*> arguments;
    for (const auto& each : command) arguments.push_back(const_cast<char*>(each.c_str()));
    arguments.push_back(nullptr);
    ::execv(arguments[0], arguments.data());
    ::_exit(127);
}

int statusOf(::pid_t process) {
    int status = 0;
    ::waitpid(process, &status, 0);
    return WIFSIGNALED(status) ? 1000 + WTERMSIG(status) : WEXITSTATUS(status);
}

RunResult run(const std::vector<std::string>& command, const RunOptions& options) {
    const TemporaryFile input(options.input);
    const std::string out = (input.getFolder() / "out").string();
    const std::string err = (input.getFolder() / "err").string();
    const ::pid_t process = ::fork();
    if (process == 0) {
        redirect(input.getName(), O_RDONLY, STDIN_FILENO);
        redirect(out, O_WRONLY | O_CREAT, STDOUT_FILENO);
        redirect(err, O_WRONLY | O_CREAT, STDERR_FILENO);
        for (const auto& [name, value] : options.environment)
            ::setenv(name.c_str(), value.c_str(), 1);
        if (!options.folder.empty() && ::chdir(options.folder.c_str()) != 0) ::_exit(126);
        become(command);
    }
    RunResult result;
    result.status = statusOf(process);
    result.out = contentOf(out);
    result.err = contentOf(err);
    return result;
}

std::vector<std::string> commandOf(const std::vector<std::string>& arguments) {
    std::vector<std::string> command{QORMODEL_PROGRAM};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return command;
}
}  // namespace

RunResult runQormodel(const std::vector<std::string>& arguments, const RunOptions& options) {
    return run(commandOf(arguments), options);
}

RunResult runShell(const std::string& line, const RunOptions& options) {
    RunOptions withPath = options;
    const char* const path = std::getenv("PATH");
    withPath.environment["PATH"] = std::filesystem::path(QORMODEL_PROGRAM).parent_path().string() +
                                   ':' + (path ? path : "/usr/bin:/bin");
    return run({"/bin/sh", "-c", line}, withPath);
}

::pid_t startQormodel(const std::vector<std::string>& arguments) {
    const ::pid_t process = ::fork();
    if (process != 0) return process;
    redirect("/dev/null", O_WRONLY, STDOUT_FILENO);
    redirect("/dev/null", O_WRONLY, STDERR_FILENO);
    become(commandOf(arguments));
}

std::string contentOf(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace qormodel::testing
